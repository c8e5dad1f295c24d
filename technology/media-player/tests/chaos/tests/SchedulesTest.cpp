// A seed's schedule, its words, its smallest failing part, and the lines in which observations travel.
#include "Lines.h"
#include "OneCall.h"
#include "Schedule.h"
#include "Shrink.h"

#include <QSet>

#include <gtest/gtest.h>

namespace chaos
{
namespace
{

constexpr quint64 kSeeds = 3000;

TEST(Schedules, AreTheSameForTheSameSeedAndOtherwiseNot)
{
    EXPECT_EQ(InWords(DrawSchedule(42)), InWords(DrawSchedule(42)));
    EXPECT_NE(InWords(DrawSchedule(42)), InWords(DrawSchedule(43)));
}

TEST(Schedules, ReachEveryActionAndSayWhatItIs)
{
    QSet<int> drawn;
    QStringList sentences;
    for (quint64 seed = 0; seed < kSeeds; ++seed) {
        const Schedule schedule = DrawSchedule(seed);
        sentences << InWords(schedule);
        for (const Step& step : schedule.steps) {
            drawn.insert(static_cast<int>(step.action));
        }
    }
    EXPECT_EQ(drawn.size(), static_cast<int>(Action::SlmStopTuners) + 1);
    EXPECT_TRUE(sentences.filter("%").isEmpty());
}

TEST(Schedules, EndWithTheHandBack)
{
    for (quint64 seed = 0; seed < kSeeds; ++seed) {
        const Action last = DrawSchedule(seed).steps.last().action;
        EXPECT_TRUE(last == Action::Sterilize || last == Action::TearDownFixture) << seed;
    }
}

TEST(Schedules, KeepTheirNumbersWhenStepsAreLeftOut)
{
    const Schedule kept = Kept(DrawSchedule(42), {2, 4, 999});
    EXPECT_EQ(NumbersOf(kept), QVector<int>({2, 4}));
    EXPECT_EQ(InWords(kept.steps.last()), InWords(DrawSchedule(42).steps.at(3)));
}

TEST(Shrinking, LeavesTheStepsThatCannotBeMissed)
{
    const Schedule whole = DrawSchedule(42);
    ASSERT_GE(whole.steps.size(), 5);
    const Schedule smallest = Shrink(whole, [](const Schedule& aSchedule) {
        const QVector<int> numbers = NumbersOf(aSchedule);
        return numbers.contains(2) && numbers.contains(5);
    });
    EXPECT_EQ(NumbersOf(smallest), QVector<int>({2, 5}));
}

TEST(Lines, BringObservationsBackWhole)
{
    OneCall run(Action::LaunchSource, MPL::MPL_DISC_PROCESS_NAME);
    CallSeen& sent = run.TheCall();
    sent.tookMs = 123456;
    sent.evidence = "whole";
    sent.changed << "aPath";
    sent.failures << "a\nb";
    sent.disturbed << "the bus";
    sent.log.append({"critical", QString::fromUtf8("“quoted”")});
    sent.after.processes.append({"hmi_main", 7, true});
    sent.after.names << "com.talvex.X";
    sent.after.storedSource = "y";

    Observations seen;
    Take(BeginLine(1), seen);
    Take(EndedLine(sent), seen);
    EXPECT_FALSE(seen.isComplete);
    Take(CompleteLine(), seen);
    ASSERT_EQ(seen.calls.size(), 1);
    EXPECT_EQ(EndedLine(seen.calls.first()), EndedLine(sent));
    EXPECT_EQ(seen.begun, 1);
    EXPECT_TRUE(seen.isComplete);
}

TEST(Lines, ThatAreCutOffOrOfOthersAreLeftOut)
{
    Observations seen;
    for (const QByteArray& line :
         {EndedLine({}).left(30), QByteArray("media_manager: hello"), QByteArray()}) {
        Take(line, seen);
    }
    EXPECT_TRUE(seen.calls.isEmpty());
    EXPECT_EQ(seen.begun, 0);
}

} // namespace
} // namespace chaos
