#include <MPL_MediaManagerAbstractClient.h>

#include <MPL_TestFixture.h>

#include <QDBusError>
#include <QDBusPendingReply>
#include <QDebug>
#include <QMutex>
#include <QMutexLocker>
#include <QThread>

#include <gtest/gtest.h>

namespace MPL
{
namespace
{

using Proxy = ComTalvexDBusMediaPlayerMediaManagerInterface;

// No proxy of these clients goes while somebody holds this: its destruction, on whichever thread, passes
// here.
QBasicMutex proxyGate;

void PassGate()
{
    const QMutexLocker locker(&proxyGate);
}

// Deletes the proxy unless its thread has done so, or is doing so at this moment.
void Dispose(const QPointer<Proxy>& proxy)
{
    QThread* home = nullptr;
    {
        const QMutexLocker locker(&proxyGate);
        if (proxy.isNull()) {
            return;
        }
        home = proxy->thread();
        // Only its own thread may delete an object that is in use there.
        if (home != nullptr && home != QThread::currentThread() && home->isRunning()) {
            proxy->deleteLater();
            return;
        }
    }
    if (home != nullptr && home != QThread::currentThread()) {
        home->wait(); // it may be about to end, and deletes the proxy then
    }
    delete proxy.data();
}

template <typename Value>
Value Ask(Proxy* proxy, QDBusPendingReply<Value> (Proxy::*query)(), const char* errorText,
          const char* failureText)
{
    if (proxy == nullptr) {
        ADD_FAILURE() << failureText << ": the client has no media manager proxy (any more)";
        return {};
    }
    QDBusPendingReply<Value> reply = (proxy->*query)();
    reply.waitForFinished();
    if (reply.isError()) {
        qDebug() << errorText << reply.error();
        ADD_FAILURE() << failureText;
        return {};
    }
    return reply.value();
}

} // namespace

MediaManagerAbstractClient::MediaManagerAbstractClient(Proxy* proxy, TestFixture* fixture)
    : QObject(nullptr), m_Thread(&fixture->m_Thread), m_Proxy(proxy), m_Fixture(fixture)
{
    if (proxy == nullptr) {
        return;
    }
    connect(proxy, &QObject::destroyed, &PassGate);
    proxy->moveToThread(m_Thread);
    connect(m_Thread, &QThread::started, this, &MediaManagerAbstractClient::TestStarted);
    connect(m_Thread, &QThread::finished, this, &MediaManagerAbstractClient::deleteLater);
    connect(m_Thread, &QThread::finished, proxy, &Proxy::deleteLater);
    connect(m_Thread, &QThread::finished, this, &MediaManagerAbstractClient::TestFinished);

    connect(proxy, SIGNAL(ActiveMediaSourceChanged(const QString&, const QString&)), this,
            SLOT(HandleActiveMediaSourceChanged(const QString&, const QString&)));
    connect(proxy, SIGNAL(MediaSourceAdded(const QString&, const QString&)), this,
            SLOT(HandleMediaSourceAdded(const QString&, const QString&)));
    connect(proxy, SIGNAL(MediaSourceRemoved(const QString&, const QString&)), this,
            SLOT(HandleMediaSourceRemoved(const QString&, const QString&)));
}

MediaManagerAbstractClient::~MediaManagerAbstractClient()
{
    Dispose(m_Proxy);
}

bool MediaManagerAbstractClient::Init()
{
    return true;
}

void MediaManagerAbstractClient::ActiveMediaSourceChanged(const QString&, const QString&) {}

void MediaManagerAbstractClient::MediaSourceAdded(const QString&, const QString&) {}

void MediaManagerAbstractClient::MediaSourceRemoved(const QString&, const QString&) {}

void MediaManagerAbstractClient::HandleActiveMediaSourceChanged(const QString& aServiceName,
                                                                const QString& aObjectPath)
{
    ActiveMediaSourceChanged(aServiceName, aObjectPath);
}

void MediaManagerAbstractClient::HandleMediaSourceAdded(const QString& aServiceName,
                                                        const QString& aObjectPath)
{
    MediaSourceAdded(aServiceName, aObjectPath);
}

void MediaManagerAbstractClient::HandleMediaSourceRemoved(const QString& aServiceName,
                                                          const QString& aObjectPath)
{
    MediaSourceRemoved(aServiceName, aObjectPath);
}

void MediaManagerAbstractClient::TestStarted()
{
    RunTest();
}

void MediaManagerAbstractClient::TestFinished()
{
    if (m_Fixture != nullptr) {
        m_Fixture->WakeUp();
    }
}

ServiceObject MediaManagerAbstractClient::GetActiveMediaSource()
{
    return Ask(m_Proxy.data(), &Proxy::GetActiveMediaSource,
               "GetActiveMediaSource() error: ", "GetActiveMediaSource() failed");
}

QList<ServiceObject> MediaManagerAbstractClient::GetAvailableMediaSources()
{
    return Ask(m_Proxy.data(), &Proxy::GetAvailableMediaSources,
               "GetAvailableMediaSources() error: ", "GetAvailableMediaSources() failed");
}

} // namespace MPL
