/// The clock of a sandbox that runs faster than the machine's.
#pragma once

namespace sandbox
{

constexpr long long kSecond = 1000000000; ///< in nanoseconds

/// Agrees with the machine's clock at the start and goes `speed` times as fast from then on. Times are
/// nanoseconds since the epoch. Those before the start, of files that were there already, are the same on
/// both clocks.
struct Clock {
    long long start = 0;
    double speed = 1;

    long long FromMachine(long long aTime) const
    {
        const long double passed = static_cast<long double>(aTime - start) * speed;
        return IsInReach(passed) ? start + static_cast<long long>(passed) : aTime;
    }

    /// Rounds up, so that a time taken to the machine's clock and back does not come out earlier.
    long long ToMachine(long long aTime) const
    {
        const auto passed = static_cast<long double>(aTime - start);
        return IsInReach(passed) ? start + static_cast<long long>(passed / speed) + 1 : aTime;
    }

private:
    /// What lies further ahead than some thirty years is left alone: it could overflow.
    bool IsInReach(long double aPassed) const { return speed > 1 && aPassed > 0 && aPassed < 1e18L; }
};

/// What a sandbox's programs find in their environment.
constexpr const char* kSpeedVariable = "MPL_SANDBOX_SPEED";            ///< Clock::speed
constexpr const char* kClockStartVariable = "MPL_SANDBOX_CLOCK_START"; ///< Clock::start, when that is above 1

} // namespace sandbox
