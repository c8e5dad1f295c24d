/// A service on a bus that handles every call at every path by one function of the test, introspection
/// included, so that it can lie, be late or say nothing.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QThread>

#include <functional>

class ScriptedService : private QDBusVirtualObject
{
public:
    /// Called on the service's own thread. Without a reply from it, the caller gets none.
    using Script = std::function<void(const QDBusMessage& aCall, QDBusConnection& aConnection)>;

    ScriptedService(const QString& aAddress, const QString& aName, Script aScript);
    ~ScriptedService() override;

private:
    QString introspect(const QString& aPath) const override;
    bool handleMessage(const QDBusMessage& aMessage, const QDBusConnection& aConnection) override;

    QString m_Name;
    QString m_ConnectionName;
    Script m_Script;
    QThread m_Thread;
};
