# Installs BUILD, moves what was installed to PREFIX, and takes the first test and its CMakeLists.txt out of README.
# There the package is the one that is built with Qt 5; here it is PACKAGE.
file(REMOVE_RECURSE ${PREFIX} ${PREFIX}.staging)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX}.staging
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${PREFIX}.staging ${PREFIX})

# Writes the only code block of this language in README to a file.
function(take_block text language path)
    string(REPLACE ";" "<semicolon>" text "${text}")
    string(REGEX MATCHALL "```${language}\n[^`]*```" blocks "${text}")
    list(LENGTH blocks count)
    if(NOT count EQUAL 1)
        message(FATAL_ERROR "${README} should have one code block of language ${language}, it has ${count}.")
    endif()
    string(REGEX REPLACE "^```${language}\n|```$" "" block "${blocks}")
    string(REPLACE "<semicolon>" ";" block "${block}")
    string(REPLACE "find_package(MplTestSupport " "find_package(${PACKAGE} " block "${block}")
    file(CONFIGURE OUTPUT ${path} CONTENT "${block}" @ONLY)
endfunction()

file(READ ${README} readme)
take_block("${readme}" cpp ${FIRST_TEST}/first_test.cpp)
take_block("${readme}" cmake ${FIRST_TEST}/CMakeLists.txt)
