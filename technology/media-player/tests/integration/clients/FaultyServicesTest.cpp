// Callers of services that answer late, wrongly or never, and of services that have left.
#include "StackFaults.h"
#include <MPL_Proxies.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestUtils.h>
#include <MPL_Types.h>

#include <gtest/gtest.h>

#include <memory>

namespace
{

using ManagerProxy = std::unique_ptr<ComTalvexDBusMediaPlayerMediaManagerInterface>;
using SimulatorProxy = std::unique_ptr<ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface>;

struct Fault {
    const char* reply;
    QDBusError::ErrorType error;
};

class AQueryOfTheManager : public testing::TestWithParam<Fault>
{
protected:
    void TearDown() override { EXPECT_TRUE(MPL_TestEnvironment::KillMediaManagerProcess()); }
};

TEST_P(AQueryOfTheManager, EndsInAnErrorReplyAndLeavesTheProxyUsable)
{
    MPL::RegisterAllMetaTypes();
    const QByteArray reply = GetParam().reply;
    const StackFaults faults(
        R"({"media_manager": {"replies":
            {"com.talvex.DBus.MediaPlayer.MediaManager.GetAvailableMediaSources": ")" +
        reply + "\"}}}");
    ASSERT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(true));
    const ManagerProxy manager(MPL_TestEnvironment::CreateMediaManagerProxy());
    ASSERT_TRUE(manager);

    auto sources = manager->GetAvailableMediaSources();
    sources.waitForFinished();
    EXPECT_TRUE(sources.isError());
    EXPECT_EQ(sources.error().type(), GetParam().error) << qPrintable(sources.error().name());
    EXPECT_TRUE(sources.value().isEmpty());

    if (reply != "die") {
        auto active = manager->GetActiveMediaSource();
        active.waitForFinished();
        EXPECT_FALSE(active.isError()) << qPrintable(active.error().message());
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, AQueryOfTheManager,
                         testing::Values(Fault{"error", QDBusError::Failed},
                                         Fault{"never", QDBusError::NoReply},
                                         Fault{"wrong_signature", QDBusError::InvalidSignature},
                                         Fault{"die", QDBusError::NoReply}),
                         [](const auto& test) { return std::string(test.param.reply); });

TEST(AProxyWhoseServiceLeft, GetsErrorRepliesUntilTheServiceIsBack)
{
    MPL::RegisterAllMetaTypes();
    ASSERT_TRUE(MPL_TestEnvironment::LaunchTestMediaSourceProcess(true, 0, true, false));
    const SimulatorProxy simulator(MPL_TestEnvironment::CreateSimulatorProxy());
    ASSERT_TRUE(simulator);
    EXPECT_TRUE(MPL::TestUtils::WaitForDBusReply(simulator->PublishPresetData()));

    ASSERT_TRUE(MPL_TestEnvironment::KillTestMediaSourceProcess());
    auto reply = simulator->PublishPresetData();
    reply.waitForFinished();
    EXPECT_EQ(reply.error().type(), QDBusError::ServiceUnknown);

    ASSERT_TRUE(MPL_TestEnvironment::LaunchTestMediaSourceProcess(true, 0, true, false));
    EXPECT_TRUE(MPL::TestUtils::WaitForDBusReply(simulator->PublishPresetData()));
}

} // namespace
