#include "Log.h"

#include <cerrno>
#include <cstdio>

namespace sim
{

void Log(const QString& text)
{
    std::fprintf(stderr, "%s: %s\n", program_invocation_short_name, qUtf8Printable(text));
}

} // namespace sim
