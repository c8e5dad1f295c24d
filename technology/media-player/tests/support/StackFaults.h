/// Faults of the simulated stack's programs: how a test makes them late, wrong, silent or stubborn. They
/// concern the programs that start while the object lives.
///
///     const StackFaults faults(R"({"media_manager": {"start_delay_ms": 3000}})");
///     EXPECT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(true));
///
/// The guide of the simulated stack lists what a program can be told.
#pragma once

#include <QByteArray>

class StackFaults
{
public:
    /// Writes the faults of the programs, a JSON object. Fails the test when they can't be written, which
    /// they can only inside a sandbox.
    explicit StackFaults(const QByteArray& aPrograms);
    /// Takes all faults away.
    ~StackFaults();
    /// Writes the whole faults file as given, right or wrong.
    static void WriteFile(const QByteArray& aContent);

    StackFaults(const StackFaults&) = delete;
    StackFaults& operator=(const StackFaults&) = delete;
};
