// A test program that runs for long: round after round of launch, query and kill, and it holds no more than
// before. MPL_ENDURANCE_ROUNDS says how many rounds; what the C library keeps of freed memory counts too,
// unless GLIBC_TUNABLES=glibc.malloc.tcache_count=0.
#include "WaitUntil.h"
#include <MPL_DBusAssertions.h>
#include <MPL_Proxies.h>
#include <MPL_TestEnvironment.h>
#include <MPL_Types.h>

#include <QDBusConnectionInterface>
#include <QDir>

#include <gtest/gtest.h>

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace
{

using Manager = ComTalvexDBusMediaPlayerMediaManagerInterface;

constexpr int kWarmUp = 3;
constexpr int kRounds = 5;
constexpr int kLimitMs = 5000;
// What Qt keeps of the first rounds, and less of each than any lost reply or string of a round.
constexpr double kBytesOnce = 8192;
constexpr double kBytesPerRound = 16;

int EntriesOf(const char* aFolder)
{
    return static_cast<int>(
        QDir(aFolder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size());
}

int Connections()
{
    const QStringList names = MPL_TestEnvironment::GetDbusConnection().interface()->registeredServiceNames();
    return static_cast<int>(std::count_if(names.begin(), names.end(),
                                          [](const QString& aName) { return aName.startsWith(':'); }));
}

void Round()
{
    ASSERT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(true));
    const std::unique_ptr<Manager> manager(MPL_TestEnvironment::CreateMediaManagerProxy());
    ASSERT_TRUE(manager);
    MPL::SignalWaiter active(*manager, &Manager::ActiveMediaSourceChanged);
    EXPECT_TRUE(MPL::Replied(manager->GetAvailableMediaSources()));
    EXPECT_EQ(MPL::ValueOf(manager->GetActiveMediaSource()).serviceName, QString());
    EXPECT_TRUE(MPL_TestEnvironment::KillMediaManagerProcess());
}

void Rounds(int aCount)
{
    for (int round = 0; round < aCount && !testing::Test::HasFatalFailure(); ++round) {
        Round();
    }
}

TEST(ALongLivedProgram, HoldsNoMoreThanBefore)
{
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("MPL_ENDURANCE_ROUNDS", &isGiven);
    const int rounds = isGiven && given > 0 ? given : kRounds;
    MPL::RegisterAllMetaTypes();
    Rounds(kWarmUp);
    const int files = EntriesOf("/proc/self/fd");
    const int threads = EntriesOf("/proc/self/task");
    const int connections = Connections();
    const auto heap = static_cast<double>(mallinfo2().uordblks);
    Rounds(rounds);
    ASSERT_FALSE(HasFatalFailure()) << "a round was cut off, so what it holds means nothing";
    EXPECT_LE(EntriesOf("/proc/self/fd"), files);
    // Who has waited for a thread's end still sees it for a moment.
    EXPECT_TRUE(WaitUntil(
        "the threads of the rounds are gone", [&] { return EntriesOf("/proc/self/task") <= threads; },
        kLimitMs));
    EXPECT_TRUE(WaitUntil(
        "the bus has seen the last service go", [&] { return Connections() <= connections; }, kLimitMs));
    const double growth = static_cast<double>(mallinfo2().uordblks) - heap;
    EXPECT_LT(growth, kBytesOnce + kBytesPerRound * rounds);
    std::printf("%d rounds: %d files, %d threads, %d connections before and after; %.0f bytes more\n", rounds,
                files, threads, connections, growth);
}

} // namespace
