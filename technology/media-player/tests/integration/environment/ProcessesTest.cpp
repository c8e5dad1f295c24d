// Starting a real command, and ending a real process that comes back under a new process id.
#include "ProcessStatus.h"
#include "WaitUntil.h"
#include "environment/QtVersions.h"
#include <MPL_ProcessInfo.h>
#include <MPL_TestEnvironment.h>

#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <thread>

namespace
{

constexpr const char* kName = "hmi_main";

/// Starts the display process and returns its id once it minds SIGTERM in its own way.
int Start()
{
    qint64 pid = -1;
    EXPECT_TRUE(QProcess::startDetached("/opt/talvex/bin/hmi_main", {}, {}, &pid));
    const int id = static_cast<int>(pid);
    EXPECT_TRUE(WaitUntil("it minds SIGTERM", [id] { return HasSignalBit(id, "SigBlk", SIGTERM); }));
    return id;
}

TEST(StartingACommand, SplitsItAtItsBlanks)
{
    const QTemporaryDir folder;
    const QString plain = folder.filePath("plain");
    const QString blank = folder.filePath("with blank");
    EXPECT_TRUE(MPL::Detail::StartCommandDetached("touch  " + plain + " \"" + blank + '"'));
    EXPECT_TRUE(WaitUntil("both are there", [&] { return QFile::exists(plain) && QFile::exists(blank); }));
    EXPECT_FALSE(MPL::Detail::StartCommandDetached(folder.filePath("missing")));
    EXPECT_FALSE(MPL::Detail::StartCommandDetached(" "));
}

TEST(KillingAProcess, SignalsAgainWhenItComesBackUnderANewId)
{
    const int first = Start();
    ASSERT_EQ(kill(first, SIGSTOP), 0);
    // Stands in for a lifecycle manager that has its next instance up before the first is gone.
    std::thread restarter([first] {
        EXPECT_TRUE(
            WaitUntil("SIGTERM has arrived", [first] { return HasSignalBit(first, "ShdPnd", SIGTERM); }));
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
