# The Qt that everything here is built with. Nothing else in the project's CMake knows which one it is.
#   MPL_QT         its package, and the prefix of its targets
#   MPL_QT_OLDEST  the oldest version that will do
#   MPL_QT_SUFFIX  what follows the names of whatever is installed, so that builds with either Qt lie side by side
# Of the other Qt, which a project that uses this one may have: MPL_OTHER_QT_VERSION and MPL_OTHER_QT_SUFFIX.
set(MPL_QT_VERSION 5 CACHE STRING "Major version of Qt to build with: 5 or 6")
set_property(CACHE MPL_QT_VERSION PROPERTY STRINGS 5 6)
set(MPL_QT Qt${MPL_QT_VERSION})

if(MPL_QT_VERSION EQUAL 5)
    set(MPL_QT_OLDEST 5.12)
    set(MPL_QT_SUFFIX "")
    set(MPL_QT_DEBIAN_PACKAGE qtbase5-dev)
    set(MPL_OTHER_QT_VERSION 6)
    set(MPL_OTHER_QT_SUFFIX -qt6)
elseif(MPL_QT_VERSION EQUAL 6)
    set(MPL_QT_OLDEST 6.4)
    set(MPL_QT_SUFFIX -qt6)
    set(MPL_QT_DEBIAN_PACKAGE qt6-base-dev)
    set(MPL_OTHER_QT_VERSION 5)
    set(MPL_OTHER_QT_SUFFIX "")
else()
    message(FATAL_ERROR "MPL_QT_VERSION is ${MPL_QT_VERSION}: this project can be built with Qt 5 or 6.")
endif()

# A macro, as what is found belongs to the folder that asks for it.
macro(mpl_find_qt)
    find_package(${MPL_QT} ${MPL_QT_OLDEST} REQUIRED COMPONENTS ${ARGN})
    if(TARGET ${MPL_QT}::Test)
        mpl_forget_test_folders()
    endif()
endmacro()

# Qt Test tells each source in which folder it is built: nothing here asks, and what another clone has compiled is no use then.
function(mpl_forget_test_folders)
    get_target_property(definitions ${MPL_QT}::Test INTERFACE_COMPILE_DEFINITIONS)
    list(FILTER definitions EXCLUDE REGEX "^QT_TESTCASE_")
    set_target_properties(${MPL_QT}::Test PROPERTIES INTERFACE_COMPILE_DEFINITIONS "${definitions}")
endfunction()
