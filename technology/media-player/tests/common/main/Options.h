// The command line of a test program as its ready `main` reads it.
#pragma once

#include <string>

namespace MPL
{

struct TestMainOptions {
    bool systemBus = false;
    bool sandbox = false;
    // The user asks for the help text or for the list of the tests: none is to run.
    bool help = false;
    bool list = false;
    // The first option that is neither ours nor googletest's; empty when there is none.
    std::string unknown;
};

// Reads the options and removes ours from the arguments. googletest's stay, in their order, and so do the
// test program's own arguments: what is no option, and all that stands behind "--", which is removed.
TestMainOptions TakeTestMainOptions(int& argc, char** argv);

void PrintTestMainHelp(const char* aProgram);

} // namespace MPL
