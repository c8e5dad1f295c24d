/// Reads what a googletest program prints, line by line, into a JunitReport.
#pragma once

#include "JunitReport.h"

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
    explicit GoogletestLog(JunitReport& aReport) : m_Report(aReport) {}

    /// Takes the next piece of output, which may end in the middle of a line. True when a case began or
    /// ended.
    bool Take(std::string_view aPiece);

private:
    bool TakeLine(const std::string& aLine);
    bool TakeResult(const std::string& aLine);

    JunitReport& m_Report;
    std::string m_Rest; ///< begin of a line whose end is still to come
};

} // namespace sandbox
