#include <MPL_MediaManagerAbstractClient.h>
#include <MPL_TestFixture.h>

#include <QDBusError>
#include <QDBusPendingReply>
#include <QDebug>
#include <QThread>

#include <gtest/gtest.h>

namespace MPL
{
namespace
{

using Proxy = ComTalvexDBusMediaPlayerMediaManagerInterface;

template <typename Value>
Value Ask(Proxy* aProxy, QDBusPendingReply<Value> (Proxy::*aQuery)(), const char* aErrorText,
          const char* aFailureText)
{
    if (aProxy == nullptr) {
        ADD_FAILURE() << aFailureText << ": the client has no media manager proxy (any more)";
        return {};
    }
    QDBusPendingReply<Value> reply = (aProxy->*aQuery)();
    reply.waitForFinished();
    if (reply.isError()) {
        qDebug() << aErrorText << reply.error();
        ADD_FAILURE() << aFailureText;
        return {};
    }
    return reply.value();
}

} // namespace

MediaManagerAbstractClient::MediaManagerAbstractClient(Proxy* aProxy, TestFixture* aFixture)
    : QObject(nullptr), m_Thread(&aFixture->m_Thread), m_Proxy(aProxy), m_Fixture(aFixture)
{
    if (aProxy == nullptr) {
        return;
    }
    aProxy->moveToThread(m_Thread);
    connect(m_Thread, &QThread::started, this, &MediaManagerAbstractClient::TestStarted);
    connect(m_Thread, &QThread::finished, this, &MediaManagerAbstractClient::deleteLater);
    connect(m_Thread, &QThread::finished, aProxy, &Proxy::deleteLater);
    connect(m_Thread, &QThread::finished, this, &MediaManagerAbstractClient::TestFinished);

    connect(aProxy, SIGNAL(ActiveMediaSourceChanged(const QString&, const QString&)), this,
            SLOT(HandleActiveMediaSourceChanged(const QString&, const QString&)));
    connect(aProxy, SIGNAL(MediaSourceAdded(const QString&, const QString&)), this,
            SLOT(HandleMediaSourceAdded(const QString&, const QString&)));
    connect(aProxy, SIGNAL(MediaSourceRemoved(const QString&, const QString&)), this,
            SLOT(HandleMediaSourceRemoved(const QString&, const QString&)));
}

MediaManagerAbstractClient::~MediaManagerAbstractClient()
{
    // The thread deletes the proxy when it ends, right now if it is ending.
    if (m_Proxy.isNull() || m_Thread->isRunning() || m_Thread == QThread::currentThread()) {
        return;
    }
    m_Thread->wait();
    delete m_Proxy.data();
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
