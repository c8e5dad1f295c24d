// Launching and finding sources with named options and answers in words.
#include <MPL_DBusAssertions.h>
#include <MPL_Launching.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestPrinters.h>

#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>
#include <memory>

namespace MPL
{
namespace
{

using Manager = ComTalvexDBusMediaPlayerMediaManagerInterface;

constexpr unsigned long kPauseMs = 50;

QStringList KnownSources()
{
    QStringList names;
    for (const QString& name : MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES) {
        names << name;
    }
    return names;
}

QStringList Missing(QStringList aServiceNames, const QList<ServiceObject>& aSources)
{
    for (const ServiceObject& source : aSources) {
        aServiceNames.removeOne(source.serviceName);
    }
    return aServiceNames;
}

// Asks the media manager until it lists sources of all these services; `aSources` receives the last list.
testing::AssertionResult WaitForSources(const QStringList& aServiceNames, int aLimitMs,
                                        QList<ServiceObject>& aSources)
{
    const std::unique_ptr<Manager> manager(MPL_TestEnvironment::CreateMediaManagerProxy());
    if (!manager) {
        return testing::AssertionFailure() << "no media manager is on the bus: launch it first, as "
                                              "MPL::MediaSourceTestFixture does";
    }
    const QDeadlineTimer limit(aLimitMs);
    while (true) {
        const auto reply = manager->GetAvailableMediaSources();
        if (testing::AssertionResult replied = Replied(reply); !replied) {
            return replied;
        }
        aSources = reply.value();
        const QStringList missing = Missing(aServiceNames, aSources);
        if (missing.isEmpty()) {
            return testing::AssertionSuccess()
                   << "the media manager lists " << testing::PrintToString(aSources);
        }
        if (limit.hasExpired()) {
            return testing::AssertionFailure()
                   << "after " << aLimitMs << " ms the media manager lists no source of "
                   << testing::PrintToString(missing) << "; it lists " << testing::PrintToString(aSources);
        }
        QThread::msleep(kPauseMs);
    }
}

} // namespace

testing::AssertionResult LaunchSource(const QString& aProcess, const LaunchOptions& aOptions)
{
    if (!KnownSources().contains(aProcess)) {
        return testing::AssertionFailure()
               << testing::PrintToString(aProcess) << " is no media source; there are "
               << testing::PrintToString(KnownSources());
    }
    if (MPL_TestEnvironment::LaunchMediaSourceProcess(aOptions.activateDataManager, aProcess,
                                                      aOptions.resetActiveSource, aOptions.verbose)) {
        return testing::AssertionSuccess() << testing::PrintToString(aProcess) << " is up";
    }
    return testing::AssertionFailure()
           << testing::PrintToString(aProcess)
           << " did not start, or its bus name did not appear: the last lines of the log say which";
}

testing::AssertionResult LaunchTestSource(const TestSourceOptions& aOptions)
{
    if (MPL_TestEnvironment::LaunchTestMediaSourceProcess(aOptions.activateDataManager, aOptions.capabilities,
                                                          aOptions.resetActiveSource,
                                                          aOptions.createPlayQueue)) {
        return testing::AssertionSuccess() << "the test media source was started";
    }
    return testing::AssertionFailure()
           << testing::PrintToString(MPL_TEST_MEDIA_SOURCE_PROCESS_PATH)
           << " can't be started: is the stack that you run on one with a test source?";
}

testing::AssertionResult ManagerLists(const QStringList& aServiceNames, int aLimitMs)
{
    QList<ServiceObject> sources;
    return WaitForSources(aServiceNames, aLimitMs, sources);
}

ServiceObject SourceOf(const QString& aServiceName, const char* aFile, int aLine)
{
    constexpr int kLimitMs = 10000;
    QList<ServiceObject> sources;
    Detail::AddFailureOf(WaitForSources({aServiceName}, kLimitMs, sources), aFile, aLine);
    const auto found =
        std::find_if(sources.begin(), sources.end(), [&aServiceName](const ServiceObject& aSource) {
            return aSource.serviceName == aServiceName;
        });
    return found == sources.end() ? ServiceObject() : *found;
}

} // namespace MPL
