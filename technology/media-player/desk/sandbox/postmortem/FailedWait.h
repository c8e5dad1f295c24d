/// What the library waited for in vain.
#pragma once

#include "../run/Run.h"

#include <string>
#include <vector>

namespace sandbox
{

struct FailedWait {
    enum class For { Name, Object, OneObject, PrivateBus, Program };

    For what = For::Name;
    std::string about; ///< the bus name, or the program that could not be started
    int found = 0;     ///< objects
    Span span;
};

/// As the library tells them in its log, in order. What a case or the whole run passed with was
/// expected, so that is left out; and that there is no lifecycle manager is no fault of a service.
std::vector<FailedWait> FailedWaits(const Run& aRun);

} // namespace sandbox
