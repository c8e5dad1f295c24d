/// A JUnit report that is on disk, whole and true, at every moment of a run.
#pragma once

#include "../run/TestCase.h"

#include <string>

namespace sandbox
{

/// Each change is put on disk with Save. Until the run is finished, the file on disk already says that it was
/// cut off, in the running case or outside any: that is what stands there when nobody is left to write
/// anything else.
class JunitReport
{
public:
    /// `aSuite` names the run; `aFile` is replaced at each Save.
    JunitReport(std::string aSuite, std::string aFile);

    /// Writes the whole report beside the file and puts it in its place. False, with errno, when it can't.
    bool Save(const Cases& aCases);

    /// The program has ended with `aStatus` (above 128: a signal); `aHow` says it in words. A case that still
    /// ran gets an error that says so. So does the run itself when the cases were not closed or do not
    /// explain the status. True when the run is in order or its status tells that it is not; false when only
    /// the report does.
    bool Finish(const Cases& aCases, const std::string& aHow, int aStatus);

private:
    /// What is wrong with a run, in the case that was running or outside any.
    struct Problem {
        std::string inCase;
        std::string outside;
    };

    void Add(const Cases& aCases);
    void Add(const TestCase& aCase);
    void Add(const std::string& aClass, const std::string& aName, long long aMilliseconds,
             const std::string& aBody);
    void AddError(const Cases& aCases, const Problem& aProblem);
    std::string Text() const;
    bool Write() const;

    std::string m_Suite;
    std::string m_File;
    std::string m_Cases; ///< the finished ones, as XML
    size_t m_Told = 0;   ///< how many of the run's those are
    int m_Count = 0;
    int m_Failures = 0;
    int m_Errors = 0;
    int m_Skipped = 0;
    long long m_Milliseconds = 0;
};

} // namespace sandbox
