#include "Report.h"

#include "Shrink.h"
#include "Trial.h"

#include <algorithm>
#include <cstdio>

namespace chaos
{
namespace
{

void Print(const QString& aText)
{
    std::printf("%s\n", qPrintable(aText));
    std::fflush(stdout);
}

void Print(const Breach& aBreach)
{
    Print(QStringLiteral("  BROKEN \"%1\" at step %2: %3")
              .arg(aBreach.promise)
              .arg(aBreach.number)
              .arg(aBreach.what));
}

bool Breaks(const QString& aPromise, const Breaches& aBreaches)
{
    return std::any_of(aBreaches.begin(), aBreaches.end(),
                       [&aPromise](const Breach& aBreach) { return aBreach.promise == aPromise; });
}

Schedule SmallestThatBreaks(const QString& aPromise, const Schedule& aSchedule, double aSpeed)
{
    // What depends on the machine's mood may need several tries to show itself.
    const auto breaksAgain = [&](const Schedule& aSmaller) {
        constexpr int kTries = 2;
        for (int attempt = 0; attempt < kTries; ++attempt) {
            if (Breaks(aPromise, Judge(aSmaller, Try(aSmaller, aSpeed)))) {
                return true;
            }
        }
        return false;
    };
    if (!breaksAgain(aSchedule)) {
        Print(QStringLiteral("It did not break again; the whole schedule:"));
        return aSchedule;
    }
    Print(QStringLiteral("The smallest schedule that breaks it:"));
    return Shrink(aSchedule, breaksAgain);
}

} // namespace

bool AreOnlyLate(const Breaches& aBreaches)
{
    return std::all_of(aBreaches.begin(), aBreaches.end(), [](const Breach& aBreach) {
        return aBreach.promise == QLatin1String("returns in time");
    });
}

void Report(const Schedule& aSchedule, const Breaches& aBreaches, double aSpeed, bool aShrink)
{
    Print(QStringLiteral("\nSeed %1 broke a promise:").arg(aSchedule.seed));
    for (const Breach& breach : aBreaches) {
        Print(breach);
    }
    const Schedule smallest =
        aShrink ? SmallestThatBreaks(aBreaches.first().promise, aSchedule, aSpeed) : aSchedule;
    Print(InWords(smallest).join(QLatin1Char('\n')));
    Print(QStringLiteral("Repeat it: %1 --speed %2").arg(CommandFor(smallest)).arg(aSpeed));
}

void Tell(const Schedule& aSchedule, const Observations& aSeen, const Breaches& aBreaches)
{
    Print(InWords(aSchedule).join(QLatin1Char('\n')));
    for (const CallSeen& call : aSeen.calls) {
        Print(QStringLiteral("step %1: %2 after %3 ms%4")
                  .arg(call.number)
                  .arg(QLatin1String(call.wasTrue ? "true" : "false"))
                  .arg(call.tookMs)
                  .arg(call.disturbed.isEmpty()
                           ? QString()
                           : QStringLiteral(", disturbed: ") + call.disturbed.join(QLatin1String(", "))));
        for (const LogLine& line : call.log) {
            Print(QStringLiteral("    %1: %2").arg(line.level, line.text));
        }
    }
    for (const Breach& breach : aBreaches) {
        Print(breach);
    }
    Print(aBreaches.isEmpty() ? QStringLiteral("All promises kept.") : QString());
}

} // namespace chaos
