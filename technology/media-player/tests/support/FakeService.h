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
    /// Connects to the bus at `address` and takes the name. The service answers at every object path.
    FakeService(const QString& address, const QString& name);
    ~FakeService() override;

    /// Adds a reply to `method` at `path`. Several are given in turn; the last one is given ever after.
    void Reply(const QString& path, const QString& method, const QVariant& value);
    /// Adds an error reply, of the name "com.talvex.Error.Test".
    void Fail(const QString& path, const QString& method, const QString& message);

    /// Sends a signal from the object at `path`.
    void Signal(const QString& path, const QString& interface, const QString& name,
                const QVariantList& arguments);

    /// The calls so far, as "<path> <interface>.<method>"; a call without a prepared reply got an error.
    QStringList Calls() const;
    /// The arguments of the last call.
    QVariantList LastArguments() const;

private:
    struct Answer {
        QVariant value;
        QString error;
    };

    void Prepare(const QString& path, const QString& method, const Answer& answer);
    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    QString m_ConnectionName;
    QThread m_Thread;
    mutable QMutex m_Mutex;
    QMap<QString, QQueue<Answer>> m_Answers;
    QStringList m_Calls;
    QVariantList m_LastArguments;
};

} // namespace MPL::Doubles
