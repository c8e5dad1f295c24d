#include "Log.h"

#include <QDebug>

#include <cerrno>

namespace sim
{
namespace
{

void NameProgramInLines()
{
    qSetMessagePattern(QLatin1String(program_invocation_short_name) + QStringLiteral(": %{message}"));
}

} // namespace

Q_CONSTRUCTOR_FUNCTION(NameProgramInLines)

// No warnings: a test program that makes Qt's warnings fatal does so for the programs that it starts, too.
void Log(const QString& aText)
{
    qInfo().noquote() << aText;
}

} // namespace sim
