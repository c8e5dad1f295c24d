/// @file
/// One level of a browse hierarchy, as the Browser interface reports it. The browsing service gives the
/// fields beyond the name their meaning.
#pragma once

#include <QDBusArgument>
#include <QMetaType>
#include <QString>
#include <QVector>

namespace MPL
{

/// One level of a browse hierarchy.
struct BrowserHierarchy {
    BrowserHierarchy() = default;
    /// A level of this name and nothing else.
    BrowserHierarchy(const QString& aName) : name(aName) {}

    /// Registers the type and its vector for D-Bus, and their names without the namespace.
    static void RegisterMetaType();

    /// @{
    /// The fields in their order on the bus.
    QString name;
    QString label;
    quint32 index = 0xFFFFFFFF;
    quint32 count = 0;
    /// @}
};

} // namespace MPL

/// @{
/// On the bus `(ssuu)`. Anything else is read as a default value.
QDBusArgument& operator<<(QDBusArgument& aArgument, const MPL::BrowserHierarchy& aHierarchy);
const QDBusArgument& operator>>(const QDBusArgument& aArgument, MPL::BrowserHierarchy& aHierarchy);
/// @}

Q_DECLARE_METATYPE(MPL::BrowserHierarchy)
Q_DECLARE_METATYPE(QVector<MPL::BrowserHierarchy>)
