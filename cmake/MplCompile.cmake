# How this project's own code is compiled. Set for its folders, so nothing here reaches the users of the package.
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_VERIFY_INTERFACE_HEADER_SETS ${PROJECT_IS_TOP_LEVEL})

find_program(MPL_CCACHE ccache)
if(MPL_CCACHE AND PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${MPL_CCACHE})
endif()

add_compile_options(
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wunused -Wformat=2 -Werror)
# The library is written to the API of Qt 5.12, so what later versions deprecate is no news.
add_compile_definitions(
    QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_USE_QSTRINGBUILDER QT_DEPRECATED_WARNINGS_SINCE=0x050C00)

if(MPL_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link -fno-sanitize-recover=all)
endif()
if(MPL_FUZZ_COVERAGE)
    add_compile_options(-fprofile-instr-generate -fcoverage-mapping)
    add_link_options(-fprofile-instr-generate)
endif()
if(MPL_HARDEN)
    foreach(kind CPPFLAGS CXXFLAGS LDFLAGS)
        execute_process(COMMAND ${CMAKE_COMMAND} -E env DEB_BUILD_MAINT_OPTIONS=hardening=+all dpkg-buildflags --get ${kind}
            WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE flags COMMAND_ERROR_IS_FATAL ANY)
        separate_arguments(hardening_${kind} UNIX_COMMAND "${flags}")
    endforeach()
    add_compile_options(${hardening_CPPFLAGS} ${hardening_CXXFLAGS})
    add_link_options(${hardening_LDFLAGS})
endif()

if(MPL_SANITIZE)
    add_compile_options(-fsanitize=${MPL_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${MPL_SANITIZE})
endif()
