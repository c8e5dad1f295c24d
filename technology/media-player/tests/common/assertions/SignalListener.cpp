#include "SignalListener.h"

#include <QDBusConnectionInterface>
#include <QDeadlineTimer>
#include <QMutexLocker>

#include <algorithm>

namespace MPL::Detail
{

SignalListener::SignalListener(const QDBusAbstractInterface& aProxy)
    : m_Connection(aProxy.connection()), m_Service(aProxy.service()), m_Path(aProxy.path())
{
    moveToThread(&m_Thread);
    // Without a name every signal of the interface is heard.
    QDBusConnection connection = m_Connection;
    m_Listening =
        connection.connect(m_Service, m_Path, aProxy.interface(), QString(), this, SLOT(Note(QDBusMessage)));
    m_Thread.start();
}

SignalListener::~SignalListener()
{
    m_Thread.quit();
    m_Thread.wait();
}

QString SignalListener::Origin() const
{
    return m_Service + QLatin1Char(' ') + m_Path;
}

bool SignalListener::IsServiceThere() const
{
    const QDBusConnectionInterface* bus = m_Connection.interface();
    return bus == nullptr || bus->isServiceRegistered(m_Service);
}

bool SignalListener::Take(const std::function<bool(const QDBusMessage&)>& aMatches, int aLimitMs)
{
    const QDeadlineTimer limit(aLimitMs);
    const QMutexLocker locker(&m_Mutex);
    QVector<QDBusMessage>::size_type seen = 0;
    do {
        const auto found = std::find_if(m_Messages.begin() + seen, m_Messages.end(), aMatches);
        if (found != m_Messages.end()) {
            m_Messages.erase(found);
            return true;
        }
        seen = m_Messages.size();
    } while (m_Came.wait(&m_Mutex, limit));
    return false;
}

QVector<QDBusMessage> SignalListener::Left() const
{
    const QMutexLocker locker(&m_Mutex);
    return m_Messages;
}

void SignalListener::Note(const QDBusMessage& aMessage)
{
    const QMutexLocker locker(&m_Mutex);
    m_Messages.append(aMessage);
    m_Came.wakeAll();
}

} // namespace MPL::Detail
