/// @file
/// Discovery on a D-Bus connection: who owns a name, which objects of a service implement an interface.
/// Declared here, implemented by the platform.
#pragma once

#include <QString>
#include <QStringList>

class QDBusConnection;

namespace MPL
{

/// True when `aServiceName` is owned on the connection's bus now. Blocks for one round trip to the bus
/// daemon; false when the connection is down or the name is not valid.
bool IsServiceRunning(const QString& aServiceName, const QDBusConnection& aConnection);

/// Fills `aPaths` with the object paths of `aServiceName` that implement `aInterfaceName`.
/// Returns true when the service could be introspected, even if no object implements the interface. Blocks
/// until the service has answered; the platform bounds the time.
bool FindServiceObjectPathsByInterface(const QString& aServiceName, const QString& aInterfaceName,
                                       const QDBusConnection& aConnection, QStringList& aPaths);

} // namespace MPL
