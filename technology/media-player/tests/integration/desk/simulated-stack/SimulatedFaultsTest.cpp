// Faults asked for from C++: what is refused at the call, and that the programs take what is written.
#include "StackFixture.h"
#include <MPL_MMEMountProxy.h>
#include <MPL_SimulatedFaults.h>
#include <MPL_TestEnvironmentNames.h>

#include <QFile>

#include <gtest/gtest-spi.h>

namespace
{

using Mount = ComTalvexDBusMediaPlayerMMEMountInterface;
using SimulatedFaults = StackFixture;

const QString kFile = "/opt/talvex/etc/simulated-stack.json";

TEST_F(SimulatedFaults, OfMisspeltProgramsAndMethodsAreRefusedAtTheCall)
{
    MPL::SimulatedFaults faults;
    EXPECT_NONFATAL_FAILURE(
        EXPECT_TRUE(faults.StartDelay("media_manger", 1)),
        "\"media_manger\" is no program of the simulated stack; there are media_manager, ");
    EXPECT_NONFATAL_FAILURE(
        EXPECT_TRUE(faults.Reply<Mount>("media_mme", "MontPath", MPL::ReplyFault::Never)),
        "com.talvex.DBus.MediaPlayer.MMEMount has no method \"MontPath\"; it has Dismount, "
        "GetMountedDeviceList, MountPath");
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(faults.CrashAfter("media_mme", -1)),
                            "crash_after_ms can't be negative: -1");
    EXPECT_FALSE(QFile::exists(kFile));
}

TEST_F(SimulatedFaults, AreUnderstoodByTheProgramsUntilTheirEnd)
{
    {
        MPL::SimulatedFaults faults;
        for (const auto fault :
             {MPL::ReplyFault::Error, MPL::ReplyFault::Never, MPL::ReplyFault::WrongSignature,
              MPL::ReplyFault::SignalFirst, MPL::ReplyFault::Die}) {
            ASSERT_TRUE(faults.Reply<Mount>("media_mme", "Dismount", fault));
            ASSERT_TRUE(faults.ManagerObjects(1));
            ASSERT_TRUE(faults.IgnoreSigterm("media_mme"));
            ASSERT_TRUE(faults.StartDelay("media_mme", 1));
            ASSERT_TRUE(faults.NeverOwnName("media_mme"));
            ASSERT_TRUE(faults.HangAfter("media_mme", 10000));
            ASSERT_TRUE(faults.CrashAfter("media_mme", 200));
            QProcess& mount = Start("media_mme", {"--test-dbus"});
            EXPECT_EQ(ExitStatus(mount), -1) << mount.readAllStandardError().constData();
            EXPECT_FALSE(IsOwned(MPL_TEST_MME_MOUNT_SERVICE_NAME));
        }
    }
    EXPECT_FALSE(QFile::exists(kFile));
}

} // namespace
