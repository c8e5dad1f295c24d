# Qt's package files name the generators of the target's processor; defined before them, those of the build machine win.
foreach(tool moc rcc qdbusxml2cpp qdbuscpp2xml)
    if(NOT TARGET Qt5::${tool})
        find_program(MPL_NATIVE_${tool} ${tool} PATHS /usr/lib/qt5/bin NO_CMAKE_FIND_ROOT_PATH REQUIRED)
        add_executable(Qt5::${tool} IMPORTED)
        set_target_properties(Qt5::${tool} PROPERTIES IMPORTED_LOCATION ${MPL_NATIVE_${tool}})
    endif()
endforeach()
set(QT_MOC_EXECUTABLE ${MPL_NATIVE_moc})
