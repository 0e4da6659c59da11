# The examples, built and run against what `cmake --install` lays down.
include(GNUInstallDirs)
set(installed_tree ${CMAKE_CURRENT_BINARY_DIR}/installed)

add_test(NAME InstalledTree.Install
         COMMAND ${CMAKE_COMMAND} --install ${PROJECT_BINARY_DIR} --prefix ${installed_tree})
set_tests_properties(InstalledTree.Install PROPERTIES FIXTURES_SETUP installed_tree)

# add_example(FOLDER PROGRAM): the program runs in the installed share folder, where the base style is.
function(add_example folder program)
    set(build ${CMAKE_CURRENT_BINARY_DIR}/examples/${folder})
    add_test(NAME InstalledTree.${folder}
             COMMAND ${CMAKE_CTEST_COMMAND} --build-and-test ${PROJECT_SOURCE_DIR}/examples/${folder} ${build}
                     --build-generator ${CMAKE_GENERATOR}
                     --build-options -DCMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE} -DCMAKE_PREFIX_PATH=${installed_tree}
                                     -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}
                     --test-command ${CMAKE_COMMAND} -E chdir ${installed_tree}/${CMAKE_INSTALL_DATADIR}/pelta
                                    ${build}/${program})
    set_tests_properties(InstalledTree.${folder} PROPERTIES FIXTURES_REQUIRED installed_tree)
endfunction()

add_example(first_program first_program)
add_example(headless_test bus_route_test)
