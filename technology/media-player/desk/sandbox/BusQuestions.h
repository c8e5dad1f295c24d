/// What a bus is asked about those that are on it.
#pragma once

#include <string>
#include <vector>

struct DBusConnection;
struct DBusMessage;

namespace sandbox
{

/// The method that tells which process is behind a connection.
constexpr const char* kAskForProcess = "GetConnectionUnixProcessID";

/// A question to the bus itself, about a name or about nothing.
DBusMessage* NewQuestion(const char* aMethod, const char* aName = nullptr);

/// A question about a name that is on the bus.
struct Question {
    const char* method;
    std::string name;
};

/// What is to be asked to know who is there: the process of each connection and the owner of each other name.
/// Blocks for the list of them, two seconds at most; empty without an answer.
std::vector<Question> QuestionsAboutAll(DBusConnection* aConnection);

} // namespace sandbox
