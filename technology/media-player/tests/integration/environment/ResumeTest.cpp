// What the media manager remembers between runs, and that a reset makes it forget.
#include "WaitUntil.h"
#include <MPL_Proxies.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestEnvironmentNames.h>
#include <MPL_Types.h>

#include <QProcess>

#include <gtest/gtest.h>

#include <memory>

namespace
{

using ManagerProxy = std::unique_ptr<ComTalvexDBusMediaPlayerMediaManagerInterface>;

/// Starts the manager as the launcher does, but without the launcher's reset.
ManagerProxy StartManagerWithoutReset()
{
    EXPECT_TRUE(
        QProcess::startDetached("/opt/talvex/bin/media_manager", {"DB=" + kMPLDataManagerDb, "--test-dbus"}));
    EXPECT_TRUE(MPL_TestEnvironment::WaitForServiceRunning(MPL::MPL_MEDIA_MANAGER_SERVICE_NAME));
    return ManagerProxy(MPL_TestEnvironment::CreateMediaManagerProxy());
}

QString ActiveSource(ComTalvexDBusMediaPlayerMediaManagerInterface& aManager)
{
    auto reply = aManager.GetActiveMediaSource();
    reply.waitForFinished();
    EXPECT_FALSE(reply.isError()) << qPrintable(reply.error().message());
    return reply.value().serviceName;
}

QList<MPL::ServiceObject> AllSources(ComTalvexDBusMediaPlayerMediaManagerInterface& aManager)
{
    QList<MPL::ServiceObject> sources;
    EXPECT_TRUE(WaitUntil("the manager has all sources", [&] {
        auto reply = aManager.GetAvailableMediaSources();
        reply.waitForFinished();
        sources = reply.value();
        return sources.size() == EXPECTED_NUMBER_OF_TEST_MEDIA_SOURCE;
    }));
    return sources;
}

TEST(PersistedState, IsResumedAtTheNextStartUnlessReset)
{
    MPL::RegisterAllMetaTypes();
    ASSERT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(true));
    ASSERT_TRUE(MPL_TestEnvironment::LaunchTestMediaSourceProcess(true, 0, true, false));
    ManagerProxy manager(MPL_TestEnvironment::CreateMediaManagerProxy());
    ASSERT_TRUE(manager);
    ASSERT_TRUE(MPL_TestEnvironment::SetActiveMediaSource(AllSources(*manager).value(1), manager.get()));

    ASSERT_TRUE(MPL_TestEnvironment::KillMediaManagerProcess());
    manager = StartManagerWithoutReset();
    ASSERT_TRUE(manager);
    EXPECT_TRUE(WaitUntil("the source is active again",
                          [&] { return ActiveSource(*manager) == MPL_TEST_MEDIA_SOURCE_SERVICE_NAME; }));

    ASSERT_TRUE(MPL_TestEnvironment::KillMediaManagerProcess());
    ASSERT_TRUE(MPL_TestEnvironment::ClearMPLState(true));
    manager = StartManagerWithoutReset();
    ASSERT_TRUE(manager);
    AllSources(*manager);
    EXPECT_EQ(ActiveSource(*manager), "");
}

} // namespace
