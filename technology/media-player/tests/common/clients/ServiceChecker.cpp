#include <MPL_ServiceChecker.h>
#include <MPL_TestEnvironment.h>

#include <QDBusServiceWatcher>
#include <QThread>

namespace MPL
{

ServiceChecker::ServiceChecker() : QObject(nullptr) {}

ServiceChecker::ServiceChecker(QThread* aThread, const QString& aServiceName)
    : QObject(nullptr),
      m_Thread(aThread),
      m_ServiceName(aServiceName),
      m_Watcher(new QDBusServiceWatcher(aServiceName, MPL_TestEnvironment::GetDbusConnection(),
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
