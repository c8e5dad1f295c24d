// The process of a name among many others: ours, when nothing has the name and when the last process has it,
// and pidof.
#include <MPL_ProcessInfo.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <vector>

namespace
{

constexpr const char* kName = "benchmark_a_long_name";

// A process that does nothing, and ends with the benchmark however that ends.
pid_t Start(const QByteArray& aPath)
{
    const pid_t pid = fork();
    if (pid == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        execl(aPath.constData(), aPath.constData(), "3600", nullptr);
        _exit(EXIT_FAILURE);
    }
    return pid;
}

// As many others as are asked for, and after them the one that is looked for.
class Population
{
public:
    ~Population() { Resize(0); }

    void Resize(std::size_t aOthers)
    {
        End(m_Found);
        m_Found.clear();
        while (m_Others.size() < aOthers) {
            m_Others.push_back(Start("/bin/sleep"));
        }
        const std::vector<pid_t> tooMany(m_Others.begin() + static_cast<std::ptrdiff_t>(aOthers),
                                         m_Others.end());
        End(tooMany);
        m_Others.resize(aOthers);
        if (aOthers > 0) {
            m_Found.push_back(Start(Path().toLocal8Bit()));
            WaitForName();
        }
    }

private:
    QString Path() const
    {
        QString path = m_Folder.filePath(QLatin1String(kName));
        QFile::copy(QStringLiteral("/bin/sleep"), path);
        return path;
    }

    // It has its name only once it runs its program.
    static void WaitForName()
    {
        for (int tries = 0; tries < 500 && MPL_ProcessInfo::GetPidFromName(kName) == -1; ++tries) {
            usleep(10000);
        }
    }

    static void End(const std::vector<pid_t>& aPids)
    {
        for (const pid_t pid : aPids) {
            kill(pid, SIGKILL);
            waitpid(pid, nullptr, 0);
        }
    }

    QTemporaryDir m_Folder;
    std::vector<pid_t> m_Others;
    std::vector<pid_t> m_Found;
};

void Populate(const benchmark::State& aState)
{
    static Population s_Population;
    static std::int64_t s_Size = 0;
    if (s_Size != aState.range(0)) {
        s_Size = aState.range(0);
        s_Population.Resize(static_cast<std::size_t>(s_Size));
    }
}

void LookUp(benchmark::State& aState, const char* aName, bool aFound)
{
    Populate(aState);
    int pid = -1;
    while (aState.KeepRunning()) {
        pid = MPL_ProcessInfo::GetPidFromName(aName);
    }
    if ((pid != -1) != aFound) {
        aState.SkipWithError("the wrong process was found, or none");
    }
}

void Absent(benchmark::State& aState)
{
    LookUp(aState, "benchmark_no_such_name", false);
}

void Last(benchmark::State& aState)
{
    LookUp(aState, kName, true);
}

void Pidof(benchmark::State& aState)
{
    Populate(aState);
    while (aState.KeepRunning()) {
        QProcess::execute(QStringLiteral("pidof"), {QStringLiteral("benchmark_no_such_name")});
    }
}

void Sizes(benchmark::internal::Benchmark* aBenchmark)
{
    aBenchmark->Unit(benchmark::kMillisecond)->UseRealTime();
    for (const int processes : {100, 500, 1000, 2000, 5000}) {
        aBenchmark->Arg(processes);
    }
}

BENCHMARK(Absent)->Name("Process by name/ours, none")->Apply(Sizes);
BENCHMARK(Last)->Name("Process by name/ours, the last")->Apply(Sizes);
BENCHMARK(Pidof)->Name("Process by name/pidof")->Apply(Sizes);

} // namespace
