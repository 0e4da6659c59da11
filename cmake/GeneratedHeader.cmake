# Headers that a node script writes.
add_custom_target(pelta_generated_headers)

# pelta_add_generated_header(<target> HEADER <name.h> NAME <suffix> SCRIPT <file.mjs> [INPUTS <file>…] [ARGUMENTS <word>…])
#
# Lets the sources of <target> include <name.h>, which `node SCRIPT ARGUMENTS… <path of the header>` writes, again when
# SCRIPT or one of INPUTS has changed. Tools that read the sources without compiling them ask for all of them by the target
# pelta_generated_headers.
function(pelta_add_generated_header target)
    cmake_parse_arguments(PARSE_ARGV 1 made "" "HEADER;NAME;SCRIPT" "INPUTS;ARGUMENTS")
    find_program(PELTA_NODE NAMES node nodejs NO_CMAKE_FIND_ROOT_PATH REQUIRED)

    set(out "${CMAKE_CURRENT_BINARY_DIR}/${target}-${made_NAME}")
    file(MAKE_DIRECTORY "${out}")
    add_custom_command(
        OUTPUT "${out}/${made_HEADER}"
        COMMAND "${PELTA_NODE}" "${made_SCRIPT}" ${made_ARGUMENTS} "${out}/${made_HEADER}"
        DEPENDS "${made_SCRIPT}" ${made_INPUTS}
        COMMENT "Writing ${made_HEADER} for ${target}"
        VERBATIM)
    add_custom_target(${target}_${made_NAME} DEPENDS "${out}/${made_HEADER}")
    add_dependencies(pelta_generated_headers ${target}_${made_NAME})
    target_sources(${target} PRIVATE "${out}/${made_HEADER}")
    target_include_directories(${target} PRIVATE "${out}")
endfunction()
