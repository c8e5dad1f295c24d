/// The services of a run, and what is known of each.
#pragma once

#include "../run/Run.h"
#include "FailedWait.h"

#include <string>
#include <vector>

namespace sandbox
{

inline const std::string kBusDaemon = "dbus-daemon";

struct Service {
    std::string name;                  ///< of its program; empty: only its bus name is known
    std::string busName;               ///< empty: not known
    Bus bus = Bus::Private;            ///< where it was waited for
    const FailedWait* wait = nullptr;  ///< the first in vain; nullptr: none
    const ProcessLife* life = nullptr; ///< the start that counts; nullptr: there was none
    const Unit* unit = nullptr;        ///< of the lifecycle manager, not well
    const Job* job = nullptr;          ///< of that unit, failed
    int starts = 0;                    ///< how often it was started
    int start = 0;                     ///< which of them counts
    std::vector<const Connection*> connections;
};

/// Those that were launched or waited for: first what was waited for in vain, then what ended by itself.
std::vector<Service> ServicesOf(const Run& aRun, const std::vector<FailedWait>& aWaits);

/// Whether nobody had asked it to end as it did.
bool EndedByItself(const ProcessLife& aLife);

} // namespace sandbox
