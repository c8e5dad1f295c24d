/// @file
/// The abstract base of test clients that drive the media manager. It ties a media manager proxy to the
/// thread of a fixture: when that thread starts, the client's test logic runs; when it has finished, the
/// fixture's Wait() is released. The manager's notifications reach virtual hooks:
///
///     class Watcher : public MPL::MediaManagerAbstractClient
///     {
///     public:
///         using MediaManagerAbstractClient::MediaManagerAbstractClient;
///         void RunTest() override { sources = GetAvailableMediaSources(); }
///         void MediaSourceAdded(const QString&, const QString&) override { m_Fixture->QuitTest(); }
///         QList<MPL::ServiceObject> sources;
///     };
///
///     auto* watcher = new Watcher(MPL_TestEnvironment::CreateMediaManagerProxy(), this);   // in a test
///     watcher->moveToThread(&m_Thread);   // so that RunTest() and the hooks run there
///     m_Thread.start();
///     Wait();
///
/// The end of the thread schedules the deletion of the client and of its proxy, so the client belongs on the
/// heap once it lives on that thread; copy what the test wants to see elsewhere before. A client left on the
/// suite's thread gets no slot called while the test blocks there.
#pragma once

#include <MPL_MediaManagerProxy.h>
#include <MPL_Types.h>

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

class QThread;

namespace MPL
{

class TestFixture;

/// Base of the test clients that drive the media manager.
class MediaManagerAbstractClient : public QObject
{
    Q_OBJECT

public:
    /// Takes ownership of the proxy and moves it to the fixture's thread, so the proxy must have no parent
    /// and live on the calling thread. Without a proxy the client is inert. The fixture must not be null and
    /// must outlive its thread's run.
    MediaManagerAbstractClient(ComTalvexDBusMediaPlayerMediaManagerInterface* aProxy, TestFixture* aFixture);

    /// Leaves the proxy to a running thread, whose end deletes it; deletes it when the thread does not run.
    /// Blocks while the thread is finishing. As long as there is a proxy, the fixture must still exist.
    ~MediaManagerAbstractClient() override;

    /// For derived clients and their tests; returns true here. Nothing calls it.
    virtual bool Init();
    /// @{
    /// Hooks for the manager's notifications, called on the client's thread. They do nothing here.
    virtual void ActiveMediaSourceChanged(const QString& aServiceName, const QString& aObjectPath);
    virtual void MediaSourceAdded(const QString& aServiceName, const QString& aObjectPath);
    virtual void MediaSourceRemoved(const QString& aServiceName, const QString& aObjectPath);
    /// @}
    /// The test logic, called on the client's thread once the fixture's thread has started. It, or a hook
    /// after it, ends the thread with the fixture's QuitTest().
    virtual void RunTest() = 0;

public Q_SLOTS:
    /// @{
    /// Connected by the constructor: pass the manager's signals and the ends of the thread's life on to the
    /// hooks.
    void HandleActiveMediaSourceChanged(const QString& aServiceName, const QString& aObjectPath);
    void HandleMediaSourceAdded(const QString& aServiceName, const QString& aObjectPath);
    void HandleMediaSourceRemoved(const QString& aServiceName, const QString& aObjectPath);
    void TestStarted();
    void TestFinished();
    /// @}

    /// @{
    /// Ask the media manager for the active source and for all sources. Block the calling thread until the
    /// reply is there or the D-Bus time-out has passed. On an error reply, and without a proxy, the running
    /// test gets a non-fatal failure and the result is empty.
    ServiceObject GetActiveMediaSource();
    QList<ServiceObject> GetAvailableMediaSources();
    /// @}

protected:
    /// The fixture's thread, which must still exist when this is used.
    QThread* m_Thread;
    /// Null once the thread's end has deleted the proxy.
    QPointer<ComTalvexDBusMediaPlayerMediaManagerInterface> m_Proxy;
    /// The fixture, woken when its thread has finished.
    TestFixture* m_Fixture;
};

} // namespace MPL
