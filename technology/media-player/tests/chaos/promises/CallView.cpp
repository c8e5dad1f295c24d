#include "CallView.h"

#include <algorithm>
#include <initializer_list>

namespace chaos
{

bool CallView::WasDisturbed(const QString& aProcess) const
{
    const auto isFault = [&aProcess](const Step& aStep) {
        const bool isOfIt = aStep.object.section(QLatin1Char(' '), 0, 0) == aProcess;
        return isOfIt && (aStep.action == Action::Crashes || aStep.action == Action::DiesAnswering);
    };
    return seen.disturbed.contains(aProcess) ||
           std::any_of(schedule.steps.begin(), schedule.steps.end(), isFault);
}

bool CallView::BusWasDisturbed() const
{
    return seen.disturbed.contains(QStringLiteral("the bus"));
}

bool CallView::MayHang() const
{
    const std::initializer_list<Action> hanging{Action::Hangs,     Action::AnswersNever, Action::NameIsTaken,
                                                Action::IsStopped, Action::BusStops,     Action::BusIsSlow};
    return std::any_of(hanging.begin(), hanging.end(),
                       [this](Action aAction) { return Has(schedule, aAction); });
}

bool CallView::Logged(const QString& aPart) const
{
    return std::any_of(seen.log.begin(), seen.log.end(),
                       [&aPart](const LogLine& aLine) { return aLine.text.contains(aPart); });
}

bool CallView::LoggedCritical() const
{
    return std::any_of(seen.log.begin(), seen.log.end(),
                       [](const LogLine& aLine) { return aLine.level == QLatin1String("critical"); });
}

Breaches ForEachCall(const char* aPromise, const Schedule& aSchedule, const Observations& aSeen,
                     const std::function<QString(const CallView& aCall)>& aLook)
{
    Breaches breaches;
    for (const CallSeen& call : aSeen.calls) {
        const auto step = std::find_if(aSchedule.steps.begin(), aSchedule.steps.end(),
                                       [&call](const Step& aStep) { return aStep.number == call.number; });
        if (step == aSchedule.steps.end()) {
            continue;
        }
        const QString what = aLook({aSchedule, *step, call});
        if (!what.isEmpty()) {
            breaches.append({QString::fromLatin1(aPromise), call.number, what});
        }
    }
    return breaches;
}

} // namespace chaos
