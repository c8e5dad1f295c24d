# The target `reference`: HTML pages of the public headers and the guides. An undocumented public function is an error.
find_package(Doxygen 1.9)
if(NOT DOXYGEN_FOUND)
    return()
endif()

set(reference_input ${PROJECT_SOURCE_DIR}/docs)
get_property(libraries GLOBAL PROPERTY MPL_LIBRARIES)
foreach(library IN LISTS libraries)
    get_target_property(headers ${library} HEADER_SET)
    list(APPEND reference_input ${headers})
endforeach()
# The generated proxies are described by the interface descriptions and by the header that gathers them.
list(FILTER reference_input EXCLUDE REGEX "^${PROJECT_BINARY_DIR}/.*Proxy\\.h$")
list(JOIN reference_input " " reference_input)

configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${PROJECT_BINARY_DIR}/Doxyfile @ONLY)
add_custom_target(reference
    COMMAND Doxygen::doxygen ${PROJECT_BINARY_DIR}/Doxyfile
    COMMENT "Writing the reference to ${PROJECT_BINARY_DIR}/reference/html" VERBATIM)
if(MPL_BUILD_TESTS)
    add_test(NAME package.reference COMMAND Doxygen::doxygen ${PROJECT_BINARY_DIR}/Doxyfile)
    set_tests_properties(package.reference PROPERTIES LABELS package)
endif()
