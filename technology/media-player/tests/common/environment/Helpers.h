// How the environment controller's source files find and start the stack's programs.
#pragma once

#include "Constants.h"
#include <MPL_ProcessInfo.h>

#include <QProcess>
#include <QString>

namespace MPL::Detail
{

inline bool IsProcessRunning(const QString& aName)
{
    return MPL_ProcessInfo::GetPidFromName(aName.toUtf8().constData()) != -1;
}

inline QString MakeBinaryPath(const QString& aProcess)
{
    return MPL_TEST_BINARY_DIRECTORY + QLatin1Char('/') + aProcess;
}

// Starts a command without arguments, split at its blanks: see "Kept on purpose" in docs/architecture.md.
inline bool StartCommandDetached(const QString& aCommand)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    return QProcess::startDetached(aCommand);
    QT_WARNING_POP
}

} // namespace MPL::Detail
