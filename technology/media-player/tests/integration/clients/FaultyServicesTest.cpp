// Callers of services that answer late, wrongly or never, and of services that have left.
#include <MPL_Proxies.h>
#include <MPL_SimulatedFaults.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestUtils.h>
#include <MPL_Types.h>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>

namespace
{

using Manager = ComTalvexDBusMediaPlayerMediaManagerInterface;
using ManagerProxy = std::unique_ptr<Manager>;
using SimulatorProxy = std::unique_ptr<ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface>;

struct Fault {
    MPL::ReplyFault reply;
    const char* name;
    QDBusError::ErrorType error;
};

// googletest would print its bytes, those between the members as well.
void PrintTo(const Fault& aFault, std::ostream* aStream)
{
    *aStream << aFault.name;
}

class AQueryOfTheManager : public testing::TestWithParam<Fault>
{
protected:
    void TearDown() override { EXPECT_TRUE(MPL_TestEnvironment::KillMediaManagerProcess()); }
};

TEST_P(AQueryOfTheManager, EndsInAnErrorReplyAndLeavesTheProxyUsable)
{
    MPL::RegisterAllMetaTypes();
    MPL::SimulatedFaults faults;
    ASSERT_TRUE(faults.Reply<Manager>("media_manager", "GetAvailableMediaSources", GetParam().reply));
    ASSERT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(true));
    const ManagerProxy manager(MPL_TestEnvironment::CreateMediaManagerProxy());
    ASSERT_TRUE(manager);

    auto sources = manager->GetAvailableMediaSources();
    sources.waitForFinished();
    EXPECT_TRUE(sources.isError());
    EXPECT_EQ(sources.error().type(), GetParam().error) << qPrintable(sources.error().name());
    EXPECT_TRUE(sources.value().isEmpty());

    if (GetParam().reply != MPL::ReplyFault::Die) {
        auto active = manager->GetActiveMediaSource();
        active.waitForFinished();
        EXPECT_FALSE(active.isError()) << qPrintable(active.error().message());
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, AQueryOfTheManager,
                         testing::Values(Fault{MPL::ReplyFault::Error, "error", QDBusError::Failed},
                                         Fault{MPL::ReplyFault::Never, "never", QDBusError::NoReply},
                                         Fault{MPL::ReplyFault::WrongSignature, "wrong_signature",
                                               QDBusError::InvalidSignature},
                                         Fault{MPL::ReplyFault::Die, "die", QDBusError::NoReply}),
                         [](const auto& test) { return std::string(test.param.name); });

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
