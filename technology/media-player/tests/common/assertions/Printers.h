// A value without the type around it, for the library's own files.
#pragma once

#include <QVariant>

#include <ostream>

namespace MPL::Detail
{

void PrintBareValue(const QVariant& aValue, std::ostream* aStream);

} // namespace MPL::Detail
