/// What /proc/<pid>/status says of a process's signals, for tests that must know that a program has its
/// handlers in place, or that a signal has arrived and waits.
///
///     EXPECT_TRUE(WaitUntil("it ignores SIGTERM", [&] { return HasSignalBit(pid, "SigIgn", SIGTERM); }));
#pragma once

#include <QFile>
#include <QString>

/// True when the signal's bit is set in a mask such as "SigIgn", "SigBlk", "SigCgt" or "ShdPnd"; false too
/// without such a process.
inline bool HasSignalBit(int aPid, const QByteArray& aMask, int aSignal)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(aPid));
    status.open(QIODevice::ReadOnly);
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(QByteArray(aMask + ':'))) {
            return (line.mid(aMask.size() + 1).trimmed().toULongLong(nullptr, 16) >> (aSignal - 1) & 1U) != 0;
        }
    }
    return false;
}
