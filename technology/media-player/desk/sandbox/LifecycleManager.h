/// The service lifecycle manager of the sandbox: a systemd user manager whose own bus is the sandbox's bus.
#pragma once

#include <string>

namespace sandbox
{

/// Starts the manager with the stack's units (/opt/talvex/etc/systemd) and none of the machine's, and the bus
/// as one of its services. Blocks until org.freedesktop.systemd1 has an owner on that bus, at most 30
/// seconds. False, with the reason, when it does not come up; then nothing listens at BusAddress() that
/// matters.
/// What it starts for the stack gets `aPreload` as LD_PRELOAD, unless that is empty; the manager itself and
/// the bus do not.
bool StartLifecycleManager(const std::string& aPreload, std::string& aReason);

} // namespace sandbox
