#include "Faults.h"

#include "Methods.h"

#include <QDebug>

namespace chaos
{
namespace
{

testing::AssertionResult Ask(MPL::SimulatedFaults& aFaults, const Step& aStep)
{
    switch (aStep.action) {
    case Action::StartsLate:
        return aFaults.StartDelay(aStep.object, aStep.milliseconds);
    case Action::NeverOwnsItsName:
        return aFaults.NeverOwnName(aStep.object);
    case Action::ExportsTwoObjects:
        return aFaults.ManagerObjects(2);
    case Action::IgnoresSigterm:
        return aFaults.IgnoreSigterm(aStep.object);
    case Action::Crashes:
        return aFaults.CrashAfter(aStep.object, aStep.milliseconds);
    case Action::Hangs:
        return aFaults.HangAfter(aStep.object, aStep.milliseconds);
    case Action::AnswersWithAnError:
        return SetReply(aFaults, aStep.object, MPL::ReplyFault::Error);
    case Action::AnswersNever:
        return SetReply(aFaults, aStep.object, MPL::ReplyFault::Never);
    case Action::AnswersWrongly:
        return SetReply(aFaults, aStep.object, MPL::ReplyFault::WrongSignature);
    case Action::SignalsFirst:
        return SetReply(aFaults, aStep.object, MPL::ReplyFault::SignalFirst);
    case Action::DiesAnswering:
        return SetReply(aFaults, aStep.object, MPL::ReplyFault::Die);
    default:
        return testing::AssertionFailure() << "no fault of a program: " << qPrintable(InWords(aStep));
    }
}

} // namespace

void Faults::Add(const Step& aStep)
{
    if (aStep.action == Action::FaultsEnd) {
        m_Faults = std::make_unique<MPL::SimulatedFaults>();
    } else if (const testing::AssertionResult asked = Ask(*m_Faults, aStep); !asked) {
        qFatal("%s", asked.message());
    }
}

} // namespace chaos
