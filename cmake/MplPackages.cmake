# Debian packages of the four components, and what lies in their /usr/share/doc: cmake --workflow --preset packages, or
# cpack --config <build>/CPackConfig.cmake, from wherever it is called.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/deb)
set(CPACK_PACKAGE_VENDOR "MPL test support")
set(CPACK_PACKAGE_CONTACT "MPL test support <maintainers@example.com>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL development host sandbox simulated-stack)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${PROJECT_BINARY_DIR}/technology/media-player/common
    ${PROJECT_BINARY_DIR}/technology/media-player/dbus
    ${PROJECT_BINARY_DIR}/technology/media-player/tests/common
    ${PROJECT_BINARY_DIR}/technology/media-player/desk/host)

set(sqlite_driver libqt${MPL_QT_VERSION}sql${MPL_QT_VERSION}-sqlite)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libmpl-test-support${MPL_QT_SUFFIX}-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${MPL_QT_DEBIAN_PACKAGE}, libgtest-dev, libcjson-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "libgmock-dev") # for MPL_TestMatchers.h alone
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Test support for the media-player service stack
 Library and headers that the stack's unit and integration tests link.")

set(CPACK_DEBIAN_HOST_PACKAGE_NAME mpl-test-support-host${MPL_QT_SUFFIX})
set(CPACK_DEBIAN_HOST_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_HOST_PACKAGE_DEPENDS
    "${CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME} (= ${PROJECT_VERSION}), mpl-test-support-sandbox (= ${PROJECT_VERSION}), libsystemd-dev, ${sqlite_driver}")
set(CPACK_DEBIAN_HOST_PACKAGE_RECOMMENDS "mpl-test-support-simulated-stack${MPL_QT_SUFFIX}")
set(CPACK_COMPONENT_HOST_DESCRIPTION "Host platform for tests of the media-player service stack
 The platform interfaces on an ordinary Linux machine.")

# One for both: it knows no Qt.
set(CPACK_DEBIAN_SANDBOX_PACKAGE_NAME mpl-test-support-sandbox)
set(CPACK_DEBIAN_SANDBOX_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_SANDBOX_PACKAGE_DEPENDS "dbus-daemon, bubblewrap, libfaketime")
set(CPACK_DEBIAN_SANDBOX_PACKAGE_RECOMMENDS "systemd, libdw1") # libdw1 for where programs crashed
set(CPACK_COMPONENT_SANDBOX_DESCRIPTION "Sandbox for tests of the media-player service stack
 A private world of its own for each test program, and its JUnit report.")

set(CPACK_DEBIAN_SIMULATED-STACK_PACKAGE_NAME mpl-test-support-simulated-stack${MPL_QT_SUFFIX})
set(CPACK_DEBIAN_SIMULATED-STACK_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_SIMULATED-STACK_PACKAGE_DEPENDS "${sqlite_driver}")
set(CPACK_COMPONENT_SIMULATED-STACK_DESCRIPTION "Stand-ins for the programs of the media-player service stack
 Real processes on a real bus, for machines that have no vehicle stack.")

set(changelog ${PROJECT_BINARY_DIR}/changelog.gz)
add_custom_command(OUTPUT ${changelog}
    COMMAND sh -c "gzip -9nc \"$0\" >\"$1\"" ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${changelog}
    DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md VERBATIM)
add_custom_target(mpl_changelog ALL DEPENDS ${changelog})

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    set(doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    install(FILES ${changelog} DESTINATION ${doc_dir} COMPONENT ${component})
    install(FILES ${PROJECT_SOURCE_DIR}/cmake/copyright DESTINATION ${doc_dir} COMPONENT ${component})
endforeach()
foreach(component development host)
    string(TOUPPER ${component} upper)
    install(FILES ${PROJECT_SOURCE_DIR}/cmake/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides
        RENAME ${CPACK_DEBIAN_${upper}_PACKAGE_NAME} COMPONENT ${component})
endforeach()
set(doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/${CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME})
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CONTRIBUTING.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
    DESTINATION ${doc_dir} COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${doc_dir} COMPONENT development USE_SOURCE_PERMISSIONS
    PATTERN Doxyfile.in EXCLUDE PATTERN __pycache__ EXCLUDE)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/technology/media-player/examples DESTINATION ${doc_dir} COMPONENT development)

include(CPack)
