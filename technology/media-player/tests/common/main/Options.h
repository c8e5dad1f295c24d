// The command line of a test program as its ready `main` reads it.
#pragma once

namespace MPL
{

struct TestMainOptions {
    bool systemBus = false;
    // The user asks for the help text: no test is to run.
    bool help = false;
};

// Reads the options and removes ours from the arguments; all others stay, in their order, for googletest and
// for the test program.
TestMainOptions TakeTestMainOptions(int& argc, char** argv);

void PrintTestMainHelp(const char* aProgram);

} // namespace MPL
