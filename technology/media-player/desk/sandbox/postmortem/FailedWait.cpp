#include "FailedWait.h"

#include <algorithm>
#include <cstdlib>
#include <map>

namespace sandbox
{

namespace
{

constexpr int kPauses = 10; // of the library's wait for a name
constexpr Moment kPause = 2000000000;
const std::string kManagerName = "com.talvex.DBus.MediaPlayer.MediaManagerService"; // has one object

bool Has(const std::string& aText, const char* aPiece)
{
    return aText.find(aPiece) != std::string::npos;
}

// What stands in quotes behind `aMark`.
std::string QuotedBehind(const std::string& aText, const char* aMark)
{
    const size_t mark = aText.find(aMark);
    const size_t begin = mark == std::string::npos ? mark : aText.find('"', mark);
    return begin == std::string::npos ? std::string()
                                      : aText.substr(begin + 1, aText.find('"', begin + 1) - begin - 1);
}

// The word behind `aMark`.
std::string WordBehind(const std::string& aText, const char* aMark)
{
    const size_t mark = aText.find(aMark);
    const size_t begin =
        mark == std::string::npos ? mark : aText.find_first_not_of(' ', mark + std::string(aMark).size());
    return begin == std::string::npos ? std::string() : aText.substr(begin, aText.find(' ', begin) - begin);
}

class WaitReader
{
public:
    void Take(const LogLine& aLine)
    {
        const std::string& text = aLine.text;
        const bool isPause = Has(text, "not running, pausing for 2 seconds..");
        m_HasSaidMore = m_HasSaidMore || (!isPause && aLine.level != LogLevel::Output);
        if (isPause) {
            TakePause(QuotedBehind(text, "-- Service"), aLine.time);
        } else if (Has(text, "WaitForServiceObjects -- Time:")) {
            TakeLookup(QuotedBehind(text, "Service:"), aLine.time);
        } else if (Has(text, "WaitForServiceObjects timed out. Last found ")) {
            Add(FailedWait::For::Object, m_Lookup.about, m_Lookup.span.begin, aLine.time,
                WordBehind(text, "Last found "));
        } else if (Has(text, "WaitForServiceObjects -- Found ")) {
            TakeFound(QuotedBehind(text, "objects for"), WordBehind(text, "Found "), aLine.time);
        } else if (Has(text, "Failed to connect to newly started daemon.") ||
                   Has(text, "Failed to launch dbus-daemon process.")) {
            Add(FailedWait::For::PrivateBus, "dbus-daemon", m_DaemonStart, aLine.time);
        } else if (Has(text, "Launching DBus Daemon on MPL Test Port")) {
            m_DaemonStart = aLine.time;
        } else {
            TakeLaunch(text, aLine.time);
        }
    }

    std::vector<FailedWait> Waits() const { return m_Waits; }

private:
    // Pauses of one wait follow each other closely, or with nothing else in between.
    void TakePause(const std::string& aName, Moment aTime)
    {
        Pauses& pauses = m_Pauses[aName];
        const bool isOfAnother = m_HasSaidMore && aTime - pauses.last > kPause * 3 / 2;
        m_HasSaidMore = false;
        if (pauses.count == 0 || isOfAnother) {
            pauses = {0, aTime, aTime};
        }
        pauses.last = aTime;
        if (++pauses.count == kPauses) {
            Add(FailedWait::For::Name, aName, pauses.first, aTime + kPause);
            pauses.count = 0;
        }
    }

    void TakeLookup(const std::string& aName, Moment aTime)
    {
        if (m_Lookup.about != aName) {
            m_Lookup.about = aName;
            m_Lookup.span.begin = aTime;
        }
    }

    void TakeFound(const std::string& aName, const std::string& aCount, Moment aTime)
    {
        m_Lookup = {};
        if (aName == kManagerName && std::atoi(aCount.c_str()) > 1) {
            Add(FailedWait::For::OneObject, aName, aTime, aTime, aCount);
        }
    }

    void TakeLaunch(const std::string& aText, Moment aTime)
    {
        const std::pair<const char*, const char*> kPrograms[] = {
            {"LaunchMediaManagerProcess() failed.", "media_manager"},
            {"Launch MME Process() failed.", "media_mme"},
            {"LaunchTestMediaSourceProcess() failed.", "test_media_source"}};
        for (const auto& [text, program] : kPrograms) {
            if (Has(aText, text)) {
                Add(FailedWait::For::Program, program, aTime, aTime);
            }
        }
        if (const std::string source = WordBehind(aText, "LaunchMediaSourceProcess() failed with ");
            !source.empty()) {
            Add(FailedWait::For::Program, source, aTime, aTime);
        }
        const std::string unit = WordBehind(aText, "SlmStartService -- can't start ");
        if (!unit.empty() && !Has(aText, "no systemd on the system bus")) {
            Add(FailedWait::For::Program, unit, aTime, aTime);
        }
    }

    void Add(FailedWait::For aWhat, const std::string& aAbout, Moment aBegin, Moment aEnd,
             const std::string& aFound = {})
    {
        m_Waits.push_back({aWhat, aAbout, std::atoi(aFound.c_str()), {aBegin, aEnd, false}});
        m_Lookup = {};
    }

    struct Pauses {
        int count = 0;
        Moment first = 0;
        Moment last = 0;
    };

    std::map<std::string, Pauses> m_Pauses;
    bool m_HasSaidMore = false; // since the last pause
    FailedWait m_Lookup;
    Moment m_DaemonStart = 0;
    std::vector<FailedWait> m_Waits;
};

// The two streams' times may differ a little, so the middle counts.
bool WasExpected(const Run& aRun, const FailedWait& aWait)
{
    if (aRun.result == RunResult::Passed) {
        return true;
    }
    const Moment middle = (aWait.span.begin + aWait.span.end) / 2;
    return std::any_of(aRun.cases.all.begin(), aRun.cases.all.end(), [&](const TestCase& aCase) {
        return aCase.kind == TestCase::Kind::Case && aCase.result == CaseResult::Passed &&
               aCase.span.begin <= middle && middle <= aCase.span.end;
    });
}

} // namespace

std::vector<FailedWait> FailedWaits(const Run& aRun)
{
    WaitReader reader;
    for (const LogLine& line : aRun.log) {
        reader.Take(line);
    }
    std::vector<FailedWait> waits = reader.Waits();
    waits.erase(std::remove_if(waits.begin(), waits.end(),
                               [&](const FailedWait& aWait) { return WasExpected(aRun, aWait); }),
                waits.end());
    return waits;
}

} // namespace sandbox
