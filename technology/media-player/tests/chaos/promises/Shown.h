/// Whether what a call reported as done is what the bus, the process table and the files show after it. Each
/// function returns what is not so; an empty text when all is.
#pragma once

#include "CallView.h"

namespace chaos
{

/// Somebody owns the bus name, or each of the names.
QString Owned(const CallView& aCall, const QString& aService);
QString AllOwned(const CallView& aCall, const QStringList& aServices);
/// The process still runs, or somebody owns its bus name.
QString Up(const CallView& aCall, const QString& aProcess);
/// None of the processes runs, or none that the lifecycle manager has started; each of them runs.
QString Gone(const CallView& aCall, const QStringList& aProcesses);
QString Stopped(const CallView& aCall, const QStringList& aProcesses);
QString Running(const CallView& aCall, const QStringList& aProcesses);
/// No source is stored as the active one.
QString Reset(const CallView& aCall);
/// The environment directory has so many files; -1: there is no such directory.
QString FilesAre(const CallView& aCall, int aNumber);
/// The environment directory is there and empty, unless a program that runs may have written to it.
QString IsEmptied(const CallView& aCall);
/// The first of the two that is not empty.
QString Either(const QString& aOne, const QString& aOther);

} // namespace chaos
