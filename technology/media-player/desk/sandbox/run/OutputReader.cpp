#include "OutputReader.h"

#include "GoogletestLog.h"
#include "Lines.h"

#include <cctype>
#include <map>
#include <set>
#include <utility>

namespace sandbox
{

namespace
{

const std::pair<const char*, LogLevel> kLevels[] = {{"debug ", LogLevel::Debug},
                                                    {"info ", LogLevel::Info},
                                                    {"warning ", LogLevel::Warning},
                                                    {"critical ", LogLevel::Critical},
                                                    {"fatal ", LogLevel::Fatal}};

bool IsDigit(char aCharacter)
{
    return std::isdigit(static_cast<unsigned char>(aCharacter)) != 0;
}

// Where the ready main's seconds end, as in "     1.215 debug    …"; 0 when the line does not begin so.
size_t SecondsEnd(const std::string& aLine)
{
    size_t index = std::min(aLine.find_first_not_of(' '), aLine.size());
    const size_t begin = index;
    while (index < aLine.size() && (IsDigit(aLine[index]) || aLine[index] == '.')) {
        ++index;
    }
    const bool isTime = index > begin + 4 && aLine[index - 4] == '.';
    return isTime && index < aLine.size() && aLine[index] == ' ' ? index + 1 : 0;
}

LogLevel LevelOf(const std::string& aLine)
{
    const size_t begin = SecondsEnd(aLine);
    for (const auto& [word, level] : kLevels) {
        if (begin > 0 && aLine.compare(begin, std::string(word).size(), word) == 0) {
            return level;
        }
    }
    return LogLevel::Output;
}

// Services name themselves at the beginning of a line.
std::string ProcessOf(const std::string& aLine, const std::set<std::string>& aNames)
{
    const std::string name = aLine.substr(0, aLine.find_first_of(":["));
    return aNames.count(name) != 0 ? name : std::string();
}

std::set<std::string> NamesIn(const Run& aRun)
{
    std::set<std::string> names = {"mpl-sandbox"};
    for (const ProcessLife& process : aRun.processes) {
        names.insert(process.name);
    }
    return names;
}

class Log
{
public:
    explicit Log(Run& aRun) : m_Run(aRun), m_Names(NamesIn(aRun))
    {
        const ProcessLife* program = FindProcess(aRun, aRun.program, aRun.end);
        m_Program = program != nullptr ? program->name : "";
    }

    void Add(const std::string& aLine, Moment aTime)
    {
        LogLine line;
        line.time = aTime;
        line.text = aLine;
        line.level = LevelOf(aLine);
        line.process = line.level != LogLevel::Output ? m_Program : ProcessOf(aLine, m_Names);
        m_Run.log.push_back(line);
    }

private:
    Run& m_Run;
    std::set<std::string> m_Names;
    std::string m_Program;
};

} // namespace

void ReadOutput(const std::vector<Fact>& aFacts, const RunClock& aClock, Run& aRun)
{
    Log log(aRun);
    GoogletestLog googletest(aRun.cases);
    std::map<std::string, Lines> streams;
    Moment last = 0;
    for (const Fact& fact : aFacts) {
        last = aClock.At(fact.time);
        if (fact.kind != fact::kOutput || fact.fields.size() < 2) {
            continue;
        }
        streams[fact.fields[0]].Take(fact.fields[1],
                                     [&](const std::string& aLine) { log.Add(aLine, last); });
        if (fact.fields[0] == "out") {
            googletest.Take(fact.fields[1], last);
        }
    }
    for (const auto& [name, lines] : streams) {
        if (!lines.Rest().empty()) {
            log.Add(lines.Rest(), last);
        }
    }
    googletest.Finish(last);
}

} // namespace sandbox
