#include "Observations.h"

#include <algorithm>

namespace chaos
{

bool Moment::Runs(const QString& aProcess) const
{
    return std::any_of(processes.begin(), processes.end(),
                       [&aProcess](const SeenProcess& aSeen) { return aSeen.name == aProcess; });
}

} // namespace chaos
