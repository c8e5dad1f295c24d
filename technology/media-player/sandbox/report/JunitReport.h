/// A JUnit report that is on disk, whole and true, at every moment of a run.
#pragma once

#include <string>

namespace MplReport
{

enum class CaseResult { Passed, Failed, Skipped };

/// Each change is put on disk with Save. While a case runs, the file on disk already says that the run was
/// cut off in it: that is what stands there when nobody is left to write anything else.
class JunitReport
{
public:
    /// `aSuite` names the run; `aFile` is replaced at each Save.
    JunitReport(std::string aSuite, std::string aFile);

    void BeginCase(const std::string& aFullName);
    void AddOutput(const std::string& aText);
    void EndCase(CaseResult aResult, long long aMilliseconds);

    /// The program has ended. `aHow` says how ("exit status 3"); `isGood` when that is how a good run ends. A
    /// case that still ran gets an error that says so; so does the run itself when it ended badly and no case
    /// has failed.
    void Finish(const std::string& aHow, bool isGood);

    bool IsCaseRunning() const { return !m_Running.empty(); }
    const std::string& RunningCase() const { return m_Running; }

    /// Writes the whole report beside the file and puts it in its place. False, with errno, when it can't.
    bool Save() const;

private:
    void Add(const std::string& aFullName, long long aMilliseconds, const std::string& aBody);
    std::string Text() const;

    std::string m_Suite;
    std::string m_File;
    std::string m_Cases; ///< the finished ones, as XML
    std::string m_Running;
    std::string m_Output; ///< of the running case, its last part when it is long
    int m_Count = 0;
    int m_Failures = 0;
    int m_Errors = 0;
    int m_Skipped = 0;
    long long m_Milliseconds = 0;
};

} // namespace MplReport
