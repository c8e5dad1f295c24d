# Registers googletest programs with CTest, each shard in a sandbox of its own, so that `ctest -j` runs them side by side.
#
#   mpl_add_test(<target> [NAME name] [SHARDS n | PER_CASE] [SPEED n] [TIMELINE [ALWAYS]] [NO_SANDBOX] [TIMEOUT seconds]
#                [LABELS label…] [SANDBOX_OPTIONS option…] [ENVIRONMENT NAME=value…] [ARGS argument…])
#
#   NAME             what the tests are called (default: as the target); one target can so be run in several ways
#   SHARDS           run the program this many times, each time with its share of the cases (default 1)
#   PER_CASE         run the program once for each of its cases, which it is asked for when it has been built; each then
#                    pays for its fixture's bring-up, so give it a speed
#   SPEED            let time pass so many times as fast for the program and its services, from 1 to 100; the default
#                    is the variable MPL_TEST_SPEED, and without it what the environment says when the test runs
#                    (MPL_SANDBOX_SPEED, else 1)
#   TIMELINE         record each run and keep its time line beside its report, as <test>.html, if it failed; with ALWAYS
#                    also if it passed
#   NO_SANDBOX       run the program as it is: for tests that start no service
#   TIMEOUT          seconds that one run may take (default 300), always real ones. The sandbox ends a program that takes
#                    longer, and says so in what it tells of the run; CTest waits 30 seconds longer for that
#   LABELS           CTest labels
#   SANDBOX_OPTIONS  options for mpl-sandbox, for example --stack <dir>
#   ENVIRONMENT      environment variables of the program
#   ARGS             arguments of the program
#
# The tests are called <name>, <name>.<i> with i from 1 on when there are shards, or <name>.<Suite>.<Case>. Each leaves
# a JUnit report in <build folder>/test-reports/<test>.xml (a / in its name becomes a .), also when it crashes or is killed:
# then the report has the cases that ran and an error, in the case that was running or outside any.
#
# When cross-compiling, the programs run under CMAKE_CROSSCOMPILING_EMULATOR; those that need a sandbox only if
# MPL_NATIVE_BUILD names a build of this project for the machine itself. The speed is 1 then, as the emulator would live
# by another clock than the program in it; and for programs built with a sanitizer whose runtime must be loaded first.

function(mpl_add_test target)
    cmake_parse_arguments(arg "NO_SANDBOX;PER_CASE" "NAME;SHARDS;SPEED;TIMEOUT"
        "TIMELINE;LABELS;SANDBOX_OPTIONS;ENVIRONMENT;ARGS" ${ARGN})
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "mpl_add_test(${target}): unknown arguments: ${arg_UNPARSED_ARGUMENTS}")
    endif()
    if(arg_PER_CASE AND DEFINED arg_SHARDS)
        message(FATAL_ERROR "mpl_add_test(${target}): PER_CASE runs each case by itself, so it can't go with SHARDS")
    endif()
    foreach(number SHARDS:1 TIMEOUT:300)
        string(REGEX MATCH "(.*):(.*)" number ${number})
        if(NOT DEFINED arg_${CMAKE_MATCH_1})
            set(arg_${CMAKE_MATCH_1} ${CMAKE_MATCH_2})
        elseif(NOT arg_${CMAKE_MATCH_1} MATCHES "^[1-9][0-9]*$")
            message(FATAL_ERROR "mpl_add_test(${target}): ${CMAKE_MATCH_1} must be a whole number above 0")
        endif()
    endforeach()
    if(NOT arg_NAME)
        set(arg_NAME ${target})
    endif()

    mpl_choose_timeline(${target} timeline_option)
    # The time line's option, which names its test, goes between the two.
    set(sandbox "")
    set(program ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${target}> ${arg_ARGS})
    if(NOT arg_NO_SANDBOX)
        mpl_find_desk_program(sandbox prefix)
        if(NOT prefix)
            if(CMAKE_CROSSCOMPILING)
                return()
            endif()
            message(FATAL_ERROR "mpl_add_test(${target}): there is no mpl-sandbox; install the host package, build "
                "with MPL_BUILD_DESK, or give NO_SANDBOX")
        endif()
        mpl_choose_speed(${target} "${arg_SPEED}" speed)
        set(sandbox ${prefix} --time-limit=${arg_TIMEOUT} ${speed} ${arg_SANDBOX_OPTIONS})
        set(program -- ${program})
        math(EXPR arg_TIMEOUT "${arg_TIMEOUT} + 30")
    elseif(DEFINED arg_SPEED)
        message(FATAL_ERROR "mpl_add_test(${target}): SPEED needs the sandbox, so it can't go with NO_SANDBOX")
    endif()
    mpl_find_desk_program(junit recorder)

    set(reports ${CMAKE_BINARY_DIR}/test-reports)
    file(MAKE_DIRECTORY ${reports})
    if(arg_PER_CASE)
        mpl_add_cases(${target})
        return()
    endif()
    foreach(shard RANGE 1 ${arg_SHARDS})
        set(name ${arg_NAME})
        set(environment ${arg_ENVIRONMENT})
        if(arg_SHARDS GREATER 1)
            string(APPEND name .${shard})
            math(EXPR index "${shard} - 1")
            list(APPEND environment GTEST_TOTAL_SHARDS=${arg_SHARDS} GTEST_SHARD_INDEX=${index})
        endif()
        set(report ${reports}/${name}.xml)
        set(timeline ${timeline_option})
        list(TRANSFORM timeline APPEND =${reports}/${name}.html)
        set(command ${sandbox} ${timeline} ${program})
        if(recorder)
            add_test(NAME ${name} COMMAND ${recorder} ${report} -- ${command})
        else()
            add_test(NAME ${name} COMMAND ${command})
            list(APPEND environment GTEST_OUTPUT=xml:${report})
        endif()
        set_tests_properties(${name} PROPERTIES
            TIMEOUT ${arg_TIMEOUT} LABELS "${arg_LABELS}" ENVIRONMENT "${environment}")
    endforeach()
endfunction()

# A part of mpl_add_test, whose variables it reads. Not done with gtest_discover_tests(), for which a case is skipped, and
# the run green, when googletest leaves it out because its suite's set-up failed.
function(mpl_add_cases target)
    set(base ${CMAKE_CURRENT_BINARY_DIR}/${arg_NAME}_cases)
    set(listing ${base}.txt)
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_COMMAND} -E env ${arg_ENVIRONMENT} sh -c "exec \"$@\" --gtest_list_tests >\"$0\""
            ${listing} ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${target}>
        BYPRODUCTS ${listing} VERBATIM)
    foreach(words recorder sandbox program)
        list(TRANSFORM ${words} REPLACE "(.+)" "[==[\\1]==]")
        list(JOIN ${words} " " ${words})
    endforeach()
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/MplCases.cmake.in ${base}.cmake.in @ONLY)
    get_property(has_many_configurations GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
    if(has_many_configurations)
        file(GENERATE OUTPUT ${base}-$<CONFIG>.cmake INPUT ${base}.cmake.in TARGET ${target})
        file(WRITE ${base}.cmake "include(\"${base}-\${CTEST_CONFIGURATION_TYPE}.cmake\" OPTIONAL)\n")
    else()
        file(GENERATE OUTPUT ${base}.cmake INPUT ${base}.cmake.in TARGET ${target})
    endif()
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${base}.cmake)
endfunction()

# A part of mpl_add_test, whose variables it reads: sets `result` to the option that writes a time line, without its file;
# empty for none.
function(mpl_choose_timeline target result)
    if(arg_TIMELINE STREQUAL "ALWAYS")
        set(option --timeline)
    elseif(DEFINED arg_TIMELINE)
        message(FATAL_ERROR "mpl_add_test(${target}): TIMELINE stands alone or with ALWAYS, not with ${arg_TIMELINE}")
    elseif("TIMELINE" IN_LIST arg_KEYWORDS_MISSING_VALUES)
        set(option --timeline-on-failure)
    else()
        set(option "")
    endif()
    if(arg_NO_SANDBOX AND option)
        message(FATAL_ERROR "mpl_add_test(${target}): TIMELINE needs the sandbox, so it can't go with NO_SANDBOX")
    endif()
    set(${result} "${option}" PARENT_SCOPE)
endfunction()

# Sets `result` to the options that give the target's sandbox its speed; none leaves it to the environment.
function(mpl_choose_speed target speed result)
    if(speed STREQUAL "")
        set(speed "${MPL_TEST_SPEED}")
    endif()
    if(NOT speed STREQUAL "" AND (NOT speed MATCHES "^[0-9]+([.][0-9]+)?$" OR speed LESS 1 OR speed GREATER 100))
        message(FATAL_ERROR "mpl_add_test(${target}): the speed must be a number from 1 to 100, not ${speed}")
    endif()
    string(TOUPPER "${CMAKE_BUILD_TYPE}" type)
    get_target_property(options ${target} COMPILE_OPTIONS)
    if(CMAKE_CROSSCOMPILING
            OR "${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_${type}} ${options}" MATCHES "-fsanitize=[a-z,]*(address|leak|thread)")
        set(speed 1)
    endif()
    if(NOT speed STREQUAL "")
        set(speed --speed=${speed})
    endif()
    set(${result} ${speed} PARENT_SCOPE)
endfunction()

# Sets `result` to the command that runs mpl-<name> on this machine; empty when there is none.
function(mpl_find_desk_program name result)
    set(command "")
    if(NOT CMAKE_CROSSCOMPILING AND TARGET Mpl::${name})
        set(command $<TARGET_FILE:Mpl::${name}>)
    elseif(CMAKE_CROSSCOMPILING AND MPL_NATIVE_BUILD AND CMAKE_CROSSCOMPILING_EMULATOR)
        # Only the program is emulated: the sandbox and the stack in it are this machine's own.
        set(command ${MPL_NATIVE_BUILD}/bin/mpl-${name})
        if(name STREQUAL "sandbox")
            list(APPEND command --stack ${MPL_NATIVE_BUILD}/stack)
        endif()
    endif()
    set(${result} "${command}" PARENT_SCOPE)
endfunction()
