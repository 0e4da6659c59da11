# What `cmake --install` lays down: headers, static libraries, the command line, the base style in share/pelta/style, what web pages are
# made with in share/pelta/web, and the package that find_package(pelta) reads. One installed tree holds one port:
# pelta::headless or pelta::web beside pelta::pelta.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(_port headless)
if(EMSCRIPTEN)
    set(_port web)
endif()
set(_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/pelta)

foreach(_room IN ITEMS platform engine cluster coordinate ${_port})
    set_target_properties(pelta_${_room} PROPERTIES EXPORT_NAME ${_room})
endforeach()
install(TARGETS pelta pelta_cluster pelta_coordinate pelta_engine pelta_platform pelta_${_port} EXPORT pelta-targets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(TARGET pelta_command)
    install(TARGETS pelta_command RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(EXPORT pelta-targets NAMESPACE pelta:: DESTINATION ${_package_dir})

install(DIRECTORY include/ ports/${_port}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h")
if(PELTA_BUILD_BASE_STYLE)
    install(DIRECTORY ${PELTA_BASE_STYLE_DIR}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/pelta/style)
endif()
if(EMSCRIPTEN)
    install(DIRECTORY ports/web/page/ DESTINATION ${CMAKE_INSTALL_DATADIR}/pelta/web)
endif()

configure_package_config_file(cmake/pelta-config.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/pelta-config.cmake
    INSTALL_DESTINATION ${_package_dir}
    PATH_VARS CMAKE_INSTALL_DATADIR)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/pelta-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/pelta-config.cmake ${CMAKE_CURRENT_BINARY_DIR}/pelta-config-version.cmake
        DESTINATION ${_package_dir})

unset(_port)
unset(_room)
unset(_package_dir)
