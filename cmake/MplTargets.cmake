# How this project's own targets are compiled. Nothing here reaches the users of the package.

include(MplExports)

set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# Headers with names as plain as DataManager.h lie in a folder of their own.
set(MPL_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/mpl-test-support)
find_program(MPL_CCACHE ccache)
if(MPL_CCACHE AND MPL_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${MPL_CCACHE})
endif()

set(MPL_WARNINGS
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wunused -Wformat=2 -Werror)

# Common settings of every target of ours that has source files.
function(mpl_target_defaults target)
    set_target_properties(${target} PROPERTIES
        AUTOMOC ON
        CXX_STANDARD 17
        CXX_STANDARD_REQUIRED ON
        CXX_EXTENSIONS OFF
        POSITION_INDEPENDENT_CODE ON)
    # The library is written to the API of Qt 5.12, so what later versions deprecate is no news.
    target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_TO_ASCII QT_USE_QSTRINGBUILDER QT_DEPRECATED_WARNINGS_SINCE=0x050C00)
    target_compile_options(${target} PRIVATE ${MPL_WARNINGS})
    if(MPL_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${MPL_SANITIZE} -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=${MPL_SANITIZE})
    endif()
endfunction()

# A library Mpl::<Name>, known by that name in the build tree and in the installed package.
#   mpl_add_library(TestSupport SOURCES a.cpp … HEADERS include/A.h … [INCLUDE dir] [EXPORTS name…] [DECLARED_BY target…])
# Header files lie in the directory INCLUDE (default: include) of the calling directory and are installed from there.
# A shared library exports what its headers declare, and those of the targets in DECLARED_BY (see MplExports.cmake).
function(mpl_add_library name)
    cmake_parse_arguments(arg "INTERFACE" "INCLUDE" "SOURCES;HEADERS;EXPORTS;DECLARED_BY" ${ARGN})
    if(NOT arg_INCLUDE)
        set(arg_INCLUDE ${CMAKE_CURRENT_SOURCE_DIR}/include)
    endif()
    if(arg_INTERFACE)
        add_library(Mpl${name} INTERFACE)
        set(scope INTERFACE)
    else()
        add_library(Mpl${name} ${arg_SOURCES} ${arg_HEADERS})
        mpl_target_defaults(Mpl${name})
        set_target_properties(Mpl${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
        target_compile_features(Mpl${name} PUBLIC cxx_std_17)
        set(scope PUBLIC)
    endif()
    add_library(Mpl::${name} ALIAS Mpl${name})
    list(TRANSFORM arg_HEADERS REPLACE "^([^/].*)" "${CMAKE_CURRENT_SOURCE_DIR}/\\1")
    set_target_properties(Mpl${name} PROPERTIES
        EXPORT_NAME ${name}
        MPL_HEADERS "${arg_HEADERS}"
        MPL_HEADER_BASES "${arg_INCLUDE}"
        MPL_EXPORTS "${arg_EXPORTS}")
    target_include_directories(Mpl${name} ${scope}
        $<BUILD_INTERFACE:${arg_INCLUDE}> $<INSTALL_INTERFACE:${MPL_INSTALL_INCLUDEDIR}>)
    set_property(GLOBAL APPEND PROPERTY MPL_PACKAGE_TARGETS Mpl${name})
    if(NOT arg_INTERFACE)
        mpl_limit_exports(Mpl${name} Mpl${name} ${arg_DECLARED_BY})
    endif()
endfunction()
