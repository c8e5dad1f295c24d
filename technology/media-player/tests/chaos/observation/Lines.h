/// Observations on their way out of the sandbox: a line when a call begins, one when it has ended, one at the
/// end. What a program that crashed or hung has written until then is kept.
#pragma once

#include "Observations.h"

#include <QByteArray>

namespace chaos
{

QByteArray BeginLine(int aNumber);
QByteArray EndedLine(const CallSeen& aCall);
QByteArray CompleteLine();

/// Adds what the line says; takes no notice of a line that is cut off, or of others'.
void Take(const QByteArray& aLine, Observations& aObservations);

} // namespace chaos
