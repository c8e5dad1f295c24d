#include "Fact.h"

#include "../Posix.h"

#include <algorithm>
#include <charconv>
#include <ctime>

namespace sandbox
{

namespace
{

constexpr long long kNanosecondsPerSecond = 1000000000;

void AppendEscaped(const std::string& aField, std::string& aLine)
{
    for (const char byte : aField) {
        switch (byte) {
        case '\t':
            aLine += "\\t";
            break;
        case '\n':
            aLine += "\\n";
            break;
        case '\\':
            aLine += "\\\\";
            break;
        default:
            aLine += byte;
        }
    }
}

std::string Unescaped(std::string_view aText)
{
    std::string field;
    for (size_t i = 0; i < aText.size(); ++i) {
        if (aText[i] != '\\' || i + 1 == aText.size()) {
            field += aText[i];
            continue;
        }
        ++i;
        field += aText[i] == 't' ? '\t' : aText[i] == 'n' ? '\n' : aText[i];
    }
    return field;
}

// Up to the separator, which goes as well.
std::string_view TakeUntil(char aSeparator, std::string_view& aText)
{
    const std::string_view piece = aText.substr(0, aText.find(aSeparator));
    aText.remove_prefix(std::min(piece.size() + 1, aText.size()));
    return piece;
}

bool Parse(std::string_view aLine, Fact& aFact)
{
    const std::string_view time = TakeUntil('\t', aLine);
    const auto [end, error] = std::from_chars(time.data(), time.data() + time.size(), aFact.time);
    aFact.kind = TakeUntil('\t', aLine);
    while (!aLine.empty()) {
        aFact.fields.push_back(Unescaped(TakeUntil('\t', aLine)));
    }
    return error == std::errc() && end == time.data() + time.size() && !aFact.kind.empty();
}

} // namespace

long long MachineNow()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return now.tv_sec * kNanosecondsPerSecond + now.tv_nsec;
}

void FactLog::Write(const Fact& aFact) const
{
    if (m_Fd >= 0) {
        WriteAll(m_Fd, ToLine(aFact));
    }
}

// Each field ends with its separator, so that an empty one at the end is one.
std::string ToLine(const Fact& aFact)
{
    std::string line = std::to_string(aFact.time) + "\t" + aFact.kind + "\t";
    for (const std::string& field : aFact.fields) {
        AppendEscaped(field, line);
        line += '\t';
    }
    line += '\n';
    return line;
}

std::vector<Fact> ParseFacts(std::string_view aText)
{
    std::vector<Fact> facts;
    while (aText.find('\n') != std::string_view::npos) {
        Fact fact;
        if (Parse(TakeUntil('\n', aText), fact)) {
            facts.push_back(std::move(fact));
        }
    }
    std::stable_sort(facts.begin(), facts.end(),
                     [](const Fact& aLeft, const Fact& aRight) { return aLeft.time < aRight.time; });
    return facts;
}

} // namespace sandbox
