# Lets a header that qdbusxml2cpp wrote include the classes of Qt D-Bus only: the tool includes <QtDBus/QtDBus>, which also
# includes all of Qt Core, and that takes twice as long to compile.
#   cmake -DHEADER=file -P MplNarrowIncludes.cmake
set(wide "#include <QtDBus/QtDBus>")
set(classes AbstractAdaptor AbstractInterface Argument Connection ConnectionInterface Context Error Interface Message MetaType
    ObjectPath PendingCall PendingReply Reply Server ServiceWatcher UnixFileDescriptor VirtualObject)
list(TRANSFORM classes REPLACE "(.+)" "#include <QtDBus/QDBus\\1>")
list(JOIN classes "\n" narrow)

file(READ ${HEADER} text)
string(FIND "${text}" "${wide}" position)
if(position EQUAL -1)
    message(FATAL_ERROR "${HEADER} has no '${wide}': look at what this qdbusxml2cpp includes, and adapt this file.")
endif()
string(REPLACE "${wide}" "${narrow}" text "${text}")
file(WRITE ${HEADER} "${text}")
