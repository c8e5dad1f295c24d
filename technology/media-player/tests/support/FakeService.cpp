#include "FakeService.h"

#include <QDBusMessage>
#include <QMutexLocker>

namespace MPL::Doubles
{

FakeService::FakeService(const QString& address, const QString& name)
    : m_ConnectionName(QStringLiteral("fake ") + name)
{
    QDBusConnection connection = QDBusConnection::connectToBus(address, m_ConnectionName);
    const bool registered =
        connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
    m_Thread.start();
    moveToThread(&m_Thread);
    // Only now can a call come in.
    if (!registered || !connection.registerService(name)) {
        qCritical("The service %s can't be offered: %s", qPrintable(name),
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

void FakeService::Reply(const QString& path, const QString& method, const QVariant& value)
{
    Prepare(path, method, {value, {}});
}

void FakeService::Fail(const QString& path, const QString& method, const QString& message)
{
    Prepare(path, method, {{}, message});
}

void FakeService::Prepare(const QString& path, const QString& method, const Answer& answer)
{
    QMutexLocker lock(&m_Mutex);
    m_Answers[path + QLatin1Char(' ') + method].enqueue(answer);
}

void FakeService::Signal(const QString& path, const QString& interface, const QString& name,
                         const QVariantList& arguments)
{
    QDBusMessage signal = QDBusMessage::createSignal(path, interface, name);
    signal.setArguments(arguments);
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

bool FakeService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    QMutexLocker lock(&m_Mutex);
    m_Calls << QStringLiteral("%1 %2.%3").arg(message.path(), message.interface(), message.member());
    m_LastArguments = message.arguments();
    QQueue<Answer>& answers = m_Answers[message.path() + QLatin1Char(' ') + message.member()];
    if (answers.isEmpty()) {
        return connection.send(
            message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no reply is prepared")));
    }
    const Answer answer = answers.size() > 1 ? answers.dequeue() : answers.head();
    return connection.send(
        answer.error.isEmpty()
            ? message.createReply(answer.value.isValid() ? QVariantList{answer.value} : QVariantList{})
            : message.createErrorReply(QStringLiteral("com.talvex.Error.Test"), answer.error));
}

} // namespace MPL::Doubles
