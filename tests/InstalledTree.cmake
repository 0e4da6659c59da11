# What `cmake --install` lays down: the command line runs from there, and the examples are built and run against it.
include(GNUInstallDirs)
set(installed_tree ${CMAKE_BINARY_DIR}/installed)

add_test(NAME InstalledTree.Install
         COMMAND ${CMAKE_COMMAND} --install ${PROJECT_BINARY_DIR} --prefix ${installed_tree})
set_tests_properties(InstalledTree.Install PROPERTIES FIXTURES_SETUP installed_tree)

# add_installed_command(NAME ARGUMENTS INPUT OUTPUT): `pelta ARGUMENTS` answers what is read from the standard input by
# something that matches the regular expression.
function(add_installed_command name arguments input output)
    add_test(NAME InstalledTree.${name}
             COMMAND sh -c "printf '%s\\n' '${input}' | ${CMAKE_INSTALL_BINDIR}/pelta ${arguments}"
             WORKING_DIRECTORY ${installed_tree})
    set_tests_properties(InstalledTree.${name} PROPERTIES FIXTURES_REQUIRED installed_tree
                         PASS_REGULAR_EXPRESSION "${output}")
endfunction()

if(TARGET pelta_command)
    add_installed_command(convert "convert --from wgs84 --to utmk" "129.34517 36.10945 Heunghae"
                          "^1166079\\.5336 1791849\\.4731 Heunghae\n$")
    add_installed_command(cluster "cluster --zoom 3"
                          [=[{"type":"Feature","geometry":{"type":"Point","coordinates":[127,37]}}]=]
                          "^{\"type\":\"FeatureCollection\".*\"coordinates\":\\[127,37\\].*\"count\":1,")
endif()

# add_example(FOLDER PROGRAM): the program runs in the installed share folder, where the base style is.
function(add_example folder program)
    set(build ${CMAKE_BINARY_DIR}/examples/${folder})
    add_test(NAME InstalledTree.${folder}
             COMMAND ${CMAKE_CTEST_COMMAND} --build-and-test ${PROJECT_SOURCE_DIR}/examples/${folder} ${build}
                     --build-generator ${CMAKE_GENERATOR}
                     --build-options -DCMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE} -DCMAKE_PREFIX_PATH=${installed_tree}
                                     -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}
                                     -DCMAKE_COMPILE_WARNING_AS_ERROR=${CMAKE_COMPILE_WARNING_AS_ERROR}
                     --test-command ${CMAKE_COMMAND} -E chdir ${installed_tree}/${CMAKE_INSTALL_DATADIR}/pelta
                                    ${build}/${program})
    set_tests_properties(InstalledTree.${folder} PROPERTIES FIXTURES_REQUIRED installed_tree)
endfunction()

add_example(first_program first_program)
add_example(headless_test bus_route_test)
