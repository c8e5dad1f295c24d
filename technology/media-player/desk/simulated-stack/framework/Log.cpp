#include "Log.h"

#include <cerrno>
#include <cstdio>

namespace sim
{

void Log(const QString& aText)
{
    std::fprintf(stderr, "%s: %s\n", program_invocation_short_name, qUtf8Printable(aText));
}

} // namespace sim
