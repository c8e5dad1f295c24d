#include "ScriptedService.h"

ScriptedService::ScriptedService(const QString& aAddress, const QString& aName, Script aScript)
    : m_Name(aName), m_ConnectionName(QStringLiteral("scripted ") + aName), m_Script(std::move(aScript))
{
    QDBusConnection connection = QDBusConnection::connectToBus(aAddress, m_ConnectionName);
    connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
    m_Thread.start();
    moveToThread(&m_Thread);
    // Only now can a call come in.
    if (!connection.registerService(aName)) {
        qCritical("The service %s can't be offered", qPrintable(aName));
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

bool ScriptedService::handleMessage(const QDBusMessage& aMessage, const QDBusConnection& aConnection)
{
    aMessage.setDelayedReply(true);
    QDBusConnection own(aConnection);
    m_Script(aMessage, own);
    return true;
}
