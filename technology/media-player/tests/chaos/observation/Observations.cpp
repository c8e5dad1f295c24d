#include "Observations.h"

#include <algorithm>
#include <initializer_list>

namespace chaos
{

bool Moment::Runs(const QString& aProcess) const
{
    return std::any_of(processes.begin(), processes.end(),
                       [&aProcess](const SeenProcess& aSeen) { return aSeen.name == aProcess; });
}

bool Observations::WasNoRun() const
{
    // What mpl-sandbox ends with of its own accord.
    const std::initializer_list<int> kRefusals{2, 125, 126, 127};
    return begun == 0 && !isComplete &&
           std::find(kRefusals.begin(), kRefusals.end(), exitStatus) != kRefusals.end();
}

} // namespace chaos
