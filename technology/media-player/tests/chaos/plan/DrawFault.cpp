#include "DrawFault.h"

#include "Methods.h"
#include "Stack.h"
#include <MPL_TestEnvironmentNames.h>

namespace chaos
{
namespace
{

// Around the library's own pauses and limits, and far from them.
const QVector<int> kMoments{0, 20, 100, 300, 700, 1200, 2500, 5000, 9000, 15000, 21000};
const QVector<int> kLengths{500, 2000, 7000, 12000, 30000};

const QVector<Action>& Faults()
{
    static const QVector<Action> kFaults{Action::StartsLate,
                                         Action::NeverOwnsItsName,
                                         Action::ExportsTwoObjects,
                                         Action::IgnoresSigterm,
                                         Action::Crashes,
                                         Action::Hangs,
                                         Action::AnswersWithAnError,
                                         Action::AnswersNever,
                                         Action::AnswersWrongly,
                                         Action::SignalsFirst,
                                         Action::DiesAnswering,
                                         Action::FaultsEnd,
                                         Action::IsKilled,
                                         Action::IsStopped,
                                         Action::IsStartedAnew,
                                         Action::ProgramIsKilled,
                                         Action::BusDies,
                                         Action::BusStops,
                                         Action::BusIsSlow,
                                         Action::DatabaseIsLocked,
                                         Action::NameIsTaken,
                                         Action::LifecycleManagerRefuses,
                                         Action::LifecycleManagerIsMute,
                                         Action::DatabaseIsDamaged,
                                         Action::ConfigurationIsDamaged,
                                         Action::ConfigurationIsWhole,
                                         Action::DiskIsFull,
                                         Action::DiskHasRoom};
    return kFaults;
}

Step MakeFault(Dice& aDice, Action aAction)
{
    const QString program = Programs().at(aDice.Roll(Programs().size())).process;
    switch (aAction) {
    case Action::AnswersWithAnError:
    case Action::AnswersNever:
    case Action::AnswersWrongly:
    case Action::SignalsFirst:
    case Action::DiesAnswering:
        return {aAction, aDice.Pick(MethodNames())};
    case Action::ExportsTwoObjects:
        return {aAction, MPL_TEST_MEDIAMANAGER_PROCESS_NAME};
    case Action::NameIsTaken:
        return {aAction, Programs().at(aDice.Roll(8)).process}; // of those that own one
    case Action::DiskIsFull:
        return {aAction, {}, aDice.Pick(QVector<int>{0, 100, 5000, 20000})};
    case Action::ProgramIsKilled:
    case Action::BusDies:
    case Action::BusStops:
    case Action::BusIsSlow:
    case Action::DatabaseIsLocked:
        return {aAction, {}, aDice.Pick(kLengths), aDice.Pick(kMoments)};
    default:
        // Most often one that a schedule is sure to start.
        return {aAction, aDice.Chance(40) ? MPL_TEST_MEDIAMANAGER_PROCESS_NAME : program,
                aDice.Pick(kMoments), aDice.Pick(kMoments)};
    }
}

} // namespace

Step DrawFault(Dice& aDice)
{
    return MakeFault(aDice, aDice.Pick(Faults()));
}

} // namespace chaos
