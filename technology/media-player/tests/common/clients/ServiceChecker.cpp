#include <MPL_ServiceChecker.h>

#include <MPL_TestEnvironment.h>

#include <QDBusServiceWatcher>
#include <QThread>

namespace MPL
{

ServiceChecker::ServiceChecker() : QObject(nullptr) {}

ServiceChecker::ServiceChecker(QThread* thread, const QString& serviceName)
    : QObject(nullptr),
      m_Thread(thread),
      m_ServiceName(serviceName),
      m_Watcher(new QDBusServiceWatcher(serviceName, MPL_TestEnvironment::GetDbusConnection(),
                                        QDBusServiceWatcher::WatchForRegistration))
{
    connect(m_Watcher, SIGNAL(serviceRegistered(const QString&)), this,
            SLOT(OnServiceRegistered(const QString&)));
}

ServiceChecker::~ServiceChecker()
{
    delete m_Watcher;
}

void ServiceChecker::OnServiceRegistered(const QString& aServiceName)
{
    if (aServiceName == m_ServiceName && m_Thread != nullptr && !m_Thread->isRunning()) {
        m_Thread->start(QThread::InheritPriority);
    }
}

} // namespace MPL
