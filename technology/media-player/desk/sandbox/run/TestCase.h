/// What googletest says of a run.
#pragma once

#include <string>
#include <vector>

namespace sandbox
{

/// Nanoseconds on the sandbox's clock since the program's start; negative before it.
using Moment = long long;

struct Span {
    Moment begin = 0;
    Moment end = 0;
    bool isOpen = true; ///< no end was seen
};

enum class CaseResult { Passed, Failed, Skipped, Running };

struct TestCase {
    enum class Kind { Case, SetUp, TearDown };

    Kind kind = Kind::Case;
    std::string suite; ///< empty: the program's own set-up or tear-down, or what lies outside any
    std::string name;  ///< empty for set-up and tear-down
    CaseResult result = CaseResult::Running;
    long long milliseconds = 0; ///< as googletest counts them
    std::string output;         ///< the last part of what was printed meanwhile; not kept when it passed
    Span span;
};

struct Cases {
    std::vector<TestCase> all;
    bool areClosed = false; ///< googletest has told the result of all
    std::string rest;       ///< what was printed since the last one
};

/// The case that has begun and not ended; otherwise nullptr.
const TestCase* RunningCase(const Cases& aCases);

/// "Suite.Case", "Suite: set-up", "environment: tear-down"
std::string TitleOf(const TestCase& aCase);

/// Whether googletest reports a failure in what was printed.
bool TellsFailure(const std::string& aOutput);

/// What googletest says first about a failure: "file.cpp:12: Failure" and the two lines after it.
std::string Headline(const std::string& aOutput);

/// All of googletest's failures in what was printed, without the log lines between them.
std::string Failures(const std::string& aOutput);

} // namespace sandbox
