// What /proc/<pid>/status says of a process's signals.
#pragma once

#include <QFile>
#include <QString>

/// True when the signal's bit is set in a mask such as "SigIgn", "SigBlk", "SigCgt" or "ShdPnd".
inline bool HasSignalBit(int aPid, const QByteArray& aMask, int aSignal)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(aPid));
    if (!status.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(aMask + ':')) {
            return (line.mid(aMask.size() + 1).trimmed().toULongLong(nullptr, 16) >> (aSignal - 1) & 1U) != 0;
        }
    }
    return false;
}
