/// A JUnit report that is on disk, whole and true, at every moment of a run.
#pragma once

#include <string>

namespace sandbox
{

enum class CaseResult { Passed, Failed, Skipped };

/// Each change is put on disk with Save. Until the run is finished, the file on disk already says that it was
/// cut off, in the running case or outside any: that is what stands there when nobody is left to write
/// anything else.
class JunitReport
{
public:
    /// `aSuite` names the run; `aFile` is replaced at each Save.
    JunitReport(std::string aSuite, std::string aFile);

    /// The cases that follow are of this suite; empty: of none.
    void BeginSuite(const std::string& aName);
    void BeginCase(const std::string& aFullName);
    /// What is printed between the cases counts as well: the set-up of a suite or of the program fails there.
    void AddOutput(const std::string& aText);
    void EndCase(CaseResult aResult, long long aMilliseconds);

    /// googletest has told the result of all cases.
    void CloseCases();

    /// The program has ended with `aStatus` (above 128: a signal); `aHow` says it in words. A case that still
    /// ran gets an error that says so. So does the run itself when the cases were not closed or do not
    /// explain the status. True when the run is in order or its status tells that it is not; false when only
    /// the report does.
    bool Finish(const std::string& aHow, int aStatus);

    bool IsCaseRunning() const { return !m_Running.empty(); }
    const std::string& RunningCase() const { return m_Running; }

    /// Writes the whole report beside the file and puts it in its place. False, with errno, when it can't.
    bool Save() const;

private:
    void Add(const std::string& aFullName, long long aMilliseconds, const std::string& aBody);
    void Add(const std::string& aClass, const std::string& aName, long long aMilliseconds,
             const std::string& aBody);
    void AddError(const std::string& aInCase, const std::string& aOutside);
    void AddFailureBetweenCases();
    std::string Text() const;

    std::string m_Suite;
    std::string m_File;
    std::string m_Cases; ///< the finished ones, as XML
    std::string m_Running;
    std::string m_RunningSuite;
    std::string m_Output; ///< of the running case or since the last one, its last part when it is long
    bool m_AreCasesClosed = false;
    bool m_IsFinished = false;
    int m_Count = 0;
    int m_Failures = 0;
    int m_Errors = 0;
    int m_Skipped = 0;
    long long m_Milliseconds = 0;
};

} // namespace sandbox
