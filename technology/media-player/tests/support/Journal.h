/// What happened in a test, in order: log lines, sleeps, signals sent, programs started, states saved.
///
/// All doubles write into this one list, so a test states a whole sequence in one comparison, and a failure
/// shows the difference line by line:
///
///     EXPECT_EQ(Text(Notes()), Text({"kill media_mme TERM", "sleep 1000 ms", "debug: gone"}));
#pragma once

#include <QString>
#include <QStringList>

#include <string>

namespace MPL::Doubles
{

/// Adds one line; from any thread.
void Note(const QString& aLine);

/// All lines so far that begin with `aPrefix`.
QStringList Notes(const QString& aPrefix = {});

void ClearNotes();

/// One line each, in a form that googletest prints readably.
std::string Text(const QStringList& aLines);

} // namespace MPL::Doubles
