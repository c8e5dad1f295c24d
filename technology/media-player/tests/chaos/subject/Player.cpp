#include "Player.h"

#include "Calls.h"
#include "Lines.h"
#include "Log.h"
#include "Surroundings.h"
#include "Witness.h"
#include <MPL_TestEnvironment.h>

#include <QElapsedTimer>

#include <gtest/gtest-spi.h>

#include <cstdio>
#include <utility>

namespace chaos
{
namespace
{

bool OnTestBus()
{
    const QDBusConnection& connection = MPL_TestEnvironment::m_TestDbusConnection;
    return connection.name() == QLatin1String("MPLTestDbus");
}

void Tell(const QByteArray& aLine)
{
    std::fwrite(aLine.constData(), 1, static_cast<size_t>(aLine.size()), stdout);
    std::fflush(stdout);
}

QStringList FailuresIn(const testing::TestPartResultArray& aResults)
{
    QStringList failures;
    for (int i = 0; i < aResults.size(); ++i) {
        failures << QString::fromUtf8(aResults.GetTestPartResult(i).summary());
    }
    return failures;
}

// Calls that return nothing have failed when they made the running test fail, or said so in the log.
bool HasFailed(const Step& aStep, const CallSeen& aSeen)
{
    if (aStep.action == Action::TearDownFixture) {
        return HasLine(aSeen.log, QStringLiteral("SterilizeEnvironment Reported a failure"));
    }
    const bool returnsNothing =
        aStep.action == Action::SetUpFixture || aStep.action == Action::LaunchAllSources;
    return returnsNothing && !aSeen.failures.isEmpty();
}

} // namespace

void Player::Play(const Schedule& aSchedule)
{
    for (const Step& step : aSchedule.steps) {
        switch (KindOf(step.action)) {
        case Kind::Fault:
            m_Faults.Add(step);
            break;
        case Kind::Event:
            m_Pending << step;
            break;
        case Kind::Surroundings:
            Change(step, OnTestBus());
            break;
        case Kind::Call:
            PlayCall(step);
        }
    }
    m_Disturbances.Release();
    Tell(CompleteLine());
}

void Player::PlayCall(const Step& aStep)
{
    CallSeen seen;
    seen.number = aStep.number;
    Tell(BeginLine(aStep.number));
    const Call call = Prepare(aStep);
    seen.before = LookAround(OnTestBus());
    TakeLog();
    for (const Step& event : std::exchange(m_Pending, {})) {
        m_Disturbances.Arm(event);
    }
    testing::TestPartResultArray results;
    Outcome outcome;
    {
        const testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ALL_THREADS, &results);
        QElapsedTimer timer;
        timer.start();
        outcome = call();
        seen.tookMs = timer.elapsed();
    }
    seen.log = TakeLog();
    seen.after = LookAround(OnTestBus());
    seen.disturbed = m_Disturbances.TakeDisturbed();
    seen.failures = FailuresIn(results);
    seen.changed = outcome.changed;
    seen.evidence = outcome.evidence;
    seen.wasTrue = outcome.wasTrue && !HasFailed(aStep, seen);
    Tell(EndedLine(seen));
}

} // namespace chaos
