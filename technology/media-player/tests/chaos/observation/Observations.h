/// What a run was seen to do, as plain data: what each call returned, how long it took by the program's own
/// clock, what was logged meanwhile, and what the bus, the process table and the files showed before and
/// after.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace chaos
{

struct SeenProcess {
    QString name;
    int pid = 0;
    bool byLifecycleManager = false; ///< started by the real one, not by the library
};

/// A moment.
struct Moment {
    QVector<SeenProcess> processes; ///< of the stack
    bool testBusAnswers = false;
    QStringList names;     ///< the stack's bus names that are owned, on the bus that the library uses
    QString database;      ///< "absent", "whole", "locked" or "damaged"
    QString storedSource;  ///< the active source in it
    QString configuration; ///< the test configuration: "absent", "half", or the user name of its login
    int files = -1;        ///< in the environment directory; -1 when there is none

    bool Runs(const QString& aProcess) const;
    bool Owns(const QString& aService) const { return names.contains(aService); }
};

struct LogLine {
    QString level; ///< "debug", "warning", "critical", …
    QString text;
};

/// Stands behind the name of a disturbed program that somebody else than the library has started.
inline const QString kAnew = QStringLiteral(" anew");

struct CallSeen {
    int number = 0; ///< of the step
    bool wasTrue = false;
    QString evidence;    ///< what else tells whether it did what it says, such as the copied file
    QStringList changed; ///< out-arguments that have another value than before
    qint64 tookMs = 0;
    QVector<LogLine> log;
    QStringList failures;  ///< of the running test
    QStringList disturbed; ///< programs, "the bus" or "the database", when something befell them meanwhile
    Moment before;
    Moment after;
};

/// A whole run.
struct Observations {
    QVector<CallSeen> calls;
    int begun = 0;           ///< number of the last call that began
    bool isComplete = false; ///< the program came to the end of the schedule
    bool wasHung = false;    ///< it was ended from outside as it took too long
    int exitStatus = 0;
    QString errors; ///< the last of standard error
    double speed = 1;

    /// The sandbox could not be made, so there was no run; the errors say why.
    bool WasNoRun() const;
};

} // namespace chaos
