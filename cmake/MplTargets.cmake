# The kinds of targets that the project's folders are made of.

# What find_package() knows the project by.
set(MPL_PACKAGE MplTestSupport${MPL_QT_SUFFIX})
# Headers with names as plain as DataManager.h lie in a folder of their own.
set(MPL_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/mpl-test-support${MPL_QT_SUFFIX})

# Where the simulated stack is installed: mpl-sandbox looks for it there.
set(MPL_INSTALL_STACKDIR lib/mpl-test-support${MPL_QT_SUFFIX}/stack)

# A library of the package, known as Mpl::<name> in the build tree and where it is installed.
#   mpl_add_library(TestSupport [HOST] SOURCES a.cpp … [HEADER_DIRS dir…] [HEADERS include/A.h …])
# Without sources it is an interface. HOST: it belongs to the host package instead of the development one. Public headers
# are named by their path from one of HEADER_DIRS (default: include), the folders that users' includes start in.
function(mpl_add_library name)
    cmake_parse_arguments(arg "HOST" "" "SOURCES;HEADER_DIRS;HEADERS" ${ARGN})
    set(target Mpl${name})
    set(scope PUBLIC)
    if(arg_SOURCES)
        add_library(${target} ${arg_SOURCES})
        target_compile_features(${target} PUBLIC cxx_std_17)
        # Shared libraries of the package find each other where they lie.
        set_target_properties(${target} PROPERTIES OUTPUT_NAME ${target}${MPL_QT_SUFFIX}
            VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} INSTALL_RPATH $ORIGIN)
    else()
        add_library(${target} INTERFACE)
        set(scope INTERFACE)
    endif()
    add_library(Mpl::${name} ALIAS ${target})
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
    if(NOT arg_HEADER_DIRS)
        set(arg_HEADER_DIRS include)
    endif()
    target_sources(${target} ${scope} FILE_SET HEADERS BASE_DIRS ${arg_HEADER_DIRS} FILES ${arg_HEADERS})
    set_property(GLOBAL APPEND PROPERTY MPL_LIBRARIES ${target})

    if(MPL_INSTALL)
        set(component development)
        set(export MplTestSupportTargets)
        if(arg_HOST)
            set(component host)
            set(export MplTestSupportHostTargets)
        endif()
        install(TARGETS ${target} EXPORT ${export}
            ARCHIVE COMPONENT ${component}
            LIBRARY COMPONENT ${component}
            FILE_SET HEADERS DESTINATION ${MPL_INSTALL_INCLUDEDIR} COMPONENT ${component}
            INCLUDES DESTINATION ${MPL_INSTALL_INCLUDEDIR})
    endif()
endfunction()

# Makes <base>.h and <base>.cpp in `dir` from the description of a D-Bus interface, with qdbusxml2cpp's options after
# them. Qt's own CMake functions know neither a second include nor another folder for what they generate.
function(mpl_generate_dbus interface dir base)
    set(xml ${MPL_DBUS_DIR}/com.talvex.DBus.MediaPlayer.${interface}.xml)
    set(narrow_includes ${PROJECT_SOURCE_DIR}/cmake/MplNarrowIncludes.cmake)
    file(MAKE_DIRECTORY ${dir})
    # The tool writes its command into what it generates, which shall be the same wherever this is built.
    file(RELATIVE_PATH xml_from_dir ${dir} ${xml})
    add_custom_command(
        OUTPUT ${dir}/${base}.h ${dir}/${base}.cpp
        COMMAND ${MPL_QT}::qdbusxml2cpp -i MPL_Types.h ${ARGN} ${xml_from_dir}
        COMMAND ${CMAKE_COMMAND} -DHEADER=${base}.h -P ${narrow_includes}
        WORKING_DIRECTORY ${dir}
        DEPENDS ${xml} ${narrow_includes}
        COMMENT "Generating ${base}" VERBATIM)
endfunction()
