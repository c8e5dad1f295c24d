// A service that owns a name of the private bus and answers each call with an error, or none:
//     mpl_rude_service name error|silence
#include <dbus/dbus.h>

#include <cstring>

int main(int argc, char** argv)
{
    DBusConnection* bus =
        argc == 3 ? dbus_connection_open_private("unix:path=/var/talvex/media-player/testDbus", nullptr)
                  : nullptr;
    if (bus == nullptr || dbus_bus_register(bus, nullptr) == FALSE ||
        dbus_bus_request_name(bus, argv[1], 0, nullptr) < 0) {
        return 1;
    }
    while (dbus_connection_read_write(bus, -1) != FALSE) {
        while (DBusMessage* message = dbus_connection_pop_message(bus)) {
            if (dbus_message_get_type(message) == DBUS_MESSAGE_TYPE_METHOD_CALL &&
                std::strcmp(argv[2], "error") == 0) {
                DBusMessage* reply =
                    dbus_message_new_error(message, DBUS_ERROR_ACCESS_DENIED, "This is private.");
                dbus_connection_send(bus, reply, nullptr);
                dbus_message_unref(reply);
            }
            dbus_message_unref(message);
        }
    }
    return 0;
}
