// Whatever is killed, nothing is left.
#include "SandboxRun.h"
#include "WaitUntil.h"

#include <QDir>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <map>
#include <string>

namespace sandbox
{

struct Victim {
    const char* name;
    const char* beginning; ///< of its command line
    int signal;
    int status; ///< of mpl-sandbox afterwards
};

class KilledSandbox : public Sandbox, public testing::WithParamInterface<Victim>
{
};

TEST_P(KilledSandbox, LeavesNothingBehind)
{
    const Victim& victim = GetParam();
    // A service in the background, one that left its session, and one that ignores what can be ignored.
    const auto sandbox = StartScript("sleep 1001 & setsid sleep 1002 & (trap '' TERM HUP INT; sleep 1003) &"
                                     "echo up; sleep 1004; exit 0");
    const std::vector<ProcessEntry> before = MarkedProcesses();
    const auto found = std::find_if(before.begin(), before.end(), [&](const ProcessEntry& aEntry) {
        return aEntry.arguments.rfind(victim.beginning, 0) == 0;
    });
    ASSERT_NE(found, before.end()) << victim.name;
    ASSERT_GE(before.size(), 8U);
    ASSERT_EQ(kill(found->pid, victim.signal), 0);

    EXPECT_EQ(WaitForEnd(*sandbox).status, victim.status);
    EXPECT_TRUE(WaitForNoProcess()) << MarkedProcesses().front().arguments;
    EXPECT_EQ(SandboxGroups(), QStringList());
    EXPECT_FALSE(ReadFile("/proc/self/mountinfo").contains(m_Stack.path().toUtf8()));
}

INSTANTIATE_TEST_SUITE_P(
    Each, KilledSandbox,
    testing::Values(Victim{"MplSandbox", MPL_SANDBOX_PROGRAM, SIGKILL, 128 + SIGKILL},
                    Victim{"MplSandboxBySigterm", MPL_SANDBOX_PROGRAM, SIGTERM, 128 + SIGTERM},
                    Victim{"Bubblewrap", "bwrap", SIGKILL, 128 + SIGKILL},
                    Victim{"FirstProcessInside", "/run/mpl-sandbox/mpl-sandbox", SIGKILL, 128 + SIGKILL},
                    Victim{"TestProgram", "sh -c", SIGKILL, 128 + SIGKILL}),
    [](const testing::TestParamInfo<Victim>& aInfo) { return std::string(aInfo.param.name); });

// bubblewrap is held where the first process inside is born and waits for its word: it is made to tell of the
// birth to a pipe that takes no more.
class SandboxBeforeItStands : public Sandbox, public testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override
    {
        Sandbox::SetUp();
        const QByteArray pipe = m_OpenFolder.filePath("pipe").toUtf8();
        ASSERT_EQ(mkfifo(pipe, 0600), 0);
        m_Pipe = open(pipe, O_RDWR | O_NONBLOCK | O_CLOEXEC);
        const std::string page(4096, '.');
        while (write(m_Pipe, page.data(), page.size()) > 0) {
        }
        WriteFile(m_OpenFolder.filePath("bwrap"),
                  "#!/bin/sh\nPATH=${PATH#*:}\nexec bwrap --info-fd 0 \"$@\" 0<>" + pipe, kProgram);
        m_Environment.insert("PATH", m_OpenFolder.path() + ':' + m_Environment.value("PATH"));
        Start(m_Sandbox, QStringList{"--no-lifecycle-manager"} + ShellCommand("true"));
        ASSERT_TRUE(WaitUntil("the first process inside is born", [this] { return FindProcesses(); }));
    }

    ~SandboxBeforeItStands() override { close(m_Pipe); }

    bool FindProcesses()
    {
        std::map<pid_t, pid_t> parents; // of bubblewrap and the one inside, which is a copy of it
        for (const ProcessEntry& process : MarkedProcesses()) {
            if (process.arguments.rfind("bwrap --info-fd", 0) == 0) {
                parents[process.pid] = process.parent;
            }
        }
        for (const auto& [process, parent] : parents) {
            if (parents.count(parent) > 0) {
                m_Inside = process;
                m_Victims = {{"MplSandbox", static_cast<pid_t>(m_Sandbox.processId())},
                             {"Bubblewrap", parent},
                             {"WhatRunsBubblewrap", parents[parent]}};
            }
        }
        return m_Inside != 0;
    }

    int m_Pipe = -1;
    QProcess m_Sandbox;
    pid_t m_Inside = 0;
    std::map<std::string, pid_t> m_Victims;
};

TEST_P(SandboxBeforeItStands, LeavesNothingBehindWhenKilled)
{
    for (const ProcessEntry& process : MarkedProcesses()) {
        const auto victim = m_Victims.find(GetParam());
        if (victim != m_Victims.end() ? process.pid == victim->second : process.pid != m_Inside) {
            kill(process.pid, SIGKILL);
        }
    }
    EXPECT_EQ(WaitForEnd(m_Sandbox).status, 128 + SIGKILL);
    EXPECT_TRUE(WaitForNoProcess()) << MarkedProcesses().front().arguments;
}

INSTANTIATE_TEST_SUITE_P(Each, SandboxBeforeItStands,
                         testing::Values("MplSandbox", "WhatRunsBubblewrap", "Bubblewrap",
                                         "AllOutsideAtOnce"),
                         [](const auto& aInfo) { return std::string(aInfo.param); });

// All at once, so that nobody is left to clean up: as CI servers end what takes too long. In a control group
// of the case's own, where nobody else's sandboxes sweep.
class SandboxKilledWithItsCleaner : public Sandbox
{
protected:
    void SetUp() override
    {
        Sandbox::SetUp();
        RequireLifecycleManager(); // without one there is no control group to leave
        const auto sandbox = StartScript("echo up; read end");
        const QDir machine = QFileInfo(SandboxGroups().value(0)).dir();
        sandbox->write("end\n");
        WaitForEnd(*sandbox);
        m_Group = machine.filePath("mpl-test-" + QString::number(getpid()));
        ASSERT_TRUE(machine.mkdir(m_Group)) << qPrintable(m_Group);
        m_Command = QStringList{"sh", "-c", "echo 0 >$0/cgroup.procs && exec \"$@\"", m_Group} + m_Command;
    }

    ~SandboxKilledWithItsCleaner() override { rmdir(qPrintable(m_Group)); }

    QString LeaveGroup()
    {
        const auto sandbox = StartScript("echo up; sleep 1005");
        for (const ProcessEntry& process : MarkedProcesses()) {
            kill(process.pid, SIGSTOP);
        }
        for (const ProcessEntry& process : MarkedProcesses()) {
            if (process.pid != sandbox->processId()) { // its end would make the stopped cleaner go on
                kill(process.pid, SIGKILL);
            }
        }
        sandbox->kill();
        WaitForEnd(*sandbox);
        EXPECT_TRUE(WaitForNoProcess());
        return SandboxGroups().value(0);
    }

    QString m_Group;
};

TEST_F(SandboxKilledWithItsCleaner, IsSweptByTheNextStartWhichLeavesLiveOnesAlone)
{
    const auto alive = StartScript("echo up; read end; echo $MPL_SANDBOX_LIFECYCLE_MANAGER");
    const QStringList living = SandboxGroups();
    ASSERT_EQ(living.size(), 1);
    m_Environment.insert("MPL_TEST_MARK", "the one to kill");
    LeaveGroup();
    EXPECT_EQ(SandboxGroups().size(), 2);

    EXPECT_EQ(RunScript("true", {}).err, "");
    EXPECT_EQ(SandboxGroups(), living);
    alive->write("end\n");
    const Outcome outcome = WaitForEnd(*alive);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(SandboxGroups(), QStringList());
}

TEST_F(SandboxKilledWithItsCleaner, IsNamedByEachStartWhichCannotSweepIt)
{
    const QString group = LeaveGroup();
    ASSERT_NE(group, "");
    // What something is mounted on can't be removed.
    const QStringList command = m_Command;
    m_Command = QStringList{"unshare", "-m", "sh", "-c", "mount --bind $0 $0 && \"$@\"", group} + command;
    const Outcome outcome = RunScript("true", {});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_NE(outcome.err.find(group.toStdString() + ", left of a sandbox that was killed, can't be removed"),
              std::string::npos)
        << outcome.err;
    m_Command = command;
    EXPECT_EQ(RunScript("true", {}).err, "");
    EXPECT_EQ(SandboxGroups(), QStringList());
}

// Each sweeps while the others make their groups.
TEST_F(SandboxKilledWithItsCleaner, IsSweptByManyThatStartAtOnceAndKeepTheirOwn)
{
    constexpr int kCount = 12;
    LeaveGroup();
    std::vector<QProcess> started(kCount);
    for (QProcess& sandbox : started) {
        Start(sandbox, ShellCommand("echo $MPL_SANDBOX_LIFECYCLE_MANAGER"));
    }
    for (QProcess& sandbox : started) {
        const Outcome outcome = WaitForEnd(sandbox);
        EXPECT_EQ(outcome.out, "systemd\n") << outcome.err;
    }
    EXPECT_EQ(SandboxGroups(), QStringList());
}

} // namespace sandbox
