// Says when it runs, in seconds of the monotonic clock: what comes before is a start, what comes after an
// end.
#include <cstdio>
#include <ctime>

int main()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    std::printf("%lld.%09ld\n", static_cast<long long>(now.tv_sec), now.tv_nsec);
}
