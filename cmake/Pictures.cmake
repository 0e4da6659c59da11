# Built-in pictures: drawn as SVG, rasterised for every screen scale, embedded in a library.

set(PELTA_PICTURE_SCALES 1 2 3)
set(_pelta_pictures_module_dir "${CMAKE_CURRENT_LIST_DIR}")

# pelta_add_pictures(<target>)
#
# Adds to <target> the pictures of assets/pictures at every screen scale, read through
# pelta::detail::embeddedPictures() of src/Platform/EmbeddedPictures.h.
function(pelta_add_pictures target)
    # The tools run on the building machine, also when compiling for another one.
    find_program(PELTA_RSVG_CONVERT rsvg-convert NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    find_program(PELTA_NODE NAMES node nodejs NO_CMAKE_FIND_ROOT_PATH REQUIRED)

    cmake_path(GET _pelta_pictures_module_dir PARENT_PATH root)
    set(out "${CMAKE_CURRENT_BINARY_DIR}/${target}-pictures")
    file(MAKE_DIRECTORY "${out}")
    file(GLOB drawings CONFIGURE_DEPENDS "${root}/assets/pictures/*.svg")

    set(rasters)
    foreach(drawing IN LISTS drawings)
        cmake_path(GET drawing STEM name)
        foreach(scale IN LISTS PELTA_PICTURE_SCALES)
            set(raster "${out}/${name}@${scale}x.png")
            add_custom_command(
                OUTPUT "${raster}"
                COMMAND "${PELTA_RSVG_CONVERT}" --zoom ${scale} --output "${raster}" "${drawing}"
                DEPENDS "${drawing}"
                COMMENT "Drawing ${name}@${scale}x"
                VERBATIM)
            list(APPEND rasters "${raster}")
        endforeach()
    endforeach()

    set(source "${out}/EmbeddedPictures.cpp")
    add_custom_command(
        OUTPUT "${source}"
        COMMAND "${PELTA_NODE}" "${_pelta_pictures_module_dir}/embed-pictures.mjs" "${source}" ${rasters}
        DEPENDS ${rasters}
                "${_pelta_pictures_module_dir}/embed-pictures.mjs"
                "${_pelta_pictures_module_dir}/compact-png.mjs"
        COMMENT "Embedding pictures in ${target}"
        VERBATIM)
    target_sources(${target} PRIVATE "${source}")
    target_include_directories(${target} PRIVATE "${root}/src")
endfunction()
