/// The limits of a walk through a service's objects, which keep a service that hangs or lies from holding up
/// a test.
#pragma once

#include <QStringList>

#include <chrono>

class QDBusConnection;

namespace MPL::Detail
{

struct DiscoveryLimits {
    std::chrono::milliseconds time{5000}; // for the whole walk
    int depth = 16;                       // levels below the root
    int objects = 4096;                   // looked at in all
};

/// What MPL::FindServiceObjectPathsByInterface does, within the given limits. A walk that reaches a limit
/// says so in one log line and yields what it has found.
bool FindObjects(const QString& aService, const QString& aInterface, const QDBusConnection& aConnection,
                 const DiscoveryLimits& aLimits, QStringList& aPaths);

} // namespace MPL::Detail
