# The package around the libraries, which install themselves (see MplTargets.cmake), in three components:
#   development      the libraries a test program links, their headers, the package files
#   host             the host platform and the sandbox: what makes them real on a desk
#   simulated-stack  stand-ins for the stack's programs
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/MplTestSupport)
# mpl-sandbox looks for it there.
set(MPL_INSTALL_STACKDIR lib/mpl-test-support/stack)

install(EXPORT MplTestSupportTargets NAMESPACE Mpl:: DESTINATION ${package_dir} COMPONENT development)
if(MPL_BUILD_DESK)
    install(TARGETS mpl-sandbox mpl-junit EXPORT MplTestSupportHostTargets RUNTIME COMPONENT host)
    install(TARGETS mpl-clock mpl-manager LIBRARY DESTINATION lib/mpl-test-support COMPONENT host)
    install(EXPORT MplTestSupportHostTargets NAMESPACE Mpl:: DESTINATION ${package_dir} COMPONENT host)
    install(DIRECTORY ${MPL_STACK_DIR}/ DESTINATION ${MPL_INSTALL_STACKDIR} COMPONENT simulated-stack USE_SOURCE_PERMISSIONS)
endif()

configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/MplTestSupportConfig.cmake.in ${PROJECT_BINARY_DIR}/MplTestSupportConfig.cmake
    INSTALL_DESTINATION ${package_dir} PATH_VARS MPL_INSTALL_STACKDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MplTestSupportConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/MplTestSupportConfig.cmake
    ${PROJECT_BINARY_DIR}/MplTestSupportConfigVersion.cmake
    ${PROJECT_SOURCE_DIR}/cmake/MplAddTest.cmake
    ${PROJECT_SOURCE_DIR}/cmake/MplCases.cmake.in
    DESTINATION ${package_dir} COMPONENT development)

include(MplPkgConfig)
if(PROJECT_IS_TOP_LEVEL)
    include(MplPackages)
endif()
