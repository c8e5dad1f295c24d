# The pkg-config files. Who links a static library also links what it uses, so that is then named too.
set(folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH way_to_prefix /${folder} /)
string(REGEX REPLACE "/$" "" way_to_prefix ${way_to_prefix})

function(mpl_pkg_config name component description requires static_requires libs)
    string(REGEX REPLACE "-l(Mpl[A-Za-z]+)" "-l\\1${MPL_QT_SUFFIX}" libs ${libs})
    if(NOT BUILD_SHARED_LIBS)
        string(APPEND requires " ${static_requires}")
    endif()
    string(APPEND name ${MPL_QT_SUFFIX})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/mpl.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${folder} COMPONENT ${component})
endfunction()

mpl_pkg_config(mpl-test-support development "Test support for the media-player service stack"
    "${MPL_QT}Core ${MPL_QT}DBus ${MPL_QT}Test gtest" "libcjson" "-lMplTestSupport -lMplProxies -lMplVocabulary")
mpl_pkg_config(mpl-test-main development "A ready main for test programs of the media-player service stack"
    "mpl-test-support${MPL_QT_SUFFIX}" "" "-lMplTestMain")
if(TARGET MplPlatformHost)
    get_target_property(options MplPlatformHost INTERFACE_LINK_OPTIONS)
    list(TRANSFORM options REPLACE "^LINKER:" "-Wl,")
    list(JOIN options " " options)
    mpl_pkg_config(mpl-platform-host host "The stack's platform interfaces on an ordinary Linux machine"
        "${MPL_QT}Core ${MPL_QT}DBus gtest" "${MPL_QT}Sql libsystemd"
        "${options} -lMplPlatformHost -lMplVocabulary")
endif()
