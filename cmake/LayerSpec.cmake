# What the style document format says about layer properties, for programs in C++.

set(PELTA_STYLE_FORMAT "${PROJECT_SOURCE_DIR}/node_modules/@maplibre/maplibre-gl-style-spec/dist/latest.json"
    CACHE FILEPATH "Reference of the style document format, of the release that GL JS is built from")
set(_pelta_layer_spec_module_dir "${CMAKE_CURRENT_LIST_DIR}")

# pelta_add_layer_spec(<target>)
#
# Lets the sources of <target> include "LayerSpec.h", which declares pelta::isDataDriven().
function(pelta_add_layer_spec target)
    find_program(PELTA_NODE NAMES node nodejs NO_CMAKE_FIND_ROOT_PATH REQUIRED)

    set(out "${CMAKE_CURRENT_BINARY_DIR}/${target}-layer-spec")
    set(script "${_pelta_layer_spec_module_dir}/layer-spec.mjs")
    file(MAKE_DIRECTORY "${out}")
    add_custom_command(
        OUTPUT "${out}/LayerSpec.h"
        COMMAND "${PELTA_NODE}" "${script}" "${PELTA_STYLE_FORMAT}" "${out}/LayerSpec.h"
        DEPENDS "${script}" "${PELTA_STYLE_FORMAT}"
        COMMENT "Writing LayerSpec.h for ${target}"
        VERBATIM)
    # Tools that read the sources without compiling them ask for the header by this name.
    add_custom_target(${target}_layer_spec DEPENDS "${out}/LayerSpec.h")
    target_sources(${target} PRIVATE "${out}/LayerSpec.h")
    target_include_directories(${target} PRIVATE "${out}")
endfunction()
