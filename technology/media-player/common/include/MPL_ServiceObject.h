/// @file
/// Names one D-Bus object of one service: a media source, the active source.
#pragma once

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDebug>
#include <QList>
#include <QMetaType>
#include <QString>

namespace MPL
{

/// A service and the path of one of its objects.
struct ServiceObject {
    /// The object path as text.
    QString GetPathString() const;

    /// Registers the type and its list for D-Bus, and their names without the namespace.
    static void RegisterMetaType();

    /// @{
    /// Well-known bus name that owns the object.
    QString serviceName;
    QDBusObjectPath objectPath;
    /// @}
};

} // namespace MPL

/// @{
/// On the bus `(ss)`: the path travels as a plain string. Reading accepts `(so)` too; a text that is no valid
/// object path is read as an empty one.
QDBusArgument& operator<<(QDBusArgument& aArgument, const MPL::ServiceObject& aObject);
const QDBusArgument& operator>>(const QDBusArgument& aArgument, MPL::ServiceObject& aObject);
/// @}

/// Prints the quoted service name, `<>` and the quoted path.
QDebug operator<<(QDebug aDebug, const MPL::ServiceObject& aObject);

Q_DECLARE_METATYPE(MPL::ServiceObject)
Q_DECLARE_METATYPE(QList<MPL::ServiceObject>)
