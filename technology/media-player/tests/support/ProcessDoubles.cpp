#include "ProcessDoubles.h"

#include "Journal.h"

#include <QProcess>

namespace MPL::Doubles
{

Starting& Starts()
{
    static Starting starting;
    return starting;
}

namespace
{

bool Start(const QString& how, const QString& program, const QStringList& arguments)
{
    Note((QStringList{how, program} + arguments).join(QLatin1Char(' ')));
    if (Starts().failing.contains(program)) {
        return false;
    }
    if (Starts().onStart) {
        Starts().onStart(program, arguments);
    }
    return true;
}

} // namespace

} // namespace MPL::Doubles

// These take the place of Qt's own functions.
bool QProcess::startDetached(const QString& program, const QStringList& arguments,
                             const QString& /*workingDirectory*/, qint64* /*pid*/)
{
    return MPL::Doubles::Start(QStringLiteral("start"), program, arguments);
}

bool QProcess::startDetached(const QString& program, const QStringList& arguments)
{
    return MPL::Doubles::Start(QStringLiteral("start"), program, arguments);
}

bool QProcess::startDetached(const QString& command)
{
    return MPL::Doubles::Start(QStringLiteral("start command"), command, {});
}
