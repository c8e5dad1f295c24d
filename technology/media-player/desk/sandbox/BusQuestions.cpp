#include "BusQuestions.h"

#include <dbus/dbus.h>

namespace sandbox
{

namespace
{

constexpr int kLimitMs = 2000;

} // namespace

DBusMessage* NewQuestion(const char* aMethod, const char* aName)
{
    DBusMessage* call =
        dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, aMethod);
    if (aName != nullptr) {
        dbus_message_append_args(call, DBUS_TYPE_STRING, &aName, DBUS_TYPE_INVALID);
    }
    return call;
}

std::vector<Question> QuestionsAboutAll(DBusConnection* aConnection)
{
    std::vector<Question> questions;
    DBusMessage* call = NewQuestion("ListNames");
    DBusMessage* reply = dbus_connection_send_with_reply_and_block(aConnection, call, kLimitMs, nullptr);
    dbus_message_unref(call);
    if (reply == nullptr) {
        return questions;
    }
    char** names = nullptr;
    int count = 0;
    dbus_message_get_args(reply, nullptr, DBUS_TYPE_ARRAY, DBUS_TYPE_STRING, &names, &count,
                          DBUS_TYPE_INVALID);
    for (int i = 0; i < count; ++i) {
        questions.push_back({names[i][0] == ':' ? kAskForProcess : "GetNameOwner", names[i]});
    }
    dbus_free_string_array(names);
    dbus_message_unref(reply);
    return questions;
}

} // namespace sandbox
