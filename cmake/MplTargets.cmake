# How this project's own targets are compiled. Nothing here reaches the users of the package.

set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
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
#   mpl_add_library(TestSupport SOURCES a.cpp … HEADERS include/A.h … [INCLUDE dir])
# Header files lie in the directory INCLUDE (default: include) of the calling directory.
function(mpl_add_library name)
    cmake_parse_arguments(arg "INTERFACE" "INCLUDE" "SOURCES;HEADERS" ${ARGN})
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
        set(scope PUBLIC)
    endif()
    add_library(Mpl::${name} ALIAS Mpl${name})
    set_target_properties(Mpl${name} PROPERTIES EXPORT_NAME ${name})
    target_include_directories(Mpl${name} ${scope} $<BUILD_INTERFACE:${arg_INCLUDE}>)
    set_property(GLOBAL APPEND PROPERTY MPL_PACKAGE_TARGETS Mpl${name})
endfunction()
