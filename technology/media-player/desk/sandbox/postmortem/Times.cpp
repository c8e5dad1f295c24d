#include "Times.h"

#include <cstdio>

namespace sandbox
{

std::string Seconds(Moment aMoment)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f s", static_cast<double>(aMoment) / 1e9);
    return text;
}

} // namespace sandbox
