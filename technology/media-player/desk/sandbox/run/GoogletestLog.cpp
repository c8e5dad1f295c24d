#include "GoogletestLog.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace sandbox
{

namespace
{

const std::string kRunMark = "[ RUN      ] ";
const std::string kCountMark = "[==========] ";
const std::string kSuiteMark = "[----------] ";
const std::string kGlobalMark = "Global test environment ";
const std::string kSuiteFrom = " from ";
const std::string kTimeMark = " (";
const std::string kTimeEnd = " ms)";
const std::pair<const char*, CaseResult> kResultMarks[] = {{"[       OK ] ", CaseResult::Passed},
                                                           {"[  FAILED  ] ", CaseResult::Failed},
                                                           {"[  SKIPPED ] ", CaseResult::Skipped}};

// "[==========] 7 tests from 2 test suites ran. (12 ms total)"; the other such line says "Running 7 tests".
bool ClosesCases(const std::string& aLine)
{
    const size_t mark = aLine.find(kCountMark);
    return mark != std::string::npos && aLine.find(" ran.", mark) != std::string::npos;
}

constexpr size_t kLongestOutput = 65536;
constexpr Moment kShortest = 1000000; // of a set-up or tear-down that is worth telling

// What "[----------] 2 tests from Suite/0, where TypeParam = int" begins; empty for what ends a suite and for
// the lines of the program's own set-up and tear-down.
std::string SuiteThatBegins(const std::string& aLine)
{
    const size_t from = aLine.find(kSuiteFrom);
    if (from == std::string::npos || aLine.find(" ms total)", from) != std::string::npos) {
        return {};
    }
    const size_t begin = from + kSuiteFrom.size();
    return aLine.substr(begin, aLine.find(',', begin) - begin);
}

// Where a case's result begins in a line such as "[  FAILED  ] Suite.Case, where GetParam() = 3 (12 ms)".
size_t FindResult(const std::string& aLine, const std::string& aBeginning)
{
    const size_t begin = aLine.rfind(aBeginning);
    const size_t end = begin + aBeginning.size();
    const size_t time = aLine.rfind(kTimeMark);
    if (begin == std::string::npos || time == std::string::npos || time < end ||
        aLine.compare(aLine.size() - kTimeEnd.size(), kTimeEnd.size(), kTimeEnd) != 0) {
        return std::string::npos;
    }
    // Another case's name may begin with this one's.
    return aLine[end] == ' ' || aLine[end] == ',' ? begin : std::string::npos;
}

// As the line's end tells. Anything can be printed, so what no case lasts counts as nothing.
long long MillisecondsIn(const std::string& aLine)
{
    constexpr long long kYear = 366LL * 24 * 3600 * 1000;
    const long long told =
        std::strtoll(aLine.c_str() + aLine.rfind(kTimeMark) + kTimeMark.size(), nullptr, 10);
    return told >= 0 && told < kYear ? told : 0;
}

} // namespace

bool GoogletestLog::Take(std::string_view aPiece, Moment aTime)
{
    bool hasChanged = false;
    m_Lines.Take(aPiece,
                 [&](const std::string& aLine) { hasChanged = TakeLine(aLine, aTime) || hasChanged; });
    return hasChanged;
}

// What had not ended is where the program died. After a case googletest goes to the next at once, or tears
// the suite down.
void GoogletestLog::Finish(Moment aTime)
{
    const bool wasTornDown = m_Between.kind == TestCase::Kind::TearDown && !m_Between.suite.empty();
    if (RunningCase(m_Cases) != nullptr) {
        return;
    }
    if (m_Cases.areClosed || !(m_Between.isSpan || wasTornDown)) {
        EndBetween(aTime);
        return;
    }
    AddBetween(aTime, TellsFailure(m_Cases.rest) ? CaseResult::Failed : CaseResult::Running);
    m_Cases.all.back().span.isOpen = true;
}

bool GoogletestLog::TakeLine(const std::string& aLine, Moment aTime)
{
    if (RunningCase(m_Cases) != nullptr) {
        if (TakeResult(aLine, aTime)) {
            return true;
        }
        AddOutput(aLine + "\n", aTime);
        return false;
    }
    const size_t mark = aLine.find(kRunMark);
    if (mark != std::string::npos) {
        BeginCase(aLine.substr(mark + kRunMark.size()), aTime);
        return true;
    }
    if (ClosesCases(aLine)) {
        EndBetween(aTime);
        m_Cases.areClosed = true;
    } else if (aLine.find(kSuiteMark) != std::string::npos) {
        TakeMark(aLine, aTime);
    } else {
        AddOutput(aLine + "\n", aTime);
    }
    return false;
}

bool GoogletestLog::TakeResult(const std::string& aLine, Moment aTime)
{
    for (const auto& [mark, result] : kResultMarks) {
        const size_t begin = FindResult(aLine, mark + TitleOf(*RunningCase(m_Cases)));
        if (begin != std::string::npos) {
            AddOutput(aLine.substr(0, begin), aTime);
            EndCase(result, MillisecondsIn(aLine), aTime);
            return true;
        }
    }
    return false;
}

// A line with dashes stands at the begin and the end of each suite and of the program's own set-up and
// tear-down.
void GoogletestLog::TakeMark(const std::string& aLine, Moment aTime)
{
    const bool endsSuite = aLine.find(" ms total)") != std::string::npos;
    m_Between.isSpan = m_Between.isSpan || endsSuite;
    EndBetween(aTime);
    const bool isGlobal = aLine.find(kGlobalMark) != std::string::npos;
    m_Between = {isGlobal && aLine.find("tear-down") != std::string::npos ? TestCase::Kind::TearDown
                                                                          : TestCase::Kind::SetUp,
                 SuiteThatBegins(aLine), aTime, !endsSuite};
}

void GoogletestLog::AddOutput(const std::string& aText, Moment aTime)
{
    const bool isInCase = RunningCase(m_Cases) != nullptr;
    std::string& output = isInCase ? m_Cases.all.back().output : m_Cases.rest;
    output += aText;
    if (output.size() > 2 * kLongestOutput) {
        if (!isInCase && TellsFailure(output)) {
            EndBetween(aTime);
        }
        output.erase(0, output.size() - std::min(output.size(), kLongestOutput));
    }
}

// "Suite.Case", where typed and parameterised suites have slashes on either side of the dot.
void GoogletestLog::BeginCase(const std::string& aFullName, Moment aTime)
{
    EndBetween(aTime);
    const size_t dot = aFullName.find('.');
    TestCase begun;
    begun.suite = aFullName.substr(0, dot);
    begun.name = dot == std::string::npos ? "" : aFullName.substr(dot + 1);
    begun.span.begin = aTime;
    m_Cases.all.push_back(begun);
    m_Cases.rest.clear();
    m_Cases.areClosed = false; // --gtest_repeat begins again
}

void GoogletestLog::EndCase(CaseResult aResult, long long aMilliseconds, Moment aTime)
{
    TestCase& ended = m_Cases.all.back();
    ended.result = aResult;
    ended.milliseconds = aMilliseconds;
    ended.span.end = aTime;
    ended.span.isOpen = false;
    if (aResult == CaseResult::Passed) {
        ended.output.clear();
    }
    m_Between = {TestCase::Kind::TearDown, ended.suite, aTime, false};
}

// What fails after the cases are closed was told before: a runner says once more that the suite failed.
void GoogletestLog::EndBetween(Moment aTime)
{
    const bool hasFailed = !m_Cases.areClosed && TellsFailure(m_Cases.rest);
    if (hasFailed || (m_Between.isSpan && aTime - m_Between.begin >= kShortest)) {
        AddBetween(aTime, hasFailed ? CaseResult::Failed : CaseResult::Passed);
    }
    m_Between.begin = aTime;
}

void GoogletestLog::AddBetween(Moment aTime, CaseResult aResult)
{
    TestCase between;
    between.kind = m_Between.kind;
    between.suite = m_Between.suite;
    between.result = aResult;
    between.span = {m_Between.begin, aTime, false};
    if (aResult == CaseResult::Failed) {
        between.output.swap(m_Cases.rest);
    }
    m_Cases.all.push_back(between);
}

} // namespace sandbox
