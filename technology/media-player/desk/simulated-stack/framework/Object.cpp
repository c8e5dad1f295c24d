#include "Object.h"

#include "Log.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QPointer>
#include <QTimer>

#include <csignal>
#include <deque>
#include <unistd.h>
#include <utility>

namespace sim
{
namespace
{

bool verboseCalls = false;

struct Outbox {
    bool holding = false; // a call is being served whose signals follow its reply
    std::deque<std::function<void()>> held;
};

Outbox& TheOutbox()
{
    static Outbox outbox;
    return outbox;
}

void Flush()
{
    std::deque<std::function<void()>>& held = TheOutbox().held;
    while (!held.empty()) {
        const std::function<void()> emission = std::move(held.front());
        held.pop_front();
        emission();
    }
}

} // namespace

const QString Object::kRefused = QStringLiteral("com.talvex.DBus.MediaPlayer.Error.Refused");

Object::Object(const FaultPlan& faults, QObject* parent) : QObject(parent), m_Faults(faults) {}

void Object::Announce(std::function<void()> emission)
{
    Outbox& outbox = TheOutbox();
    if (!outbox.holding && outbox.held.empty()) {
        emission();
        return;
    }
    if (outbox.held.empty()) {
        QTimer::singleShot(0, QCoreApplication::instance(), Flush);
    }
    outbox.held.emplace_back([alive = QPointer<Object>(this), emission = std::move(emission)] {
        if (alive) {
            emission();
        }
    });
}

void Object::Refuse(const QString& message)
{
    sendErrorReply(kRefused, message);
}

// Returns whether the method is to be called.
bool Object::BeginCall(const QString& interfaceName, const QString& method)
{
    if (verboseCalls) {
        Log(QStringLiteral("%1.%2 called by %3").arg(interfaceName, method, message().service()));
    }
    const ReplyFault fault = m_Faults.OfMethod(interfaceName, method);
    switch (fault) {
    case ReplyFault::None:
        TheOutbox().holding = true;
        return true;
    case ReplyFault::SignalFirst:
        Flush();
        return true;
    case ReplyFault::Error:
        sendErrorReply(QDBusError::Failed, QStringLiteral("%1 fails, as the test asked").arg(method));
        return false;
    case ReplyFault::Never:
        setDelayedReply(true);
        return false;
    case ReplyFault::WrongSignature:
        setDelayedReply(true);
        connection().send(message().createReply(0.5));
        return false;
    case ReplyFault::Die:
        ::kill(::getpid(), SIGKILL);
        return false;
    }
    return true;
}

void Object::EndCall()
{
    TheOutbox().holding = false;
}

void SetVerbose(bool verbose)
{
    verboseCalls = verbose;
}

} // namespace sim
