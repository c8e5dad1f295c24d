/// Lines on standard error. The program's name stands before each of them, also before those that Qt writes.
#pragma once

#include <QString>

namespace sim
{

void Log(const QString& aText);

} // namespace sim
