#include "BusReader.h"

#include "../BusRecorder.h"
#include "../ConnectionAsker.h"
#include "../PcapReader.h"
#include "MessageText.h"

#include <dbus/dbus.h>

#include <map>
#include <utility>

namespace sandbox
{

namespace
{

std::string Text(const char* aText)
{
    return aText != nullptr ? aText : "";
}

// The first texts among the arguments, as many as are asked for.
std::vector<std::string> TextArguments(DBusMessage* aMessage, size_t aCount)
{
    std::vector<std::string> texts(aCount);
    DBusMessageIter argument;
    bool isThere = dbus_message_iter_init(aMessage, &argument) != FALSE;
    for (size_t i = 0; isThere && i < aCount; ++i) {
        const int type = dbus_message_iter_get_arg_type(&argument);
        if (type == DBUS_TYPE_STRING || type == DBUS_TYPE_OBJECT_PATH) {
            const char* text = "";
            dbus_message_iter_get_basic(&argument, &text);
            texts[i] = text;
        }
        isThere = dbus_message_iter_next(&argument) != FALSE;
    }
    return texts;
}

// Follows one bus from message to message.
class BusStory
{
public:
    BusStory(Bus aBus, Run& aRun) : m_Bus(aBus), m_Run(aRun) {}

    void Take(Moment aTime, DBusMessage* aMessage)
    {
        m_Time = aTime;
        if (Text(dbus_message_get_interface(aMessage)) == kRecorderInterface) {
            TakeRecordersWord(aMessage);
            return;
        }
        switch (dbus_message_get_type(aMessage)) {
        case DBUS_MESSAGE_TYPE_METHOD_CALL:
            return TakeCall(aMessage);
        case DBUS_MESSAGE_TYPE_SIGNAL:
            return TakeSignal(aMessage);
        default:
            return TakeReply(aMessage);
        }
    }

    // The bus says which process a connection is only after it is there.
    void Finish()
    {
        for (NameOwnership& name : m_Run.names) {
            const auto owner = m_Connections.find(name.owner);
            if (name.bus == m_Bus && owner != m_Connections.end()) {
                name.process = m_Run.connections[owner->second].process;
            }
        }
    }

private:
    using CallKey = std::pair<std::string, dbus_uint32_t>; // caller, serial

    struct Question {
        std::string method;
        std::string about;
    };

    // A new bus: what was on the one before is gone.
    void TakeRecordersWord(DBusMessage* aMessage)
    {
        if (Text(dbus_message_get_member(aMessage)) != kAskerSignal) {
            return;
        }
        Finish();
        m_Asker = TextArguments(aMessage, 1)[0];
        for (const auto& [name, index] : m_Connections) {
            End(m_Run.connections[index].span);
        }
        for (const auto& [name, index] : m_Names) {
            End(m_Run.names[index].span);
        }
        m_Connections.clear();
        m_Names.clear();
        m_Calls.clear();
    }

    void End(Span& aSpan) const
    {
        if (aSpan.isOpen) {
            aSpan.end = m_Time;
            aSpan.isOpen = false;
        }
    }

    void TakeCall(DBusMessage* aMessage)
    {
        const CallKey key(Text(dbus_message_get_sender(aMessage)), dbus_message_get_serial(aMessage));
        if (key.first == m_Asker) {
            m_Questions[key.second] = {Text(dbus_message_get_member(aMessage)),
                                       TextArguments(aMessage, 1)[0]};
            return;
        }
        Call call;
        call.bus = m_Bus;
        call.from = key.first;
        call.to = Text(dbus_message_get_destination(aMessage));
        call.path = Text(dbus_message_get_path(aMessage));
        call.interface = Text(dbus_message_get_interface(aMessage));
        call.member = Text(dbus_message_get_member(aMessage));
        call.request = TextOf(aMessage);
        call.wantsReply = dbus_message_get_no_reply(aMessage) == FALSE;
        call.span.begin = m_Time;
        if (!call.wantsReply) {
            call.state = Call::State::Replied;
            call.span = {m_Time, m_Time, false};
        }
        m_Calls[key] = m_Run.calls.size();
        m_Run.calls.push_back(std::move(call));
    }

    void TakeReply(DBusMessage* aMessage)
    {
        const CallKey key(Text(dbus_message_get_destination(aMessage)),
                          dbus_message_get_reply_serial(aMessage));
        if (key.first == m_Asker) {
            TakeAnswer(aMessage, m_Questions[key.second]);
            return;
        }
        const auto found = m_Calls.find(key);
        if (found == m_Calls.end()) {
            return;
        }
        Call& call = m_Run.calls[found->second];
        const bool isError = dbus_message_get_type(aMessage) == DBUS_MESSAGE_TYPE_ERROR;
        call.state = isError ? Call::State::Failed : Call::State::Replied;
        call.error = Text(dbus_message_get_error_name(aMessage));
        call.reply = isError ? TextArguments(aMessage, 1)[0] : TextOf(aMessage);
        End(call.span);
    }

    void TakeAnswer(DBusMessage* aMessage, const Question& aQuestion)
    {
        if (aQuestion.method == "GetConnectionUnixProcessID") {
            dbus_uint32_t process = 0;
            if (dbus_message_get_args(aMessage, nullptr, DBUS_TYPE_UINT32, &process, DBUS_TYPE_INVALID) !=
                FALSE) {
                ConnectionOf(aQuestion.about).process = static_cast<int>(process);
            }
        } else if (aQuestion.method == "GetNameOwner" && m_Names.count(aQuestion.about) == 0) {
            if (const std::string owner = TextArguments(aMessage, 1)[0]; !owner.empty() && owner[0] == ':') {
                BeginName(aQuestion.about, owner);
            }
        }
    }

    void TakeSignal(DBusMessage* aMessage)
    {
        const std::string member = Text(dbus_message_get_member(aMessage));
        if (Text(dbus_message_get_destination(aMessage)) == m_Asker && !m_Asker.empty()) {
            return;
        }
        if (Text(dbus_message_get_sender(aMessage)) == DBUS_SERVICE_DBUS && member == "NameOwnerChanged") {
            const std::vector<std::string> change = TextArguments(aMessage, 3);
            if (change[0] == m_Asker) {
                return;
            }
            TakeOwner(change[0], change[2]);
        }
        if (member == "JobRemoved") {
            TakeJob(aMessage);
        }
        m_Run.signals.push_back({m_Bus, m_Time, Text(dbus_message_get_sender(aMessage)),
                                 Text(dbus_message_get_path(aMessage)),
                                 Text(dbus_message_get_interface(aMessage)), member, TextOf(aMessage)});
    }

    void TakeOwner(const std::string& aName, const std::string& aOwner)
    {
        if (aName[0] == ':') {
            Span& span = ConnectionOf(aName).span;
            if (aOwner.empty()) {
                End(span);
            }
            return;
        }
        if (const auto found = m_Names.find(aName); found != m_Names.end()) {
            End(m_Run.names[found->second].span);
        }
        if (!aOwner.empty()) {
            BeginName(aName, aOwner);
        }
    }

    void BeginName(const std::string& aName, const std::string& aOwner)
    {
        NameOwnership name;
        name.bus = m_Bus;
        name.name = aName;
        name.owner = aOwner;
        name.span.begin = m_Time;
        m_Names[aName] = m_Run.names.size();
        m_Run.names.push_back(name);
    }

    Connection& ConnectionOf(const std::string& aName)
    {
        const auto [place, isNew] = m_Connections.emplace(aName, m_Run.connections.size());
        if (isNew) {
            Connection connection;
            connection.bus = m_Bus;
            connection.name = aName;
            connection.span.begin = m_Time;
            m_Run.connections.push_back(connection);
        }
        return m_Run.connections[place->second];
    }

    void TakeJob(DBusMessage* aMessage)
    {
        const std::vector<std::string> job = TextArguments(aMessage, 4); // id, path, unit, result
        m_Run.jobs.push_back({m_Time, job[2], job[3]});
    }

    Bus m_Bus;
    Run& m_Run;
    Moment m_Time = 0;
    std::string m_Asker;
    std::map<dbus_uint32_t, Question> m_Questions;
    std::map<CallKey, size_t> m_Calls;
    std::map<std::string, size_t> m_Connections;
    std::map<std::string, size_t> m_Names;
};

} // namespace

void ReadBus(const std::string& aPcap, Bus aBus, long long aZero, Run& aRun)
{
    BusStory story(aBus, aRun);
    ReadPcap(aPcap, [&](long long aTime, DBusMessage* aMessage) { story.Take(aTime - aZero, aMessage); });
    story.Finish();
}

} // namespace sandbox
