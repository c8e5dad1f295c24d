// From the launch of a service to its name owned, and to its object found: the stack's programs, and the
// barest service there can be. The bus itself tells when. Runs in a sandbox, whose bus is system bus and
// session bus in one.
#include "ServiceProcess.h"
#include <MPL_DBusUtils.h>
#include <MPL_MediaPlayerLib.h>

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <benchmark/benchmark.h>

namespace
{

using namespace benchmarks;

struct Service {
    QString program;
    QStringList arguments;
    QString name;
    QString interface;
};

enum Until { kNameOwned, kObjectFound };

// One launch. It ends with the object, which waits until the bus knows.
class Launch
{
public:
    explicit Launch(const Service& aService)
        : m_Service(aService), m_Watcher(aService.name, QDBusConnection::systemBus())
    {
        m_Process.setStandardOutputFile(QProcess::nullDevice());
        m_Process.setStandardErrorFile(QProcess::nullDevice());
        m_Clock.start();
        m_Process.start(aService.program, aService.arguments);
    }

    ~Launch()
    {
        m_Process.kill();
        WaitFor(&QDBusServiceWatcher::serviceUnregistered);
        m_Process.waitForFinished();
    }

    Launch(const Launch&) = delete;
    Launch& operator=(const Launch&) = delete;

    // Seconds from the launch; negative when it never came that far.
    double Time(Until aUntil)
    {
        if (!WaitFor(&QDBusServiceWatcher::serviceRegistered)) {
            return -1;
        }
        QStringList paths;
        while (aUntil == kObjectFound && paths.isEmpty()) {
            if (!MPL::FindServiceObjectPathsByInterface(m_Service.name, m_Service.interface,
                                                        QDBusConnection::systemBus(), paths)) {
                return -1;
            }
        }
        return static_cast<double>(m_Clock.nsecsElapsed()) * 1e-9;
    }

private:
    using Event = void (QDBusServiceWatcher::*)(const QString&);

    bool WaitFor(Event aEvent)
    {
        constexpr int kLimitMs = 10000;
        QEventLoop loop;
        QObject::connect(&m_Watcher, aEvent, &loop, [&loop] { loop.exit(0); });
        QTimer::singleShot(kLimitMs, &loop, [&loop] { loop.exit(1); });
        return loop.exec() == 0;
    }

    const Service& m_Service;
    QDBusServiceWatcher m_Watcher;
    QElapsedTimer m_Clock;
    QProcess m_Process;
};

void BringUp(benchmark::State& aState, Service (*aService)(), Until aUntil)
{
    const Service service = aService();
    while (aState.KeepRunning()) {
        const double seconds = Launch(service).Time(aUntil);
        if (seconds < 0) {
            aState.SkipWithError("the service did not come up");
        }
        aState.SetIterationTime(seconds);
    }
}

Service MediaManager()
{
    return {QStringLiteral("/opt/talvex/bin/media_manager"),
            {QStringLiteral("DB=/dev/shm/DataManagerDb.sqlite")},
            MPL::MPL_MEDIA_MANAGER_SERVICE_NAME,
            MPL::MPL_MEDIA_MANAGER_INTERFACE_NAME};
}

Service DiscSource()
{
    return {QStringLiteral("/opt/talvex/bin/media_source_disc"),
            {},
            MPL::MPL_DISC_SERVICE_NAME,
            kSourceInterface};
}

Service BareService()
{
    return {ServiceProgram(), {kServiceName, QStringLiteral("2")}, kServiceName, kSourceInterface};
}

void Settings(benchmark::internal::Benchmark* aBenchmark)
{
    aBenchmark->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(BringUp, name, &MediaManager, kNameOwned)
    ->Name("Bring-up/ours, media manager/name owned")
    ->Apply(Settings);
BENCHMARK_CAPTURE(BringUp, object, &MediaManager, kObjectFound)
    ->Name("Bring-up/ours, media manager/object found")
    ->Apply(Settings);
BENCHMARK_CAPTURE(BringUp, name, &DiscSource, kNameOwned)
    ->Name("Bring-up/ours, disc source/name owned")
    ->Apply(Settings);
BENCHMARK_CAPTURE(BringUp, object, &DiscSource, kObjectFound)
    ->Name("Bring-up/ours, disc source/object found")
    ->Apply(Settings);
BENCHMARK_CAPTURE(BringUp, name, &BareService, kNameOwned)
    ->Name("Bring-up/bare sd-bus service/name owned")
    ->Apply(Settings);
BENCHMARK_CAPTURE(BringUp, object, &BareService, kObjectFound)
    ->Name("Bring-up/bare sd-bus service/object found")
    ->Apply(Settings);

} // namespace
