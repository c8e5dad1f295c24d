// Runs in the sandbox: starts the program that plays a schedule, and outlives it. When the schedule has it
// killed, another one hands the stack back, as the next test program would.
// Usage: mpl_chaos_keeper SEED STEP,STEP…
#include "Schedule.h"
#include "SeenProcesses.h"
#include "SmallDisk.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>

namespace
{

const QString kSubject = QStringLiteral("mpl_chaos_subject");

// Its end as a shell counts it.
int Play(const QByteArray& aSubject, const chaos::Schedule& aSchedule)
{
    const QByteArray seed = QByteArray::number(aSchedule.seed);
    const QByteArray numbers = chaos::NumberText(aSchedule).toLatin1();
    const pid_t child = fork();
    if (child == 0) {
        execl(aSubject.constData(), aSubject.constData(), seed.constData(), numbers.constData(), nullptr);
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

// Of the schedule the private bus and the hand-back.
chaos::Schedule HandBack(const chaos::Schedule& aSchedule)
{
    chaos::Schedule handBack = aSchedule;
    handBack.steps.clear();
    std::copy_if(aSchedule.steps.begin(), aSchedule.steps.end(), std::back_inserter(handBack.steps),
                 [](const chaos::Step& aStep) {
                     return aStep.action == chaos::Action::LaunchBus ||
                            aStep.action == chaos::Action::TearDownFixture ||
                            aStep.action == chaos::Action::Sterilize;
                 });
    return handBack;
}

// The killed program can't let the bus go on any more, and what it was about to start is about to run: nobody
// can end that before it has its own name.
void ClearUp()
{
    if (const int bus = chaos::TestBusDaemon(); bus > 0) {
        kill(bus, SIGCONT);
    }
    constexpr int kLooks = 1000;
    for (int look = 0; look < kLooks && !chaos::ProcessesOf(kSubject).isEmpty(); ++look) {
        constexpr useconds_t kPauseMicroseconds = 50000;
        usleep(kPauseMicroseconds);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("usage: mpl-sandbox -- mpl_chaos_keeper SEED STEP,STEP...\n", stderr);
        return 2;
    }
    const chaos::Schedule schedule = chaos::FromText(QLatin1String(argv[1]), QLatin1String(argv[2]));
    if (chaos::Has(schedule, chaos::Action::DiskIsFull) && !chaos::MakeSmallDisk()) {
        return 3;
    }
    const QByteArray subject =
        QByteArray(argv[0]).left(QByteArray(argv[0]).lastIndexOf('/') + 1) + kSubject.toLatin1();
    int status = Play(subject, schedule);
    if (status == 128 + SIGKILL && chaos::Has(schedule, chaos::Action::ProgramIsKilled)) {
        ClearUp();
        status = Play(subject, HandBack(schedule));
    }
    return status;
}
