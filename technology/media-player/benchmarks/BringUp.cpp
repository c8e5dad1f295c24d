// How long the mount service and the media manager take to come up, beyond the library's own pauses.
#include <MPL_TestEnvironment.h>

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <iostream>
#include <vector>

namespace
{

constexpr int kRounds = 5;
constexpr qint64 kPauseMs = 2000;

std::atomic<int> s_Pauses{0};

void CountPauses(QtMsgType, const QMessageLogContext&, const QString& aText)
{
    if (aText.contains("pausing for 2 seconds") || aText.endsWith("LaunchMediaManagerProcess -- finished.")) {
        ++s_Pauses;
    }
}

TEST(BringUp, OfManagerAndMountService)
{
    std::vector<qint64> beyond;
    qInstallMessageHandler(&CountPauses);
    for (int round = 0; round < kRounds; ++round) {
        s_Pauses = 0;
        QElapsedTimer timer;
        timer.start();
        ASSERT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(true));
        beyond.push_back(timer.elapsed() - s_Pauses * kPauseMs);
        ASSERT_TRUE(MPL_TestEnvironment::KillMediaManagerProcess());
    }
    qInstallMessageHandler(nullptr);
    std::sort(beyond.begin(), beyond.end());
    for (const qint64 milliseconds : beyond) {
        std::cout << milliseconds << " ms beyond the pauses\n";
    }
    std::cout << "median: " << beyond.at(kRounds / 2) << " ms\n";
}

} // namespace
