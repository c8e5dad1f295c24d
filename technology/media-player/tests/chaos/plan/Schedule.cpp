#include "Schedule.h"

#include <algorithm>
#include <iterator>

namespace chaos
{

Schedule Kept(const Schedule& aSchedule, const QVector<int>& aNumbers)
{
    Schedule kept = aSchedule;
    kept.steps.clear();
    std::copy_if(aSchedule.steps.begin(), aSchedule.steps.end(), std::back_inserter(kept.steps),
                 [&aNumbers](const Step& aStep) { return aNumbers.contains(aStep.number); });
    return kept;
}

QVector<int> NumbersOf(const Schedule& aSchedule)
{
    QVector<int> numbers;
    for (const Step& step : aSchedule.steps) {
        numbers << step.number;
    }
    return numbers;
}

QString NumberText(const Schedule& aSchedule)
{
    QStringList numbers;
    for (const int number : NumbersOf(aSchedule)) {
        numbers << QString::number(number);
    }
    return numbers.join(QLatin1Char(','));
}

Schedule FromText(const QString& aSeed, const QString& aNumbers)
{
    QVector<int> kept;
    const QStringList numbers = aNumbers.split(QLatin1Char(','));
    for (const QString& number : numbers) {
        kept << number.toInt();
    }
    return Kept(DrawSchedule(aSeed.toULongLong()), kept);
}

bool Has(const Schedule& aSchedule, Action aAction)
{
    return std::any_of(aSchedule.steps.begin(), aSchedule.steps.end(),
                       [aAction](const Step& aStep) { return aStep.action == aAction; });
}

QStringList InWords(const Schedule& aSchedule)
{
    QStringList lines;
    if (aSchedule.hasLifecycleManager) {
        lines << QStringLiteral("     (with a lifecycle manager)");
    }
    for (const Step& step : aSchedule.steps) {
        lines << QStringLiteral("%1. %2").arg(step.number, 4).arg(InWords(step));
    }
    return lines;
}

} // namespace chaos
