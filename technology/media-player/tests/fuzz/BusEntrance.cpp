#include "BusEntrance.h"

#include "Fuzzing.h"
#include <MPL_Types.h>

#include <QTemporaryDir>

#include <dlfcn.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>

namespace
{

struct Receiver {
    DBusHandleMessageFunction function = nullptr;
    DBusConnection* connection = nullptr;
    void* data = nullptr;
};

Receiver s_Receiver;

// Listens for the rest of the program's life.
void ListenSilently(const QByteArray& aPath)
{
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, aPath.constData(), sizeof address.sun_path - 1);
    fuzz::Promise(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
                      listen(listener, 1) == 0,
                  "a socket can be made");
}

QDBusConnection Connect()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("silence");
    ListenSilently(path.toLocal8Bit());
    return QDBusConnection::connectToPeer("unix:path=" + path, "entrance");
}

} // namespace

// Qt's call comes here instead of to libdbus.
extern "C" dbus_bool_t dbus_connection_add_filter(DBusConnection* aConnection,
                                                  DBusHandleMessageFunction aFunction, void* aData,
                                                  DBusFreeFunction aFree)
{
    s_Receiver = {aFunction, aConnection, aData};
    const auto next = reinterpret_cast<decltype(&dbus_connection_add_filter)>(
        dlsym(RTLD_NEXT, "dbus_connection_add_filter"));
    return next(aConnection, aFunction, aData, aFree);
}

namespace fuzz
{

BusEntrance::BusEntrance() : m_Connection(Connect())
{
    MPL::RegisterAllMetaTypes();
    SilenceLog();
    Promise(m_Connection.isConnected() && s_Receiver.function != nullptr, "Qt takes messages in");
    for (const char* interface : {"MediaManager", "MediaSource", "IndexerInfo", "MMEMount", "PlaybackControl",
                                  "MediaInfo", "PlayQueue", "Browser", "MediaSourceFactorySimulation"}) {
        Promise(m_Connection.connect(QString(), "/object",
                                     QLatin1String("com.talvex.DBus.MediaPlayer.") + QLatin1String(interface),
                                     QString(), this, SLOT(Note(QDBusMessage))),
                "signals can be listened to");
    }
}

const QDBusMessage& BusEntrance::Deliver(DBusMessage* aMessage)
{
    m_Last = {};
    s_Receiver.function(s_Receiver.connection, aMessage, s_Receiver.data);
    QCoreApplication::sendPostedEvents();
    return m_Last;
}

} // namespace fuzz
