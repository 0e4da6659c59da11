# Header-only libraries from Debian's packages. Emscripten must never see the system's whole include folder, so the one
# folder that is needed is linked into the build tree.
function(pelta_header_library name folder)
    find_path(PELTA_${name}_ROOT ${folder} PATHS /usr/include NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    set(link_root ${CMAKE_BINARY_DIR}/header-libraries/${name})
    file(MAKE_DIRECTORY ${link_root})
    file(CREATE_LINK ${PELTA_${name}_ROOT}/${folder} ${link_root}/${folder} SYMBOLIC)
    add_library(pelta_${name} INTERFACE)
    target_include_directories(pelta_${name} SYSTEM INTERFACE $<BUILD_INTERFACE:${link_root}>)
endfunction()

pelta_header_library(nlohmann_json nlohmann)
pelta_header_library(stb stb)
