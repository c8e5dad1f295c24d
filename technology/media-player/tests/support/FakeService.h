/// A service on a bus that answers as it is told. It has a connection and a thread of its own, so that a test
/// thread may block on its replies.
#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QMap>
#include <QMutex>
#include <QQueue>
#include <QStringList>
#include <QThread>
#include <QVariant>

namespace MPL::Doubles
{

class FakeService : private QDBusVirtualObject
{
public:
    /// Connects to the bus at `aAddress` and takes the name. The service answers at every object path.
    FakeService(const QString& aAddress, const QString& aName);
    ~FakeService() override;

    /// Adds a reply to `aMethod` at `aPath`. Several are given in turn; the last one is given ever after.
    void Reply(const QString& aPath, const QString& aMethod, const QVariant& aValue);
    /// Adds an error reply, of the name "com.talvex.Error.Test".
    void Fail(const QString& aPath, const QString& aMethod, const QString& aMessage);

    /// Sends a signal from the object at `aPath`.
    void Signal(const QString& aPath, const QString& aInterface, const QString& aName,
                const QVariantList& aArguments);

    /// The calls so far, as "<path> <interface>.<method>"; a call without a prepared reply got an error.
    QStringList Calls() const;
    /// The arguments of the last call.
    QVariantList LastArguments() const;

private:
    struct Answer {
        QVariant value;
        QString error;
    };

    void Prepare(const QString& aPath, const QString& aMethod, const Answer& aAnswer);
    QString introspect(const QString& aPath) const override;
    bool handleMessage(const QDBusMessage& aMessage, const QDBusConnection& aConnection) override;

    QString m_ConnectionName;
    QThread m_Thread;
    mutable QMutex m_Mutex;
    QMap<QString, QQueue<Answer>> m_Answers;
    QStringList m_Calls;
    QVariantList m_LastArguments;
};

} // namespace MPL::Doubles
