# What `cmake --install` installs, in three components:
#   development      the libraries a test program links, their headers, the package files
#   host             the host platform and the sandbox: what makes them real on a desk
#   simulated-stack  stand-ins for the stack's programs
include(CMakePackageConfigHelpers)

set(MPL_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/MplTestSupport)
# mpl-sandbox looks for it there.
set(MPL_INSTALL_STACKDIR lib/mpl-test-support/stack)

# The component and export set of a target of the package.
function(mpl_component target component export)
    if(target MATCHES "^(MplPlatformHost|mpl-sandbox|mpl-junit)$")
        set(${component} host PARENT_SCOPE)
        set(${export} MplTestSupportHostTargets PARENT_SCOPE)
    else()
        set(${component} development PARENT_SCOPE)
        set(${export} MplTestSupportTargets PARENT_SCOPE)
    endif()
endfunction()

# Installs the headers of a target, each with its folder below the target's include directory.
function(mpl_install_headers target component)
    get_target_property(headers ${target} MPL_HEADERS)
    get_target_property(bases ${target} MPL_HEADER_BASES)
    foreach(header IN LISTS headers)
        foreach(base IN LISTS bases)
            file(RELATIVE_PATH inside ${base} ${header})
            if(NOT inside MATCHES "^\\.\\.")
                get_filename_component(folder "${inside}" DIRECTORY)
                install(FILES ${header} DESTINATION ${MPL_INSTALL_INCLUDEDIR}/${folder} COMPONENT ${component})
            endif()
        endforeach()
    endforeach()
endfunction()

# Gives a program or library that is installed in `folder` the way to the shared libraries of this package.
function(mpl_install_rpath target folder)
    get_target_property(type ${target} TYPE)
    if(BUILD_SHARED_LIBS AND type MATCHES "EXECUTABLE|SHARED")
        file(RELATIVE_PATH way /${folder} /${CMAKE_INSTALL_LIBDIR})
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${way}")
    endif()
endfunction()

get_property(libraries GLOBAL PROPERTY MPL_PACKAGE_TARGETS)
foreach(library IN LISTS libraries)
    mpl_component(${library} component export)
    mpl_install_headers(${library} ${component})
    mpl_install_rpath(${library} ${CMAKE_INSTALL_LIBDIR})
    install(TARGETS ${library} EXPORT ${export}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${component}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${component})
endforeach()

if(TARGET mpl-sandbox)
    foreach(program mpl-sandbox mpl-junit)
        mpl_install_rpath(${program} ${CMAKE_INSTALL_BINDIR})
        install(TARGETS ${program} EXPORT MplTestSupportHostTargets
            RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT host)
    endforeach()
endif()

get_property(programs GLOBAL PROPERTY MPL_STACK_PROGRAMS)
foreach(program IN LISTS programs)
    get_target_property(folder ${program} RUNTIME_OUTPUT_DIRECTORY)
    file(RELATIVE_PATH folder ${MPL_STACK_DIR} ${folder})
    install(TARGETS ${program} RUNTIME DESTINATION ${MPL_INSTALL_STACKDIR}/${folder} COMPONENT simulated-stack)
endforeach()
if(programs)
    install(DIRECTORY ${MPL_STACK_DIR}/etc DESTINATION ${MPL_INSTALL_STACKDIR} COMPONENT simulated-stack)
endif()

# The CMake package.
foreach(export MplTestSupportTargets:development MplTestSupportHostTargets:host)
    string(REPLACE ":" ";" export ${export})
    list(GET export 0 name)
    list(GET export 1 component)
    if(component STREQUAL "development" OR TARGET mpl-sandbox)
        install(EXPORT ${name} NAMESPACE Mpl:: DESTINATION ${MPL_INSTALL_CMAKEDIR} COMPONENT ${component})
    endif()
endforeach()
configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/MplTestSupportConfig.cmake.in ${PROJECT_BINARY_DIR}/MplTestSupportConfig.cmake
    INSTALL_DESTINATION ${MPL_INSTALL_CMAKEDIR} PATH_VARS MPL_INSTALL_STACKDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MplTestSupportConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/MplTestSupportConfig.cmake
    ${PROJECT_BINARY_DIR}/MplTestSupportConfigVersion.cmake
    ${PROJECT_SOURCE_DIR}/cmake/MplAddTest.cmake
    DESTINATION ${MPL_INSTALL_CMAKEDIR} COMPONENT development)

include(MplPkgConfig)
if(MPL_TOP_LEVEL)
    include(MplPackages)
endif()
