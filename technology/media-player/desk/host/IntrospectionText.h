/// What a D-Bus object says of itself.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace MPL::Detail
{

struct Introspection {
    QStringList interfaces; // names of the interfaces that the object implements
    QStringList children;   // names of the objects directly below it
};

/// Reads an introspection text; nothing when it is no such text. Children whose name can't be part of an
/// object path are left out.
std::optional<Introspection> ReadIntrospection(const QString& aText);

} // namespace MPL::Detail
