// How the environment controller's source files find and start the stack's programs.
#pragma once

#include "Constants.h"

#include <MPL_ProcessInfo.h>

#include <QProcess>
#include <QString>

namespace MPL::Detail
{

inline bool IsProcessRunning(const QString& name)
{
    return MPL_ProcessInfo::GetPidFromName(name.toUtf8().constData()) != -1;
}

inline QString MakeBinaryPath(const QString& process)
{
    return MPL_TEST_BINARY_DIRECTORY + QLatin1Char('/') + process;
}

// Starts a command without arguments, split at its blanks. Qt 5.15 prefers a program with a list; the stack's
// launchers are defined by this form.
inline bool StartCommandDetached(const QString& command)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    return QProcess::startDetached(command);
    QT_WARNING_POP
}

} // namespace MPL::Detail
