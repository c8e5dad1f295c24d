#include "FakeService.h"

#include <QDBusMessage>
#include <QMutexLocker>

namespace MPL::Doubles
{

FakeService::FakeService(const QString& aAddress, const QString& aName)
    : m_ConnectionName(QStringLiteral("fake ") + aName)
{
    QDBusConnection connection = QDBusConnection::connectToBus(aAddress, m_ConnectionName);
    const bool registered =
        connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
    m_Thread.start();
    moveToThread(&m_Thread);
    // Only now can a call come in.
    if (!registered || !connection.registerService(aName)) {
        qCritical("The service %s can't be offered: %s", qPrintable(aName),
                  qPrintable(connection.lastError().message()));
    }
}

FakeService::~FakeService()
{
    QDBusConnection(m_ConnectionName).unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    QDBusConnection::disconnectFromBus(m_ConnectionName);
    m_Thread.quit();
    m_Thread.wait();
}

void FakeService::Reply(const QString& aPath, const QString& aMethod, const QVariant& aValue)
{
    Prepare(aPath, aMethod, {aValue, {}});
}

void FakeService::Fail(const QString& aPath, const QString& aMethod, const QString& aMessage)
{
    Prepare(aPath, aMethod, {{}, aMessage});
}

void FakeService::Prepare(const QString& aPath, const QString& aMethod, const Answer& aAnswer)
{
    QMutexLocker lock(&m_Mutex);
    m_Answers[aPath + QLatin1Char(' ') + aMethod].enqueue(aAnswer);
}

void FakeService::Signal(const QString& aPath, const QString& aInterface, const QString& aName,
                         const QVariantList& aArguments)
{
    QDBusMessage signal = QDBusMessage::createSignal(aPath, aInterface, aName);
    signal.setArguments(aArguments);
    QDBusConnection(m_ConnectionName).send(signal);
}

QStringList FakeService::Calls() const
{
    QMutexLocker lock(&m_Mutex);
    return m_Calls;
}

QVariantList FakeService::LastArguments() const
{
    QMutexLocker lock(&m_Mutex);
    return m_LastArguments;
}

QString FakeService::introspect(const QString& /*path*/) const
{
    return {};
}

bool FakeService::handleMessage(const QDBusMessage& aMessage, const QDBusConnection& aConnection)
{
    QMutexLocker lock(&m_Mutex);
    m_Calls << QStringLiteral("%1 %2.%3").arg(aMessage.path(), aMessage.interface(), aMessage.member());
    m_LastArguments = aMessage.arguments();
    QQueue<Answer>& answers = m_Answers[aMessage.path() + QLatin1Char(' ') + aMessage.member()];
    if (answers.isEmpty()) {
        return aConnection.send(
            aMessage.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no reply is prepared")));
    }
    const Answer answer = answers.size() > 1 ? answers.dequeue() : answers.head();
    return aConnection.send(
        answer.error.isEmpty()
            ? aMessage.createReply(answer.value.isValid() ? QVariantList{answer.value} : QVariantList{})
            : aMessage.createErrorReply(QStringLiteral("com.talvex.Error.Test"), answer.error));
}

} // namespace MPL::Doubles
