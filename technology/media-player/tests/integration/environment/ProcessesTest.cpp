// Ending real processes: one that ignores SIGTERM, one that comes back under a new process id.
#include "ProcessStatus.h"
#include "StackFaults.h"
#include "WaitUntil.h"
#include <MPL_ProcessInfo.h>
#include <MPL_TestEnvironment.h>

#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

namespace
{

constexpr const char* kName = "hmi_main";

/// Starts the display process and returns its id once it minds SIGTERM in its own way.
qint64 Start()
{
    qint64 pid = -1;
    EXPECT_TRUE(QProcess::startDetached("/opt/talvex/bin/hmi_main", {}, {}, &pid));
    const auto minds = [pid] {
        const int id = static_cast<int>(pid);
        return HasSignalBit(id, "SigIgn", SIGTERM) || HasSignalBit(id, "SigBlk", SIGTERM) ||
               HasSignalBit(id, "SigCgt", SIGTERM);
    };
    EXPECT_TRUE(WaitUntil(minds));
    return pid;
}

TEST(KillingAProcess, EndsOneThatIgnoresSigterm)
{
    const StackFaults faults(kName, R"({"ignore_sigterm": true})");
    Start();
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(MPL_TestEnvironment::KillMediaProcess(kName));
    EXPECT_GE(timer.elapsed(), 15000) << "it should have been SIGKILL after ten passes that ended it";
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(kName), -1);
}

TEST(KillingAProcess, SignalsAgainWhenItComesBackUnderANewId)
{
    const int first = static_cast<int>(Start());
    ASSERT_EQ(kill(first, SIGSTOP), 0);
    // Stands in for a lifecycle manager that has its next instance up before the first is gone.
    std::thread restarter([first] {
        EXPECT_TRUE(WaitUntil([first] { return HasSignalBit(first, "ShdPnd", SIGTERM); }));
        Start();
        kill(first, SIGKILL);
    });
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(MPL_TestEnvironment::KillMediaProcess(kName));
    restarter.join();
    EXPECT_LT(timer.elapsed(), 10000) << "the second instance should have ended by SIGTERM";
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(kName), -1);
}

} // namespace
