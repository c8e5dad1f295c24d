#include "LightTraffic.h"

#include "BusQuestions.h"
#include "ConnectionAsker.h"

#include <dbus/dbus.h>

#include <cstring>

namespace sandbox
{

namespace
{

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

} // namespace

LightTraffic::LightTraffic(DBusConnection* aConnection, const PcapFile& aFile)
    : m_Connection(aConnection), m_File(aFile), m_Name(Text(dbus_bus_get_unique_name(aConnection)))
{
    m_File.Tell(kAskerSignal, m_Name);
    for (const char* rule : kRules) {
        dbus_bus_add_match(m_Connection, rule, nullptr);
    }
    for (const Question& question : QuestionsAboutAll(m_Connection)) {
        Ask(question.method, question.name.c_str());
    }
}

// The question is written here, as the bus would show it only after its answer.
void LightTraffic::Ask(const char* aMethod, const char* aName) const
{
    DBusMessage* call = NewQuestion(aMethod, aName);
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
        Ask(kAskForProcess, name);
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
