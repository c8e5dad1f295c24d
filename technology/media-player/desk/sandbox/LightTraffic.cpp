#include "LightTraffic.h"

#include "ConnectionAsker.h"

#include <dbus/dbus.h>

#include <cstring>

namespace sandbox
{

namespace
{

constexpr int kLimitMs = 2000;

constexpr const char* kRules[] = {
    "type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged'",
    "type='signal',interface='com.talvex.MplSandbox.Recorder'",
    "eavesdrop='true',type='signal',interface='org.freedesktop.systemd1.Manager',member='JobRemoved'",
    "eavesdrop='true',type='method_call',destination='org.freedesktop.DBus',member='RequestName'",
    "eavesdrop='true',type='method_call',destination='org.freedesktop.DBus',member='NameHasOwner'",
    "eavesdrop='true',type='method_call',interface='org.freedesktop.DBus.Introspectable'",
    "eavesdrop='true',type='method_return'",
    "eavesdrop='true',type='error'"};

std::string Text(const char* aText)
{
    return aText != nullptr ? aText : "";
}

DBusMessage* NewCall(const char* aMethod)
{
    return dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, aMethod);
}

} // namespace

LightTraffic::LightTraffic(DBusConnection* aConnection, const PcapFile& aFile)
    : m_Connection(aConnection), m_File(aFile), m_Name(Text(dbus_bus_get_unique_name(aConnection)))
{
    m_File.Tell(kAskerSignal, m_Name);
    for (const char* rule : kRules) {
        dbus_bus_add_match(m_Connection, rule, nullptr);
    }
    AskAboutAll();
}

void LightTraffic::AskAboutAll() const
{
    DBusMessage* call = NewCall("ListNames");
    DBusMessage* reply = dbus_connection_send_with_reply_and_block(m_Connection, call, kLimitMs, nullptr);
    dbus_message_unref(call);
    char** names = nullptr;
    int count = 0;
    if (reply == nullptr) {
        return;
    }
    dbus_message_get_args(reply, nullptr, DBUS_TYPE_ARRAY, DBUS_TYPE_STRING, &names, &count,
                          DBUS_TYPE_INVALID);
    for (int i = 0; i < count; ++i) {
        Ask(names[i][0] == ':' ? "GetConnectionUnixProcessID" : "GetNameOwner", names[i]);
    }
    dbus_free_string_array(names);
    dbus_message_unref(reply);
}

// The question is written here, as the bus would show it only after its answer.
void LightTraffic::Ask(const char* aMethod, const char* aName) const
{
    DBusMessage* call = NewCall(aMethod);
    dbus_message_append_args(call, DBUS_TYPE_STRING, &aName, DBUS_TYPE_INVALID);
    dbus_message_set_sender(call, m_Name.c_str());
    dbus_connection_send(m_Connection, call, nullptr);
    m_File.Write(call);
    dbus_message_unref(call);
    dbus_connection_flush(m_Connection);
}

void LightTraffic::Take(DBusMessage* aMessage)
{
    if (!IsWanted(aMessage)) {
        return;
    }
    m_File.Write(aMessage);
    const char* name = "";
    const char* before = "";
    const char* after = "";
    if (dbus_message_is_signal(aMessage, DBUS_INTERFACE_DBUS, "NameOwnerChanged") != FALSE &&
        dbus_message_get_args(aMessage, nullptr, DBUS_TYPE_STRING, &name, DBUS_TYPE_STRING, &before,
                              DBUS_TYPE_STRING, &after, DBUS_TYPE_INVALID) != FALSE &&
        name[0] == ':' && std::strlen(after) > 0) {
        Ask("GetConnectionUnixProcessID", name);
    }
}

// Not the answers to calls that are no part of it.
bool LightTraffic::IsWanted(DBusMessage* aMessage)
{
    const int type = dbus_message_get_type(aMessage);
    const std::string sender = Text(dbus_message_get_sender(aMessage));
    const std::string destination = Text(dbus_message_get_destination(aMessage));
    if (type == DBUS_MESSAGE_TYPE_METHOD_CALL) {
        m_Calls.emplace(sender, dbus_message_get_serial(aMessage));
        return true;
    }
    return type == DBUS_MESSAGE_TYPE_SIGNAL || destination == m_Name ||
           m_Calls.erase({destination, dbus_message_get_reply_serial(aMessage)}) != 0;
}

} // namespace sandbox
