/// What happens in one chaos run. A seed gives the whole of it, always the same:
///
///     const Schedule schedule = DrawSchedule(42);
///     const Schedule smaller = Kept(schedule, {3, 7});   // of its steps only these
///     std::cout << InWords(smaller);
#pragma once

#include "Step.h"

#include <QStringList>
#include <QVector>

namespace chaos
{

struct Schedule {
    quint64 seed = 0;
    bool hasLifecycleManager = false; ///< the sandbox is to have a real one
    QVector<Step> steps;
};

Schedule DrawSchedule(quint64 aSeed);

/// The schedule with only the steps of these numbers; numbers that it does not have are left out.
Schedule Kept(const Schedule& aSchedule, const QVector<int>& aNumbers);

QVector<int> NumbersOf(const Schedule& aSchedule);

/// The numbers as a text "3,7", and the schedule of a seed with the steps that such a text names.
QString NumberText(const Schedule& aSchedule);
Schedule FromText(const QString& aSeed, const QString& aNumbers);

bool Has(const Schedule& aSchedule, Action aAction);

/// One line for each step, with its number.
QStringList InWords(const Schedule& aSchedule);

} // namespace chaos
