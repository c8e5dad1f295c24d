/// What a D-Bus object says of itself.
#pragma once

#include <QString>
#include <QStringList>

namespace MPL::Detail
{

struct Introspection {
    QStringList interfaces; // names of the interfaces that the object implements
    QStringList children;   // names of the objects directly below it
};

/// Reads an introspection text. Returns false, with `aIntrospection` unchanged, when the text is no such
/// text. Children whose name can't be part of an object path are left out.
bool ReadIntrospection(const QString& aText, Introspection& aIntrospection);

} // namespace MPL::Detail
