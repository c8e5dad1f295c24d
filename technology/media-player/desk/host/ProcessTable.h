/// The running processes by the name of their executable file.
///
/// A program is known by the base name of its executable file, whole. One that the kernel started under
/// another name (a script, a symbolic link, a program under an emulator) is known by that name instead, and
/// one whose file can't be seen by the name in its arguments.
#pragma once

#include <QByteArray>
#include <QVector>

#include <sys/types.h>

#include <limits>

namespace MPL::Detail
{

/// The live processes of that name, `aMost` of them at most; the calling program is left out. First come
/// those that the kernel knows by that name, then those that have renamed themselves. Empty, with one log
/// line, when the process table can't be read.
QVector<pid_t> FindProcesses(const QByteArray& aName, int aMost = std::numeric_limits<int>::max());

/// True when the process is alive and has this name now.
bool IsProcess(pid_t aPid, const QByteArray& aName);

} // namespace MPL::Detail
