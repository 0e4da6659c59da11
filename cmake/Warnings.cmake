# Compile settings of every target of our own. Warnings stop a build where CMAKE_COMPILE_WARNING_AS_ERROR says so.
function(pelta_own_target target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion)
    if(PELTA_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-omit-frame-pointer
                                                 -fno-sanitize-recover=all)
        target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    endif()
    if(PELTA_BUILD_FUZZERS)
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
endfunction()
