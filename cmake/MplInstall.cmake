# The package around the libraries, which install themselves (see MplTargets.cmake), in four components:
#   development      the libraries a test program links, their headers, the package files
#   host             the host platform: what makes them real on a desk
#   sandbox          the sandbox and what else knows no Qt: the same whichever Qt the others were built with
#   simulated-stack  stand-ins for the stack's programs
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${MPL_PACKAGE})

install(EXPORT MplTestSupportTargets NAMESPACE Mpl:: DESTINATION ${package_dir} COMPONENT development)
if(MPL_BUILD_DESK)
    install(TARGETS mpl-sandbox mpl-junit EXPORT MplTestSupportHostTargets RUNTIME COMPONENT sandbox)
    install(TARGETS mpl-clock mpl-manager LIBRARY DESTINATION lib/mpl-test-support COMPONENT sandbox)
    install(EXPORT MplTestSupportHostTargets NAMESPACE Mpl:: DESTINATION ${package_dir} COMPONENT host)
    # Its programs install themselves.
    install(DIRECTORY ${MPL_STACK_DIR}/etc DESTINATION ${MPL_INSTALL_STACKDIR} COMPONENT simulated-stack)
    install(DIRECTORY ${MPL_STACK_DIR}/test/media DESTINATION ${MPL_INSTALL_STACKDIR}/test COMPONENT simulated-stack)
endif()

configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/MplTestSupportConfig.cmake.in ${PROJECT_BINARY_DIR}/${MPL_PACKAGE}Config.cmake
    INSTALL_DESTINATION ${package_dir} PATH_VARS MPL_INSTALL_STACKDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/${MPL_PACKAGE}ConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/${MPL_PACKAGE}Config.cmake
    ${PROJECT_BINARY_DIR}/${MPL_PACKAGE}ConfigVersion.cmake
    ${PROJECT_SOURCE_DIR}/cmake/MplAddTest.cmake
    ${PROJECT_SOURCE_DIR}/cmake/MplCases.cmake.in
    DESTINATION ${package_dir} COMPONENT development)

include(MplPkgConfig)
if(PROJECT_IS_TOP_LEVEL)
    include(MplPackages)
endif()
