// How the lines of Qt's log look in a test program on the ready `main`.
#pragma once

namespace MPL
{

// From now on each line begins with the seconds since the program's start and its level, in colour on a
// terminal. What the environment variable QT_MESSAGE_PATTERN says wins.
void SetLogPattern();

} // namespace MPL
