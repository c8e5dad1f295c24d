#include "OutputReader.h"

#include "GoogletestLog.h"
#include "Lines.h"
#include "LogLevel.h"

#include <cstdlib>
#include <map>
#include <set>

namespace sandbox
{

namespace
{

std::set<std::string> NamesIn(const Run& aRun)
{
    std::set<std::string> names = {"mpl-sandbox"};
    for (const ProcessLife& process : aRun.processes) {
        names.insert({process.name, process.service});
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
        line.process = line.level != LogLevel::Output ? m_Program : ProcessOf(aLine, aTime);
        m_Run.log.push_back(line);
    }

private:
    // Services name themselves at the beginning of a line: "name: text", or "name[process id]: text".
    std::string ProcessOf(const std::string& aLine, Moment aTime) const
    {
        const size_t end = aLine.find_first_of(":[");
        if (end != std::string::npos && aLine[end] == '[') {
            const ProcessLife* process = FindProcess(m_Run, std::atoi(aLine.c_str() + end + 1), aTime);
            if (process != nullptr) {
                return process->name;
            }
        }
        const std::string name = aLine.substr(0, end);
        return !name.empty() && m_Names.count(name) != 0 ? name : std::string();
    }

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
        streams[fact.fields[0]].Take(fact.fields[1], [&](const std::string& aLine) { log.Add(aLine, last); });
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
