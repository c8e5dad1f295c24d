#include "ConnectionAsker.h"

#include "BusQuestions.h"

#include <dbus/dbus.h>

namespace sandbox
{

namespace
{

struct OwnerChange {
    const char* name = "";
    const char* before = "";
    const char* after = "";
};

OwnerChange OwnerChangeIn(DBusMessage* aMessage)
{
    OwnerChange change;
    if (dbus_message_is_signal(aMessage, DBUS_INTERFACE_DBUS, "NameOwnerChanged") != FALSE) {
        dbus_message_get_args(aMessage, nullptr, DBUS_TYPE_STRING, &change.name, DBUS_TYPE_STRING,
                              &change.before, DBUS_TYPE_STRING, &change.after, DBUS_TYPE_INVALID);
    }
    return change;
}

} // namespace

std::string ConnectionAsker::Name() const
{
    return m_Bus.IsConnected() ? dbus_bus_get_unique_name(m_Bus.Get()) : "";
}

void ConnectionAsker::AskAboutAll()
{
    if (!m_Bus.IsConnected()) {
        return;
    }
    for (const Question& question : QuestionsAboutAll(m_Bus.Get())) {
        Send(question.method, question.name);
    }
}

void ConnectionAsker::AskAboutNew(DBusMessage* aMessage)
{
    const OwnerChange change = OwnerChangeIn(aMessage);
    if (change.name[0] == ':' && change.after[0] != '\0') {
        Send(kAskForProcess, change.name);
    }
}

bool ConnectionAsker::IsOwn(DBusMessage* aMessage) const
{
    const std::string name = Name();
    const auto is = [&](const char* aName) { return aName != nullptr && name == aName; };
    return !name.empty() && (is(dbus_message_get_sender(aMessage)) ||
                             is(dbus_message_get_destination(aMessage)) || is(OwnerChangeIn(aMessage).name));
}

// The monitor sees the answer; here it is only taken off the wire.
void ConnectionAsker::Send(const char* aMethod, const std::string& aName)
{
    if (!m_Bus.IsConnected()) {
        return;
    }
    DBusMessage* call = NewQuestion(aMethod, aName.c_str());
    dbus_connection_send(m_Bus.Get(), call, nullptr);
    dbus_connection_flush(m_Bus.Get());
    dbus_message_unref(call);
    dbus_connection_read_write(m_Bus.Get(), 0);
    while (DBusMessage* answer = dbus_connection_pop_message(m_Bus.Get())) {
        dbus_message_unref(answer);
    }
}

} // namespace sandbox
