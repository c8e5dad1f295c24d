/// Reads what a googletest program prints, line by line.
#pragma once

#include "Lines.h"
#include "TestCase.h"

#include <string>
#include <string_view>

namespace sandbox
{

/// Case results are recognised wherever they stand in a line, as a case or a service it started may print
/// text without an end of line before. While a case runs, another program's RUN lines are a part of its
/// output.
class GoogletestLog
{
public:
    explicit GoogletestLog(Cases& aCases) : m_Cases(aCases) {}

    /// Takes the next piece of output, which may end in the middle of a line, and came at that time. True
    /// when a case began or ended.
    bool Take(std::string_view aPiece, Moment aTime = 0);

    /// The program has ended.
    void Finish(Moment aTime = 0);

private:
    /// What lies between the cases.
    struct Between {
        TestCase::Kind kind = TestCase::Kind::SetUp;
        std::string suite; ///< empty: none
        Moment begin = 0;
        bool isSpan = false; ///< it is a set-up or a tear-down, whatever is printed there
    };

    bool TakeLine(const std::string& aLine, Moment aTime);
    bool TakeResult(const std::string& aLine, Moment aTime);
    void TakeMark(const std::string& aLine, Moment aTime);
    void AddOutput(const std::string& aText, Moment aTime);
    void BeginCase(const std::string& aFullName, Moment aTime);
    void EndCase(CaseResult aResult, long long aMilliseconds, Moment aTime);
    void EndBetween(Moment aTime);
    void AddBetween(Moment aTime, CaseResult aResult);

    Cases& m_Cases;
    Lines m_Lines;
    Between m_Between;
};

} // namespace sandbox
