/// A service on a bus that answers as it is told, or not at all. It has a connection and a thread of its own,
/// so that a test thread may block on its replies.
///
///     FakeService service(bus.Address(), "com.talvex.Test.Player");
///     service.Reply("/player", "GetState", "PLAYING");
///     service.Fail("/player", "Resume", "no track");
///     …
///     EXPECT_EQ(service.Calls(), QStringList{"/player com.talvex.Test.Player.GetState"});
///
/// A service that is to lie, to be late or to say nothing gets a script:
///
///     FakeService mute(bus.Address(), "com.talvex.Test.Mute", [](const QDBusMessage&, QDBusConnection&) {});
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMap>
#include <QMutex>
#include <QQueue>
#include <QStringList>
#include <QThread>
#include <QVariant>

#include <functional>

namespace MPL::Doubles
{

class FakeService : private QDBusVirtualObject
{
public:
    /// Handles a call, introspection included, on the service's own thread. Without a reply from it, the
    /// caller gets none.
    using Script = std::function<void(const QDBusMessage& aCall, QDBusConnection& aConnection)>;

    /// Connects to the bus at `aAddress` and takes the name. The service answers at every object path: by the
    /// script if there is one, else as Reply() and Fail() say, and to a call without a prepared reply by an
    /// error.
    FakeService(const QString& aAddress, const QString& aName, Script aScript = {});
    /// Gives the name back; the bus has seen it go when this returns.
    ~FakeService() override;

    /// Adds a reply to `aMethod` at `aPath`. Several are given in turn; the last one is given ever after.
    void Reply(const QString& aPath, const QString& aMethod, const QVariant& aValue);
    /// Adds an error reply, of the name "com.talvex.Error.Test".
    void Fail(const QString& aPath, const QString& aMethod, const QString& aMessage);

    /// Sends a signal from the object at `aPath`.
    void Signal(const QString& aPath, const QString& aInterface, const QString& aName,
                const QVariantList& aArguments);

    /// The calls so far, as "<path> <interface>.<method>".
    QStringList Calls() const;
    /// The arguments of the last call.
    QVariantList LastArguments() const;

private:
    struct Answer {
        QVariant value;
        QString error;
    };

    void Prepare(const QString& aPath, const QString& aMethod, const Answer& aAnswer);
    void AnswerAsPrepared(const QDBusMessage& aCall, QDBusConnection& aConnection);
    QString introspect(const QString& aPath) const override;
    bool handleMessage(const QDBusMessage& aMessage, const QDBusConnection& aConnection) override;

    QString m_Name;
    QString m_ConnectionName;
    Script m_Script;
    QThread m_Thread;
    mutable QMutex m_Mutex;
    QMap<QString, QQueue<Answer>> m_Answers;
    QStringList m_Calls;
    QVariantList m_LastArguments;
};

} // namespace MPL::Doubles
