/// Makes sleeping free: in a program with these doubles nanosleep() and clock_nanosleep(), where Qt's sleeps
/// end, only advance a virtual clock. Each sleep is noted as "sleep 2000 ms". Waits on conditions, sockets
/// and event loops keep their real time.
///
///     VirtualTime::OnSleep([] { World().owned << service; });
///     EXPECT_TRUE(MPL_TestEnvironment::WaitForServiceRunning(service));
///     EXPECT_EQ(VirtualTime::Slept(), 2000);
#pragma once

#include <QtGlobal>

#include <functional>

namespace MPL::Doubles
{

class VirtualTime
{
public:
    /// Time slept since the last Reset(), in milliseconds.
    static qint64 Slept();

    /// Called at the end of each sleep, on the sleeping thread, to let the world change meanwhile.
    static void OnSleep(std::function<void()> aAction);

    static void Reset();
};

} // namespace MPL::Doubles
