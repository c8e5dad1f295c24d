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
    StackFaults(const StackFaults&) = delete;
    StackFaults& operator=(const StackFaults&) = delete;
};
