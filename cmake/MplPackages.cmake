# Debian packages of the three components, and what lies in their /usr/share/doc: cmake --workflow --preset packages, or
# cpack --config <build>/CPackConfig.cmake, from wherever it is called.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/deb)
set(CPACK_PACKAGE_VENDOR "MPL test support")
set(CPACK_PACKAGE_CONTACT "MPL test support <maintainers@example.com>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL development host simulated-stack)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${PROJECT_BINARY_DIR}/technology/media-player/common
    ${PROJECT_BINARY_DIR}/technology/media-player/dbus
    ${PROJECT_BINARY_DIR}/technology/media-player/tests/common
    ${PROJECT_BINARY_DIR}/technology/media-player/desk/host)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libmpl-test-support-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "qtbase5-dev, libgtest-dev, libcjson-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "libgmock-dev") # for MPL_TestMatchers.h alone
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Test support for the media-player service stack
 Library and headers that the stack's unit and integration tests link.")

set(CPACK_DEBIAN_HOST_PACKAGE_NAME mpl-test-support-host)
set(CPACK_DEBIAN_HOST_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_HOST_PACKAGE_DEPENDS
    "libmpl-test-support-dev (= ${PROJECT_VERSION}), libsystemd-dev, libqt5sql5-sqlite, dbus-daemon, bubblewrap, libfaketime")
set(CPACK_DEBIAN_HOST_PACKAGE_RECOMMENDS "systemd, mpl-test-support-simulated-stack")
set(CPACK_COMPONENT_HOST_DESCRIPTION "Host platform and sandbox for tests of the media-player service stack
 The platform interfaces on an ordinary Linux machine, and the sandbox in which
 test programs run there.")

set(CPACK_DEBIAN_SIMULATED-STACK_PACKAGE_NAME mpl-test-support-simulated-stack)
set(CPACK_DEBIAN_SIMULATED-STACK_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_SIMULATED-STACK_PACKAGE_DEPENDS "libqt5sql5-sqlite")
set(CPACK_COMPONENT_SIMULATED-STACK_DESCRIPTION "Stand-ins for the programs of the media-player service stack
 Real processes on a real bus, for machines that have no vehicle stack.")

foreach(component development host simulated-stack)
    string(TOUPPER ${component} upper)
    set(doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION ${doc_dir} RENAME changelog COMPONENT ${component})
    install(FILES ${PROJECT_SOURCE_DIR}/cmake/copyright DESTINATION ${doc_dir} COMPONENT ${component})
endforeach()
set(doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/${CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME})
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CONTRIBUTING.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
    DESTINATION ${doc_dir} COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${doc_dir} COMPONENT development USE_SOURCE_PERMISSIONS
    PATTERN Doxyfile.in EXCLUDE PATTERN __pycache__ EXCLUDE)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/technology/media-player/examples DESTINATION ${doc_dir} COMPONENT development)

include(CPack)
