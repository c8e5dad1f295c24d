// One line to standard error, beginning with the program's name.
#pragma once

#include <QString>

namespace sim
{

void Log(const QString& aText);

} // namespace sim
