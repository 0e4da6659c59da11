# Pages for the web port: an application compiled to a module, with what a server needs beside it.

set(PELTA_MAPLIBRE_DIR "${PROJECT_SOURCE_DIR}/node_modules/maplibre-gl/dist" CACHE PATH
    "Folder of MapLibre GL JS: maplibre-gl.mjs, its worker and its style sheet")

# pelta_web_page(<target> FOLDER <dir> FILES <file>…)
#
# Links an executable as an ES module <target>.mjs into <dir>, and copies there GL JS, the starter pelta.mjs, and
# the given files (the page itself, icons …) by their names. The folder can be served as it is. The page starts
# the application with
#     import { start } from "./pelta.mjs";
#     import application from "./<target>.mjs";
#     start(application);
function(pelta_web_page target)
    cmake_parse_arguments(PARSE_ARGV 1 page "" "FOLDER" "FILES")
    set_target_properties(${target} PROPERTIES SUFFIX ".mjs" RUNTIME_OUTPUT_DIRECTORY "${page_FOLDER}")
    target_link_libraries(${target} PRIVATE pelta::web)
    target_link_options(${target} PRIVATE
        -lembind -sMODULARIZE -sEXPORT_ES6 -sENVIRONMENT=web -sALLOW_MEMORY_GROWTH -sFILESYSTEM=0
        -sMALLOC=emmalloc -sWARN_ON_UNDEFINED_SYMBOLS -sERROR_ON_UNDEFINED_SYMBOLS)
    set(files ${page_FILES} "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/pelta.mjs")
    foreach(part maplibre-gl.mjs maplibre-gl-worker.mjs maplibre-gl.css)
        list(APPEND files "${PELTA_MAPLIBRE_DIR}/${part}")
    endforeach()
    set(copies)
    foreach(file IN LISTS files)
        cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
        cmake_path(GET file FILENAME name)
        add_custom_command(
            OUTPUT "${page_FOLDER}/${name}"
            COMMAND "${CMAKE_COMMAND}" -E copy "${file}" "${page_FOLDER}/${name}"
            DEPENDS "${file}"
            COMMENT "Copying ${name}"
            VERBATIM)
        list(APPEND copies "${page_FOLDER}/${name}")
    endforeach()
    add_custom_target(${target}_page ALL DEPENDS ${copies})
    add_dependencies(${target}_page ${target})
endfunction()
