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

bool Start(const QString& aProgram, const QStringList& aArguments)
{
    Note((QStringList{"start", aProgram} + aArguments).join(' '));
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

// These take the place of Qt's own functions. Those that Qt 6 has no more are named as the linker knows them.
bool StartProgram(const QString& aProgram,
                  const QStringList& aArguments) asm("_ZN8QProcess13startDetachedERK7QStringRK11QStringList");
bool StartCommand(const QString& aCommand) asm("_ZN8QProcess13startDetachedERK7QString");

bool QProcess::startDetached(const QString& aProgram, const QStringList& aArguments,
                             const QString& /*workingDirectory*/, qint64* /*pid*/)
{
    return MPL::Doubles::Start(aProgram, aArguments);
}

bool StartProgram(const QString& aProgram, const QStringList& aArguments)
{
    return MPL::Doubles::Start(aProgram, aArguments);
}

bool StartCommand(const QString& aCommand)
{
    return MPL::Doubles::Start(aCommand, {});
}
