#include "Inside.h"
#include "Options.h"
#include "Outside.h"
#include "Posix.h"

#include <cstdio>

using namespace sandbox;

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (!arguments.empty() && arguments.front() == kInsideMark) {
        return RunInside(FromArguments(arguments));
    }
    const Options options = ParseOptions(arguments);
    switch (options.action) {
    case Options::Action::Help:
        std::fputs(HelpText().c_str(), stdout);
        return 0;
    case Options::Action::Version:
        std::puts("mpl-sandbox " MPL_VERSION);
        return 0;
    case Options::Action::Refuse:
        Say(options.problem);
        return kExitBadUsage;
    case Options::Action::Run:
        break;
    }
    return RunOutside(options);
}
