#include "ScriptedService.h"

ScriptedService::ScriptedService(const QString& address, const QString& name, Script script)
    : m_Name(name), m_ConnectionName(QStringLiteral("scripted ") + name), m_Script(std::move(script))
{
    QDBusConnection connection = QDBusConnection::connectToBus(address, m_ConnectionName);
    connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
    m_Thread.start();
    moveToThread(&m_Thread);
    // Only now can a call come in.
    if (!connection.registerService(name)) {
        qCritical("The service %s can't be offered", qPrintable(name));
    }
}

ScriptedService::~ScriptedService()
{
    QDBusConnection connection(m_ConnectionName);
    // A round trip, so that the bus has seen the service go before the next one takes the name.
    connection.unregisterService(m_Name);
    connection.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    QDBusConnection::disconnectFromBus(m_ConnectionName);
    m_Thread.quit();
    m_Thread.wait();
}

QString ScriptedService::introspect(const QString& /*path*/) const
{
    return {};
}

bool ScriptedService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    message.setDelayedReply(true);
    QDBusConnection own(connection);
    m_Script(message, own);
    return true;
}
