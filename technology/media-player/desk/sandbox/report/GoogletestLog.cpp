#include "GoogletestLog.h"

#include <cstdlib>
#include <utility>

namespace sandbox
{

namespace
{

const std::string kRunMark = "[ RUN      ] ";
const std::string kCountMark = "[==========] ";
const std::string kSuiteMark = "[----------] ";
const std::string kSuiteFrom = " from ";
const std::string kTimeMark = " (";
const std::string kTimeEnd = " ms)";
const std::pair<const char*, CaseResult> kResultMarks[] = {{"[       OK ] ", CaseResult::Passed},
                                                           {"[  FAILED  ] ", CaseResult::Failed},
                                                           {"[  SKIPPED ] ", CaseResult::Skipped}};

// googletest colours its marks when it is told to.
std::string WithoutColours(const std::string& aLine)
{
    std::string plain;
    for (size_t index = 0; index < aLine.size(); ++index) {
        if (aLine.compare(index, 2, "\033[") == 0) {
            const size_t end = aLine.find_first_of("mK", index);
            index = end == std::string::npos ? aLine.size() : end;
        } else {
            plain += aLine[index];
        }
    }
    return plain;
}

// "[==========] 7 tests from 2 test suites ran. (12 ms total)"; the other such line says "Running 7 tests".
bool ClosesCases(const std::string& aLine)
{
    const size_t mark = aLine.find(kCountMark);
    return mark != std::string::npos && aLine.find(" ran.", mark) != std::string::npos;
}

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

} // namespace

bool GoogletestLog::Take(std::string_view aPiece)
{
    bool hasChanged = false;
    m_Rest += aPiece;
    size_t begin = 0;
    for (size_t end = m_Rest.find('\n'); end != std::string::npos; end = m_Rest.find('\n', begin)) {
        hasChanged = TakeLine(WithoutColours(m_Rest.substr(begin, end - begin))) || hasChanged;
        begin = end + 1;
    }
    m_Rest.erase(0, begin);
    return hasChanged;
}

bool GoogletestLog::TakeLine(const std::string& aLine)
{
    if (m_Report.IsCaseRunning()) {
        if (TakeResult(aLine)) {
            return true;
        }
        m_Report.AddOutput(aLine + "\n");
        return false;
    }
    const size_t mark = aLine.find(kRunMark);
    if (mark != std::string::npos) {
        m_Report.BeginCase(aLine.substr(mark + kRunMark.size()));
        return true;
    }
    if (ClosesCases(aLine)) {
        m_Report.CloseCases();
    } else if (aLine.find(kSuiteMark) != std::string::npos) {
        m_Report.BeginSuite(SuiteThatBegins(aLine));
    } else {
        m_Report.AddOutput(aLine + "\n");
    }
    return false;
}

bool GoogletestLog::TakeResult(const std::string& aLine)
{
    for (const auto& [mark, result] : kResultMarks) {
        const size_t begin = FindResult(aLine, mark + m_Report.RunningCase());
        if (begin != std::string::npos) {
            m_Report.AddOutput(aLine.substr(0, begin));
            m_Report.EndCase(result, std::strtoll(aLine.c_str() + aLine.rfind(kTimeMark) + 2, nullptr, 10));
            return true;
        }
    }
    return false;
}

} // namespace sandbox
