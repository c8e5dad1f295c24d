// How the environment controller's source files find and start the stack's programs.
#pragma once

#include "Constants.h"
#include "QtVersions.h"
#include <MPL_ProcessInfo.h>

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

} // namespace MPL::Detail
