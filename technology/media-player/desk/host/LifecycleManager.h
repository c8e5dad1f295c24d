/// The service lifecycle manager of an ordinary Linux machine: systemd, over the system bus.
#pragma once

#include <QByteArray>

#include <chrono>

namespace MPL::Detail
{

enum class ServiceJob { Start, Stop };

/// Longest that one start or stop may take; systemd itself gives a stubborn program 90 seconds.
inline constexpr std::chrono::milliseconds kServiceJobBound{30000};

/// Has the manager on the system bus (DBUS_SYSTEM_BUS_ADDRESS names it) start or stop "<service>.service" and
/// blocks, without an event loop, until the manager reports the job done or `aBound` has passed.
/// Returns true when the service runs, or is stopped, as asked; a service unknown to the manager counts as
/// stopped. Returns false, with one log line, in all other cases.
bool RunServiceJob(ServiceJob aJob, const QByteArray& aService, std::chrono::milliseconds aBound);

} // namespace MPL::Detail
