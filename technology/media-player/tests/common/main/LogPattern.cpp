#include "LogPattern.h"

#include <QString>

#include <unistd.h>

namespace MPL
{
namespace
{

bool HasColours(int aFile)
{
    return isatty(aFile) != 0 && qgetenv("TERM") != "dumb" && !qEnvironmentVariableIsSet("NO_COLOR");
}

// One level's part of the pattern, in the width of the longest level.
QString Level(const char* aLevel, const char* aColour)
{
    return QStringLiteral("%{if-%1}%2%3%{endif}")
        .arg(QLatin1String(aLevel), QLatin1String(aColour), QString::fromLatin1(aLevel).leftJustified(8));
}

} // namespace

void SetLogPattern()
{
    const bool colours = HasColours(STDERR_FILENO);
    const auto level = [colours](const char* aLevel, const char* aColour) {
        return Level(aLevel, colours ? aColour : "");
    };
    qSetMessagePattern(QStringLiteral("%{time process} ") + level("debug", "\033[2m") + level("info", "") +
                       level("warning", "\033[33m") + level("critical", "\033[31m") +
                       level("fatal", "\033[1;31m") +
                       QStringLiteral(" %{if-category}%{category}: %{endif}%{message}") +
                       QLatin1String(colours ? "\033[0m" : ""));
}

} // namespace MPL
