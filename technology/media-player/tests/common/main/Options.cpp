#include "Options.h"

#include <cstdio>
#include <string_view>

namespace MPL
{
namespace
{

bool BeginsWith(std::string_view aText, std::string_view aBegin)
{
    return aText.substr(0, aBegin.size()) == aBegin;
}

bool AsksForHelp(std::string_view aArgument)
{
    for (const std::string_view word : {"--help", "-h", "-?", "/?", "--gtest_help"}) {
        if (aArgument == word) {
            return true;
        }
    }
    return false;
}

// What googletest and googlemock take or complain about themselves.
bool IsGoogletests(std::string_view aArgument)
{
    return BeginsWith(aArgument, "--gtest") || BeginsWith(aArgument, "--gmock");
}

void Read(std::string_view aArgument, TestMainOptions& aOptions)
{
    if (AsksForHelp(aArgument)) {
        aOptions.help = true;
    } else if (BeginsWith(aArgument, "--gtest_list_tests")) {
        aOptions.list = true;
    } else if (BeginsWith(aArgument, "-") && !IsGoogletests(aArgument) && aOptions.unknown.empty()) {
        aOptions.unknown = aArgument;
    }
}

} // namespace

TestMainOptions TakeTestMainOptions(int& argc, char** argv)
{
    TestMainOptions options;
    int kept = argc > 0 ? 1 : 0;
    bool areOptionsOver = false;
    for (int i = kept; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (!areOptionsOver && (argument == "--system-bus" || argument == "--sandbox" || argument == "--")) {
            options.systemBus = options.systemBus || argument == "--system-bus";
            options.sandbox = options.sandbox || argument == "--sandbox";
            areOptionsOver = argument == "--";
            continue;
        }
        if (!areOptionsOver) {
            Read(argument, options);
        }
        argv[kept++] = argv[i];
    }
    argc = kept;
    argv[argc] = nullptr;
    return options;
}

void PrintTestMainHelp(const char* aProgram)
{
    std::printf("Usage: %s [options] [-- arguments of the test program's own]\n"
                "\n"
                "The tests run against a private test bus, which is started when it is not running.\n"
                "  --system-bus\n"
                "      Run them against the system bus instead.\n"
                "  --sandbox\n"
                "      Run this program in mpl-sandbox, with the other options as they are.\n"
                "\n"
                "All other options are googletest's:\n"
                "\n",
                aProgram);
    std::fflush(stdout);
}

} // namespace MPL
