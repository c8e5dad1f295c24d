/// The stack's programs as a chaos run sees them: what goes wrong with them, and who must be gone in the end.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace chaos
{

struct Program {
    QString process;
    QString service; ///< empty for one without a bus name
};

/// All programs that the library or the lifecycle manager starts.
const QVector<Program>& Programs();

/// The bus name of a process; empty when it has none.
QString ServiceOf(const QString& aProcess);

/// The process that owns a bus name.
QString ProcessOf(const QString& aService);

/// The programs that a clean stop of the whole stack ends.
QStringList StackProcesses();

/// The programs behind the services that the lifecycle manager is asked to start.
QStringList LifecycleProcesses();

} // namespace chaos
