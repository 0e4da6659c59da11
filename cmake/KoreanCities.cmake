# The table of Korean cities for programs in C++.

set(_pelta_korean_cities_module_dir "${CMAKE_CURRENT_LIST_DIR}")

# pelta_add_korean_cities(<target>)
#
# Lets the sources of <target> include "KoreanCities.h", which declares viewer::koreanCities().
function(pelta_add_korean_cities target)
    find_program(PELTA_NODE NAMES node nodejs NO_CMAKE_FIND_ROOT_PATH REQUIRED)

    cmake_path(GET _pelta_korean_cities_module_dir PARENT_PATH root)
    set(data "${root}/assets/data")
    set(out "${CMAKE_CURRENT_BINARY_DIR}/${target}-cities")
    file(MAKE_DIRECTORY "${out}")
    add_custom_command(
        OUTPUT "${out}/KoreanCities.h"
        COMMAND "${PELTA_NODE}" "${data}/cities-to-cpp.mjs" "${out}/KoreanCities.h"
        DEPENDS "${data}/cities-to-cpp.mjs" "${data}/korean-cities.json"
        COMMENT "Writing KoreanCities.h for ${target}"
        VERBATIM)
    # Tools that read the sources without compiling them ask for the header by this name.
    add_custom_target(${target}_cities DEPENDS "${out}/KoreanCities.h")
    target_sources(${target} PRIVATE "${out}/KoreanCities.h")
    target_include_directories(${target} PRIVATE "${out}")
endfunction()
