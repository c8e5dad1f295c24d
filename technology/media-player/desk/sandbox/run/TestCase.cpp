#include "TestCase.h"

#include "LogLevel.h"

#include <sstream>

namespace sandbox
{

namespace
{

const std::string kFailureMark = ": Failure\n";

// Where the line that ends at `aMark` begins.
size_t LineBegin(const std::string& aText, size_t aMark)
{
    const size_t before = aText.rfind('\n', aMark);
    return before == std::string::npos ? 0 : before + 1;
}

// Each goes on to what is printed next: an empty line, a line of the log or another failure.
bool EndsFailure(const std::string& aLine)
{
    return aLine.empty() || LevelOf(aLine) != LogLevel::Output || TellsFailure(aLine + "\n");
}

} // namespace

const TestCase* RunningCase(const Cases& aCases)
{
    const TestCase* last = aCases.all.empty() ? nullptr : &aCases.all.back();
    const bool runs =
        last != nullptr && last->kind == TestCase::Kind::Case && last->result == CaseResult::Running;
    return runs ? last : nullptr;
}

std::string TitleOf(const TestCase& aCase)
{
    if (aCase.kind == TestCase::Kind::Case) {
        return aCase.name.empty() ? aCase.suite : aCase.suite + "." + aCase.name;
    }
    return (aCase.suite.empty() ? "environment" : aCase.suite) +
           (aCase.kind == TestCase::Kind::SetUp ? ": set-up" : ": tear-down");
}

bool TellsFailure(const std::string& aOutput)
{
    return aOutput.find(kFailureMark) != std::string::npos;
}

std::string Headline(const std::string& aOutput)
{
    const size_t mark = aOutput.find(kFailureMark);
    if (mark == std::string::npos) {
        return "failed";
    }
    const size_t begin = LineBegin(aOutput, mark);
    size_t end = mark;
    for (int line = 0; line < 3 && end != std::string::npos; ++line) {
        end = aOutput.find('\n', end + 1);
    }
    return aOutput.substr(begin, end - begin);
}

std::string Failures(const std::string& aOutput)
{
    std::string failures;
    constexpr int kLongest = 40; // lines
    for (size_t mark = aOutput.find(kFailureMark); mark != std::string::npos;
         mark = aOutput.find(kFailureMark, mark + 1)) {
        std::istringstream lines(aOutput.substr(LineBegin(aOutput, mark)));
        std::string line;
        for (int count = 0;
             count < kLongest && std::getline(lines, line) && (count == 0 || !EndsFailure(line)); ++count) {
            failures += line + "\n";
        }
    }
    return failures;
}

} // namespace sandbox
