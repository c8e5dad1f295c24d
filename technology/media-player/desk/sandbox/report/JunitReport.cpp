#include "JunitReport.h"

#include "../Posix.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace sandbox
{

namespace
{

constexpr size_t kLongestOutput = 65536;
const std::string kFailureMark = ": Failure\n";
const std::string kOutside = "(outside any case)";

unsigned char ByteAt(const std::string& aText, size_t aIndex)
{
    return aIndex < aText.size() ? static_cast<unsigned char>(aText[aIndex]) : 0;
}

// What its first byte says; 0 when no character begins with it.
size_t AnnouncedLength(unsigned char aFirst)
{
    if (aFirst < 0x80) {
        return 1;
    }
    if (aFirst < 0xc2 || aFirst > 0xf4) {
        return 0;
    }
    return aFirst < 0xe0 ? 2 : aFirst < 0xf0 ? 3 : 4;
}

// The length of the UTF-8 character at `aIndex`, 0 when there is none.
size_t CharacterLength(const std::string& aText, size_t aIndex)
{
    const size_t length = AnnouncedLength(ByteAt(aText, aIndex));
    for (size_t next = 1; next < length; ++next) {
        if ((ByteAt(aText, aIndex + next) & 0xc0) != 0x80) {
            return 0;
        }
    }
    return length;
}

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

// What googletest says first about a failure, without what the program printed before: "file.cpp:12: Failure"
// and the two lines after it.
std::string Headline(const std::string& aOutput)
{
    const size_t mark = aOutput.find(kFailureMark);
    if (mark == std::string::npos) {
        return "failed";
    }
    const size_t begin = aOutput.rfind('\n', mark) + 1;
    size_t end = mark;
    for (int line = 0; line < 3 && end != std::string::npos; ++line) {
        end = aOutput.find('\n', end + 1);
    }
    return aOutput.substr(begin, end - begin);
}

} // namespace

JunitReport::JunitReport(std::string aSuite, std::string aFile)
    : m_Suite(std::move(aSuite)), m_File(std::move(aFile))
{
}

void JunitReport::BeginSuite(const std::string& aName)
{
    AddFailureBetweenCases();
    m_RunningSuite = aName;
}

void JunitReport::BeginCase(const std::string& aFullName)
{
    AddFailureBetweenCases();
    m_Running = aFullName;
    m_Output.clear();
    m_AreCasesClosed = false; // --gtest_repeat begins again
}

void JunitReport::AddOutput(const std::string& aText)
{
    m_Output += aText;
    if (m_Output.size() > 2 * kLongestOutput) {
        AddFailureBetweenCases();
        m_Output.erase(0, m_Output.size() - std::min(m_Output.size(), kLongestOutput));
    }
}

void JunitReport::EndCase(CaseResult aResult, long long aMilliseconds)
{
    std::string body;
    if (aResult == CaseResult::Failed) {
        ++m_Failures;
        body = Element("failure", Headline(m_Output), m_Output);
    } else if (aResult == CaseResult::Skipped) {
        ++m_Skipped;
        body = Element("skipped", m_Output, {});
    }
    Add(std::exchange(m_Running, {}), aMilliseconds, body);
    m_Output.clear();
}

void JunitReport::CloseCases()
{
    AddFailureBetweenCases();
    m_AreCasesClosed = true;
}

bool JunitReport::Finish(const std::string& aHow, int aStatus)
{
    m_IsFinished = true;
    AddFailureBetweenCases();
    const bool isExplained = m_AreCasesClosed && (aStatus == 0 || (aStatus == 1 && m_Failures > 0));
    if (IsCaseRunning() || !isExplained) {
        AddError("The program ended while this case was running: " + aHow,
                 "The program ended with " + aHow +
                     (m_AreCasesClosed ? "" : " before googletest closed its cases"));
    }
    return aStatus != 0 || m_Errors == 0;
}

void JunitReport::AddError(const std::string& aInCase, const std::string& aOutside)
{
    ++m_Errors;
    if (IsCaseRunning()) {
        Add(std::exchange(m_Running, {}), 0, Element("error", aInCase, m_Output));
    } else {
        Add(m_Suite, kOutside, 0, Element("error", aOutside, m_Output));
    }
}

// What fails after the cases are closed was told before: a runner says once more that the suite failed.
void JunitReport::AddFailureBetweenCases()
{
    if (!IsCaseRunning() && !m_AreCasesClosed && m_Output.find(kFailureMark) != std::string::npos) {
        ++m_Failures;
        const bool isSuites = !m_RunningSuite.empty();
        Add(isSuites ? m_RunningSuite : m_Suite, isSuites ? "(set-up or tear-down)" : kOutside, 0,
            Element("failure", Headline(m_Output), m_Output));
        m_Output.clear();
    }
}

// "Suite.Case", where typed and parameterised suites have slashes on either side of the dot.
void JunitReport::Add(const std::string& aFullName, long long aMilliseconds, const std::string& aBody)
{
    const size_t dot = aFullName.find('.');
    Add(aFullName.substr(0, dot), dot == std::string::npos ? aFullName : aFullName.substr(dot + 1),
        aMilliseconds, aBody);
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

bool JunitReport::Save() const
{
    JunitReport whole = *this;
    if (!m_IsFinished) {
        whole.AddError("The run was cut off in this case: nothing was reported after its begin",
                       "The run was cut off outside any case: nothing was reported after what stands here");
    }
    const std::string next = m_File + ".new";
    return WriteTextFile(next, whole.Text()) && rename(next.c_str(), m_File.c_str()) == 0;
}

} // namespace sandbox
