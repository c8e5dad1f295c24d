/// A call of a run, with what it was to do and what befell the stack meanwhile.
#pragma once

#include "Promise.h"

#include <functional>

namespace chaos
{

struct CallView {
    const Schedule& schedule;
    const Step& step;
    const CallSeen& seen;

    /// Something happened to the program while the call was at work, or one of its faults may have.
    bool WasDisturbed(const QString& aProcess) const;
    /// Somebody else than the library has started it while the call was at work.
    bool WasStartedAnew(const QString& aProcess) const { return seen.disturbed.contains(aProcess + kAnew); }
    bool BusWasDisturbed() const;
    /// Something may hang, so that questions are left unanswered.
    bool MayHang() const;
    bool Logged(const QString& aPart) const;
    bool LoggedCritical() const;
};

/// Calls `aLook` for each call of the run, and collects what it says: an empty text is no breach.
Breaches ForEachCall(const char* aPromise, const Schedule& aSchedule, const Observations& aSeen,
                     const std::function<QString(const CallView& aCall)>& aLook);

} // namespace chaos
