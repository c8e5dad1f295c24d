#include "Object.h"

#include "Log.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QPointer>
#include <QTimer>

#include <unistd.h>

#include <csignal>
#include <deque>
#include <utility>

namespace sim
{
namespace
{

bool s_VerboseCalls = false;

struct Outbox {
    bool holding = false; // a call is being served whose signals follow its reply
    std::deque<std::function<void()>> held;
};

Outbox& TheOutbox()
{
    static Outbox s_Outbox;
    return s_Outbox;
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

Object::Object(const FaultPlan& aFaults, QObject* aParent) : QObject(aParent), m_Faults(aFaults) {}

void Object::Announce(std::function<void()> aEmission)
{
    Outbox& outbox = TheOutbox();
    if (!outbox.holding && outbox.held.empty()) {
        aEmission();
        return;
    }
    if (outbox.held.empty()) {
        QTimer::singleShot(0, QCoreApplication::instance(), Flush);
    }
    outbox.held.emplace_back([alive = QPointer<Object>(this), emission = std::move(aEmission)] {
        if (alive) {
            emission();
        }
    });
}

void Object::Refuse(const QString& aMessage)
{
    sendErrorReply(kRefused, aMessage);
}

// Returns whether the method is to be called.
bool Object::BeginCall(const QString& aInterfaceName, const QString& aMethod)
{
    if (s_VerboseCalls) {
        Log(QStringLiteral("%1.%2 called by %3").arg(aInterfaceName, aMethod, message().service()));
    }
    const ReplyFault fault = m_Faults.OfMethod(aInterfaceName, aMethod);
    switch (fault) {
    case ReplyFault::None:
        TheOutbox().holding = true;
        return true;
    case ReplyFault::SignalFirst:
        Flush();
        return true;
    case ReplyFault::Error:
        sendErrorReply(QDBusError::Failed, QStringLiteral("%1 fails, as the test asked").arg(aMethod));
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

void SetVerbose(bool aVerbose)
{
    s_VerboseCalls = aVerbose;
}

} // namespace sim
