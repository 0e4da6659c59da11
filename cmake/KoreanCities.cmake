# The table of Korean cities for programs in C++.

set(_pelta_korean_cities_module_dir "${CMAKE_CURRENT_LIST_DIR}")

# pelta_add_korean_cities(<target>)
#
# Lets the sources of <target> include "KoreanCities.h", which declares viewer::koreanCities().
function(pelta_add_korean_cities target)
    cmake_path(GET _pelta_korean_cities_module_dir PARENT_PATH root)
    pelta_add_generated_header(${target} HEADER KoreanCities.h NAME cities
        SCRIPT "${root}/assets/data/cities-to-cpp.mjs" INPUTS "${root}/assets/data/korean-cities.json")
endfunction()
