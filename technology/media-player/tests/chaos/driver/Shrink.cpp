#include "Shrink.h"

namespace chaos
{
namespace
{

Schedule Without(const Schedule& aSchedule, int aNumber)
{
    QVector<int> numbers = NumbersOf(aSchedule);
    numbers.removeOne(aNumber);
    return Kept(aSchedule, numbers);
}

} // namespace

Schedule Shrink(const Schedule& aSchedule, const std::function<bool(const Schedule&)>& aStillBroken)
{
    Schedule smallest = aSchedule;
    bool hasShrunk = true;
    while (hasShrunk) {
        hasShrunk = false;
        // From the end: what comes last is needed least often.
        const QVector<int> numbers = NumbersOf(smallest);
        for (auto number = numbers.rbegin(); number != numbers.rend(); ++number) {
            const Schedule smaller = Without(smallest, *number);
            if (aStillBroken(smaller)) {
                smallest = smaller;
                hasShrunk = true;
            }
        }
    }
    return smallest;
}

} // namespace chaos
