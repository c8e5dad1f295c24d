#include "FakeService.h"

#include <QMutexLocker>

namespace MPL::Doubles
{

FakeService::FakeService(const QString& aAddress, const QString& aName, Script aScript)
    : m_Name(aName), m_ConnectionName("fake " + aName), m_Script(std::move(aScript))
{
    if (!m_Script) {
        m_Script = [this](const QDBusMessage& aCall, QDBusConnection& aConnection) {
            AnswerAsPrepared(aCall, aConnection);
        };
    }
    QDBusConnection connection = QDBusConnection::connectToBus(aAddress, m_ConnectionName);
    const bool registered = connection.registerVirtualObject("/", this, QDBusConnection::SubPath);
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
    QDBusConnection connection(m_ConnectionName);
    connection.unregisterService(m_Name);
    connection.unregisterObject("/", QDBusConnection::UnregisterTree);
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
    m_Answers[aPath + ' ' + aMethod].enqueue(aAnswer);
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
    {
        QMutexLocker lock(&m_Mutex);
        m_Calls << QStringLiteral("%1 %2.%3").arg(aMessage.path(), aMessage.interface(), aMessage.member());
        m_LastArguments = aMessage.arguments();
    }
    aMessage.setDelayedReply(true);
    QDBusConnection own(aConnection);
    m_Script(aMessage, own);
    return true;
}

void FakeService::AnswerAsPrepared(const QDBusMessage& aCall, QDBusConnection& aConnection)
{
    QMutexLocker lock(&m_Mutex);
    QQueue<Answer>& answers = m_Answers[aCall.path() + ' ' + aCall.member()];
    if (answers.isEmpty()) {
        aConnection.send(aCall.createErrorReply(QDBusError::UnknownMethod, "no reply is prepared"));
        return;
    }
    const Answer answer = answers.size() > 1 ? answers.dequeue() : answers.head();
    aConnection.send(
        answer.error.isEmpty()
            ? aCall.createReply(answer.value.isValid() ? QVariantList{answer.value} : QVariantList{})
            : aCall.createErrorReply("com.talvex.Error.Test", answer.error));
}

} // namespace MPL::Doubles
