# Registers googletest programs with CTest, each shard in a sandbox of its own, so that `ctest -j` runs them side by side.
#
#   mpl_add_test(<target> [SHARDS n] [NO_SANDBOX] [TIMEOUT seconds] [LABELS label…]
#                [SANDBOX_OPTIONS option…] [ENVIRONMENT NAME=value…] [ARGS argument…])
#
#   SHARDS           run the program this many times, each time with its share of the cases (default 1)
#   NO_SANDBOX       run the program as it is: for tests that start no service
#   TIMEOUT          seconds that one shard may take (default 300)
#   LABELS           CTest labels
#   SANDBOX_OPTIONS  options for mpl-sandbox, for example --stack <dir>
#   ENVIRONMENT      environment variables of the program
#   ARGS             arguments of the program
#
# When cross-compiling, the programs run under CMAKE_CROSSCOMPILING_EMULATOR; those that need a sandbox only if
# MPL_NATIVE_BUILD names a build of this project for the machine itself.

function(mpl_add_test target)
    cmake_parse_arguments(arg "NO_SANDBOX" "SHARDS;TIMEOUT" "LABELS;SANDBOX_OPTIONS;ENVIRONMENT;ARGS" ${ARGN})
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "mpl_add_test(${target}): unknown arguments: ${arg_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT arg_SHARDS)
        set(arg_SHARDS 1)
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 300)
    endif()
    if(arg_NO_SANDBOX)
        set(command ${target} ${arg_ARGS})
    elseif(NOT CMAKE_CROSSCOMPILING)
        set(command $<TARGET_FILE:Mpl::sandbox> ${arg_SANDBOX_OPTIONS} -- $<TARGET_FILE:${target}> ${arg_ARGS})
    elseif(MPL_NATIVE_BUILD AND CMAKE_CROSSCOMPILING_EMULATOR)
        # Only the program is emulated: the sandbox and the stack in it are this machine's own.
        set(command ${MPL_NATIVE_BUILD}/bin/mpl-sandbox --stack ${MPL_NATIVE_BUILD}/stack ${arg_SANDBOX_OPTIONS} --
            ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${target}> ${arg_ARGS})
    else()
        return()
    endif()

    foreach(shard RANGE 1 ${arg_SHARDS})
        set(name ${target})
        if(arg_SHARDS GREATER 1)
            set(name ${target}.${shard}of${arg_SHARDS})
        endif()
        math(EXPR index "${shard} - 1")
        set(environment GTEST_TOTAL_SHARDS=${arg_SHARDS} GTEST_SHARD_INDEX=${index} ${arg_ENVIRONMENT})
        add_test(NAME ${name} COMMAND ${command})
        set_tests_properties(${name} PROPERTIES
            TIMEOUT ${arg_TIMEOUT} LABELS "${arg_LABELS}" ENVIRONMENT "${environment}")
    endforeach()
endfunction()
