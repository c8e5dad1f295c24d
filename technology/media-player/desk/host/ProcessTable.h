/// The running processes by the name of their executable file.
#pragma once

#include <QByteArray>
#include <QVector>

#include <sys/types.h>

namespace MPL::Detail
{

/// Name and aliveness of one process. A program is known by the base name of its executable file, whole. One
/// that the kernel started under another name (a script, a symbolic link, a program under an emulator) is
/// known by that name instead, and one whose file can't be seen by the name in its arguments.
struct ProcessEntry {
    pid_t pid = -1;
    QByteArray name;
    bool alive = false; // neither a zombie nor dead
};

/// All live processes of that name, in the order of the table; the calling program is left out.
/// Empty, with one log line, when the process table can't be read.
QVector<pid_t> FindProcesses(const QByteArray& aName);

/// True when the process is alive and has this name now.
bool IsProcess(pid_t aPid, const QByteArray& aName);

} // namespace MPL::Detail
