# What the style document format says about layer properties, for programs in C++.

set(PELTA_STYLE_FORMAT "${PROJECT_SOURCE_DIR}/node_modules/@maplibre/maplibre-gl-style-spec/dist/latest.json"
    CACHE FILEPATH "Reference of the style document format, of the release that GL JS is built from")
set(_pelta_layer_spec_module_dir "${CMAKE_CURRENT_LIST_DIR}")

# pelta_add_layer_spec(<target>)
#
# Lets the sources of <target> include "LayerSpec.h", which declares pelta::isDataDriven().
function(pelta_add_layer_spec target)
    pelta_add_generated_header(${target} HEADER LayerSpec.h NAME layer_spec
        SCRIPT "${_pelta_layer_spec_module_dir}/layer-spec.mjs"
        INPUTS "${PELTA_STYLE_FORMAT}" ARGUMENTS "${PELTA_STYLE_FORMAT}")
endfunction()
