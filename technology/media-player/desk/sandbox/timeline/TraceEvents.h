/// The events of a Chrome trace, sorted into lanes and rows.
#pragma once

#include "../run/TestCase.h"
#include "Json.h"

#include <map>
#include <string>
#include <vector>

namespace sandbox
{

/// From top to bottom; the viewers take them for processes and count from 1.
enum class Lane { Cases = 1, Pauses, Processes, Names, Calls, Signals, Log };

class TraceEvents
{
public:
    /// A row has spans that don't overlap: of those with the same title the first where it fits, if it comes
    /// after those that began earlier. What began before the run is shown from its start.
    void AddSpan(Lane aLane, const std::string& aRow, const std::string& aName, const Span& aSpan,
                 const JsonObject& aArguments);

    void AddPoint(Lane aLane, const std::string& aRow, const std::string& aName, Moment aTime,
                  const JsonObject& aArguments);

    /// As a JSON array.
    std::string Json() const;

private:
    struct Row {
        Lane lane;
        std::string title;
        Moment end;
    };

    void Add(Lane aLane, size_t aRow, JsonObject aEvent, const JsonObject& aArguments);
    size_t RowFor(Lane aLane, const std::string& aTitle, const Span& aSpan);

    std::vector<Row> m_Rows; ///< numbered over all lanes
    std::map<std::pair<Lane, std::string>, std::vector<size_t>> m_RowsOf;
    std::map<Lane, int> m_RowCounts;
    std::vector<int> m_NumberInLane;
    std::string m_Events;
};

} // namespace sandbox
