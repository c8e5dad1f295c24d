/// What the stack's interfaces offer, read from their descriptions, which every program carries.
#pragma once

#include <QStringList>

namespace sim
{

/// The names of an interface's methods; none for an interface that the stack does not have.
QStringList MethodsOf(const QString& aInterfaceName);

} // namespace sim
