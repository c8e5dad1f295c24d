#include "JunitReport.h"

#include "../Posix.h"
#include "../Utf8.h"

#include <unistd.h>

#include <cstdio>
#include <utility>

namespace sandbox
{

namespace
{

const std::string kOutside = "(outside any case)";

// Programs print anything, XML holds text only: what is none becomes a question mark.
std::string EscapedByte(char aByte)
{
    switch (aByte) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\n':
    case '\t':
        return {aByte};
    default:
        return {aByte >= ' ' && aByte < 0x7f ? aByte : '?'};
    }
}

std::string Escaped(const std::string& aText)
{
    std::string escaped;
    for (size_t index = 0; index < aText.size();) {
        const size_t length = CharacterLength(aText, index);
        escaped += length > 1 ? aText.substr(index, length) : EscapedByte(aText[index]);
        index += length > 1 ? length : 1;
    }
    return escaped;
}

std::string Seconds(long long aMilliseconds)
{
    char text[32];
    std::snprintf(text, sizeof text, "%lld.%03lld", aMilliseconds / 1000, aMilliseconds % 1000);
    return text;
}

std::string Element(const char* aName, const std::string& aMessage, const std::string& aText)
{
    return std::string("<") + aName + " message=\"" + Escaped(aMessage) + "\">" + Escaped(aText) + "</" +
           aName + ">";
}

// The set-up or tear-down of a suite or of the program; nobody wants to hear of one that went well.
bool IsTold(const TestCase& aCase)
{
    return aCase.kind == TestCase::Kind::Case || aCase.result == CaseResult::Failed;
}

} // namespace

JunitReport::JunitReport(std::string aSuite, std::string aFile)
    : m_Suite(std::move(aSuite)), m_File(std::move(aFile))
{
}

bool JunitReport::Save(const Cases& aCases)
{
    Add(aCases);
    JunitReport whole = *this;
    whole.AddError(aCases,
                   {"The run was cut off in this case: nothing was reported after its begin",
                    "The run was cut off outside any case: nothing was reported after what stands here"});
    return whole.Write();
}

bool JunitReport::Finish(const Cases& aCases, const std::string& aHow, int aStatus)
{
    Add(aCases);
    const bool isExplained = aCases.areClosed && (aStatus == 0 || (aStatus == 1 && m_Failures > 0));
    if (RunningCase(aCases) != nullptr || !isExplained) {
        AddError(aCases, {"The program ended while this case was running: " + aHow,
                          "The program ended with " + aHow +
                              (aCases.areClosed ? "" : " before googletest closed its cases")});
    }
    Write();
    return aStatus != 0 || m_Errors == 0;
}

void JunitReport::Add(const Cases& aCases)
{
    for (; m_Told < aCases.all.size() && aCases.all[m_Told].result != CaseResult::Running; ++m_Told) {
        if (IsTold(aCases.all[m_Told])) {
            Add(aCases.all[m_Told]);
        }
    }
}

void JunitReport::Add(const TestCase& aCase)
{
    std::string body;
    if (aCase.result == CaseResult::Failed) {
        ++m_Failures;
        body = Element("failure", Headline(aCase.output), aCase.output);
    } else if (aCase.result == CaseResult::Skipped) {
        ++m_Skipped;
        body = Element("skipped", aCase.output, {});
    }
    if (aCase.kind == TestCase::Kind::Case) {
        Add(aCase.suite, aCase.name.empty() ? aCase.suite : aCase.name, aCase.milliseconds, body);
    } else if (aCase.suite.empty()) {
        Add(m_Suite, kOutside, 0, body);
    } else {
        Add(aCase.suite, "(set-up or tear-down)", 0, body);
    }
}

void JunitReport::AddError(const Cases& aCases, const Problem& aProblem)
{
    ++m_Errors;
    if (const TestCase* running = RunningCase(aCases); running != nullptr) {
        Add(running->suite, running->name, 0, Element("error", aProblem.inCase, running->output));
    } else {
        Add(m_Suite, kOutside, 0, Element("error", aProblem.outside, aCases.rest));
    }
}

void JunitReport::Add(const std::string& aClass, const std::string& aName, long long aMilliseconds,
                      const std::string& aBody)
{
    ++m_Count;
    m_Milliseconds += aMilliseconds;
    m_Cases += "    <testcase classname=\"" + Escaped(aClass) + "\" name=\"" + Escaped(aName) + "\" time=\"" +
               Seconds(aMilliseconds) + "\">" + aBody + "</testcase>\n";
}

std::string JunitReport::Text() const
{
    const std::string counts = " tests=\"" + std::to_string(m_Count) + "\" failures=\"" +
                               std::to_string(m_Failures) + "\" errors=\"" + std::to_string(m_Errors) +
                               "\" skipped=\"" + std::to_string(m_Skipped) + "\" time=\"" +
                               Seconds(m_Milliseconds) + "\">\n";
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" + counts + "  <testsuite name=\"" +
           Escaped(m_Suite) + "\"" + counts + m_Cases + "  </testsuite>\n</testsuites>\n";
}

bool JunitReport::Write() const
{
    const std::string next = m_File + ".new";
    return WriteTextFile(next, Text()) && rename(next.c_str(), m_File.c_str()) == 0;
}

} // namespace sandbox
