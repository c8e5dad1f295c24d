#include "TraceEvents.h"

#include <algorithm>
#include <cstdio>

namespace sandbox
{

namespace
{

struct LaneWords {
    const char* title;
    const char* category;
};

constexpr LaneWords kLanes[] = {{"Test cases", "case"}, {"Pauses", "pause"}, {"Processes", "process"},
                                {"Bus names", "name"},  {"Calls", "call"},   {"Signals", "signal"},
                                {"Log", "log"}};

const LaneWords& WordsOf(Lane aLane)
{
    return kLanes[static_cast<size_t>(aLane) - 1];
}

std::string Number(Lane aLane)
{
    return std::to_string(static_cast<int>(aLane));
}

std::string Microseconds(Moment aTime)
{
    char text[32];
    std::snprintf(text, sizeof text, "%lld.%03lld", aTime / 1000, aTime % 1000);
    return text;
}

JsonObject Metadata(const char* aWhat, Lane aLane)
{
    return JsonObject().Text("ph", "M").Text("name", aWhat).Raw("pid", Number(aLane));
}

void Append(const JsonObject& aEvent, std::string& aEvents)
{
    aEvents += (aEvents.empty() ? "\n" : ",\n") + aEvent.Json();
}

std::string LaneMetadata(Lane aLane)
{
    std::string events;
    Append(
        Metadata("process_name", aLane).Raw("args", JsonObject().Text("name", WordsOf(aLane).title).Json()),
        events);
    Append(Metadata("process_sort_index", aLane)
               .Raw("args", JsonObject().Raw("sort_index", Number(aLane)).Json()),
           events);
    return events;
}

} // namespace

void TraceEvents::AddSpan(Lane aLane, const std::string& aRow, const std::string& aName, const Span& aSpan,
                          const JsonObject& aArguments)
{
    const Moment begin = std::max<Moment>(aSpan.begin, 0);
    const Moment end = std::max(aSpan.end, begin);
    const size_t row = RowFor(aLane, aRow, {begin, end, false});
    Add(aLane, row,
        JsonObject()
            .Text("ph", "X")
            .Raw("name", Quoted(aName))
            .Raw("ts", Microseconds(begin))
            .Raw("dur", Microseconds(end - begin)),
        aArguments);
}

void TraceEvents::AddPoint(Lane aLane, const std::string& aRow, const std::string& aName, Moment aTime,
                           const JsonObject& aArguments)
{
    const Moment time = std::max<Moment>(aTime, 0);
    const size_t row = RowFor(aLane, aRow, {time, time, false});
    Add(aLane, row,
        JsonObject().Text("ph", "i").Text("s", "t").Raw("name", Quoted(aName)).Raw("ts", Microseconds(time)),
        aArguments);
}

void TraceEvents::Add(Lane aLane, size_t aRow, JsonObject aEvent, const JsonObject& aArguments)
{
    aEvent.Text("cat", WordsOf(aLane).category)
        .Raw("pid", Number(aLane))
        .Raw("tid", std::to_string(m_NumberInLane[aRow]))
        .Raw("args", aArguments.Json());
    Append(aEvent, m_Events);
}

size_t TraceEvents::RowFor(Lane aLane, const std::string& aTitle, const Span& aSpan)
{
    std::vector<size_t>& rows = m_RowsOf[{aLane, aTitle}];
    const auto free =
        std::find_if(rows.begin(), rows.end(), [&](size_t aRow) { return m_Rows[aRow].end <= aSpan.begin; });
    if (free != rows.end()) {
        m_Rows[*free].end = aSpan.end;
        return *free;
    }
    rows.push_back(m_Rows.size());
    m_Rows.push_back({aLane, aTitle, aSpan.end});
    m_NumberInLane.push_back(++m_RowCounts[aLane]);
    return m_Rows.size() - 1;
}

std::string TraceEvents::Json() const
{
    std::string events;
    for (size_t lane = 1; lane <= std::size(kLanes); ++lane) {
        events += (events.empty() ? "" : ",") + LaneMetadata(static_cast<Lane>(lane));
    }
    for (size_t row = 0; row < m_Rows.size(); ++row) {
        Append(Metadata("thread_name", m_Rows[row].lane)
                   .Raw("tid", std::to_string(m_NumberInLane[row]))
                   .Raw("args", JsonObject().Text("name", m_Rows[row].title).Json()),
               events);
    }
    return "[" + events + (m_Events.empty() ? "" : ",") + m_Events + "\n]";
}

} // namespace sandbox
