#include "Options.h"

#include <cstdio>
#include <string_view>

namespace MPL
{
namespace
{

bool AsksForHelp(std::string_view aArgument)
{
    for (const std::string_view word : {"--help", "-h", "-?", "/?", "--gtest_help"}) {
        if (aArgument == word) {
            return true;
        }
    }
    return false;
}

} // namespace

TestMainOptions TakeTestMainOptions(int& argc, char** argv)
{
    TestMainOptions options;
    int kept = argc > 0 ? 1 : 0;
    for (int i = kept; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--system-bus") {
            options.systemBus = true;
            continue;
        }
        options.help = options.help || AsksForHelp(argument);
        argv[kept++] = argv[i];
    }
    argc = kept;
    argv[argc] = nullptr;
    return options;
}

void PrintTestMainHelp(const char* aProgram)
{
    std::printf("Usage: %s [options]\n"
                "\n"
                "The tests run against a private test bus, which is started when it is not running.\n"
                "  --system-bus\n"
                "      Run them against the system bus instead.\n"
                "\n"
                "All other options are googletest's:\n"
                "\n",
                aProgram);
    std::fflush(stdout);
}

} // namespace MPL
