// Whatever is killed, nothing is left.
#include "SandboxRun.h"

#include <algorithm>
#include <csignal>

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

} // namespace sandbox
