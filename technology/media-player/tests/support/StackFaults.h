// Faults that a test gives the simulated stack's programs, and their withdrawal at the test's end.
#pragma once

#include <QString>

/// Makes the program, when it next starts, behave as `aFaults` (a JSON object) says. Fails the test when the
/// faults can't be written, which they can only inside a sandbox.
class StackFaults
{
public:
    StackFaults(const QString& aProgram, const QByteArray& aFaults);
    ~StackFaults();
    /// Writes the whole faults file as given, right or wrong.
    static void WriteFile(const QByteArray& aContent);
    /// Takes all faults away.
    static void RemoveFile();

    StackFaults(const StackFaults&) = delete;
    StackFaults& operator=(const StackFaults&) = delete;
};
