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

bool Start(const QString& aHow, const QString& aProgram, const QStringList& aArguments)
{
    Note((QStringList{aHow, aProgram} + aArguments).join(' '));
    if (Starts().failing.contains(aProgram)) {
        return false;
    }
    if (Starts().onStart) {
        Starts().onStart(aProgram, aArguments);
    }
    return true;
}

} // namespace

} // namespace MPL::Doubles

// These take the place of Qt's own functions.
bool QProcess::startDetached(const QString& aProgram, const QStringList& aArguments,
                             const QString& /*workingDirectory*/, qint64* /*pid*/)
{
    return MPL::Doubles::Start("start", aProgram, aArguments);
}

bool QProcess::startDetached(const QString& aProgram, const QStringList& aArguments)
{
    return MPL::Doubles::Start("start", aProgram, aArguments);
}

bool QProcess::startDetached(const QString& aCommand)
{
    return MPL::Doubles::Start("start command", aCommand, {});
}
