// The main of the benchmark programs. Unless told otherwise it runs every benchmark several times, in an
// order that mixes ours with its peers, so that what else the machine does falls on both.
#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    std::string defaults[] = {"--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=9"};
    std::vector<char*> arguments{argv[0], defaults[0].data(), defaults[1].data()};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
