// The lifecycle manager in the sandbox. Needs a machine where a systemd user manager can run.
#include "SandboxRun.h"

#include <QElapsedTimer>

namespace sandbox
{

class SandboxLifecycleManager : public Sandbox
{
protected:
    void SetUp() override
    {
        Sandbox::SetUp();
        RequireLifecycleManager();
    }
};

TEST_F(SandboxLifecycleManager, RunsTheUnitsOfTheStackOnly)
{
    const Outcome outcome = RunScript(R"(
        systemctl --user list-unit-files --no-legend --no-pager | cut -d' ' -f1 | sort | tr '\n' ' '
        systemctl --user start media-manager && until ps -o args= -C sleep; do :; done # its script starts it
        systemctl --user stop media-manager && ps -o args= -C sleep
        systemctl --user start no-such-unit)",
                                      {});
    EXPECT_EQ(outcome.out, "basic.target dbus.service dbus.socket media-manager.service mpl-sandbox.target "
                           "shutdown.target sleep 1000\n");
    EXPECT_NE(outcome.err.find("no-such-unit.service not found"), std::string::npos) << outcome.err;
}

TEST_F(SandboxLifecycleManager, IsOnTheBusBeforeTheProgramStarts)
{
    // One after the other and many at once: the name must be there in every one of them.
    const QString script = "dbus-send --system --print-reply=literal --dest=org.freedesktop.systemd1 "
                           "/org/freedesktop/systemd1 org.freedesktop.DBus.Peer.Ping && echo up";
    QElapsedTimer timer;
    timer.start();
    std::vector<std::unique_ptr<QProcess>> sandboxes;
    for (int count = 0; count < 8; ++count) {
        sandboxes.push_back(std::make_unique<QProcess>());
        Start(*sandboxes.back(), ShellCommand(script));
    }
    for (const auto& sandbox : sandboxes) {
        const Outcome outcome = WaitForEnd(*sandbox);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
    }
    // A name whose arrival is missed is found only when the wait for it is over, which takes ten seconds.
    EXPECT_LT(timer.elapsed(), 9000);
    EXPECT_TRUE(MarkedProcesses().empty());
    EXPECT_EQ(SandboxGroups(), QStringList());
}

// Closing a queue of watches takes the kernel long, and the sandbox waits for its manager's end.
TEST_F(SandboxLifecycleManager, WatchesItsControlGroupsOnly)
{
    const Outcome outcome = RunScript(R"sh(
        for process in /proc/[0-9]*; do
            test "$(cat $process/comm)" = systemd && grep -l '^inotify wd' $process/fdinfo/* | wc -l
        done
        systemctl --user show-environment | grep -c LD_PRELOAD)sh",
                                      {});
    EXPECT_EQ(outcome.out, "1\n0\n") << outcome.err; // and what it starts knows nothing of that
}

} // namespace sandbox
