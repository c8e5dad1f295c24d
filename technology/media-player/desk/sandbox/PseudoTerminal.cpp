#include "PseudoTerminal.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>

namespace sandbox
{

Pipe MakePseudoTerminal(int aTerminal)
{
    Pipe ends;
    ends.read = UniqueFd(open("/dev/ptmx", O_RDWR | O_NOCTTY | O_CLOEXEC));
    char name[64];
    if (grantpt(ends.read.Get()) != 0 || unlockpt(ends.read.Get()) != 0 ||
        ptsname_r(ends.read.Get(), name, sizeof name) != 0) {
        return {};
    }
    ends.write = UniqueFd(open(name, O_RDWR | O_NOCTTY | O_CLOEXEC));
    termios settings = {};
    tcgetattr(aTerminal, &settings);
    settings.c_oflag &= ~static_cast<tcflag_t>(OPOST);
    tcsetattr(ends.write.Get(), TCSANOW, &settings);
    TakeSize(aTerminal, ends.read.Get());
    return ends;
}

void TakeSize(int aTerminal, int aPseudoTerminal)
{
    winsize size = {};
    if (ioctl(aTerminal, TIOCGWINSZ, &size) == 0) {
        ioctl(aPseudoTerminal, TIOCSWINSZ, &size);
    }
}

} // namespace sandbox
