/// The calls that ask the stack through proxies.
#pragma once

#include "Calls.h"

#include <QHash>

namespace chaos
{

/// What makes each of them, by the action's number.
QHash<int, std::function<Call(const Step& aStep)>> Queries();

} // namespace chaos
