#include "Enter.h"
#include "Inside.h"
#include "Options.h"
#include "Outside.h"
#include "Posix.h"
#include "Running.h"
#include "RunningClock.h"
#include "timeline/Timeline.h"

#include <cstdio>

using namespace sandbox;

int main(int argc, char** argv)
{
    LeaveClock(argv);
    if (argc > 1 && argv[1] == kInsideMark) {
        return RunInside(FromArguments({argv + 2, argv + argc}));
    }
    if (argc > 1 && argv[1] == kClockMark) {
        TellClock();
    }
    const Options options = ParseOptions(argc, argv);
    switch (options.action) {
    case Options::Action::Help:
        std::fputs(kHelpText, stdout);
        return 0;
    case Options::Action::Version:
        std::puts("mpl-sandbox " MPL_VERSION);
        return 0;
    case Options::Action::Refuse:
        Say(options.problem);
        return kExitBadUsage;
    case Options::Action::List:
        return ListRunning();
    case Options::Action::Enter:
        return EnterSandbox(options.entered, options.command);
    case Options::Action::TimelineFrom:
        return WriteTimelineFrom(options.recording);
    case Options::Action::Run:
        break;
    }
    return RunOutside(options);
}
