#include "ProcessDoubles.h"

#include "Journal.h"

#include <QProcess>

namespace MPL::Doubles
{

Starting& Starts()
{
    static Starting s_Starting;
    return s_Starting;
}

namespace
{

bool Start(const QString& aHow, const QString& aProgram, const QStringList& aRguments)
{
    Note((QStringList{aHow, aProgram} + aRguments).join(QLatin1Char(' ')));
    if (Starts().failing.contains(aProgram)) {
        return false;
    }
    if (Starts().onStart) {
        Starts().onStart(aProgram, aRguments);
    }
    return true;
}

} // namespace

} // namespace MPL::Doubles

// These take the place of Qt's own functions.
bool QProcess::startDetached(const QString& aProgram, const QStringList& aRguments,
                             const QString& /*workingDirectory*/, qint64* /*pid*/)
{
    return MPL::Doubles::Start(QStringLiteral("start"), aProgram, aRguments);
}

bool QProcess::startDetached(const QString& aProgram, const QStringList& aRguments)
{
    return MPL::Doubles::Start(QStringLiteral("start"), aProgram, aRguments);
}

bool QProcess::startDetached(const QString& aCommand)
{
    return MPL::Doubles::Start(QStringLiteral("start command"), aCommand, {});
}
