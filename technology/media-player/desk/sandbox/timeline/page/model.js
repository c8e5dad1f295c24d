// A run as its trace tells it: lanes of rows of events. Times are seconds since the run's start.

function readRun(trace) {
    const lanes = LANES.map(([kind, title]) => ({kind, title, rows: []}));
    const rows = new Map();
    const events = [];
    for (const entry of trace.traceEvents) {
        const lane = lanes[entry.pid - 1];
        if (!lane) continue;
        if (entry.ph !== "M")
            events.push(readEvent(entry, rowOf(entry, lane, rows)));
        else if (entry.name === "thread_name")
            rowOf(entry, lane, rows).title = entry.args.name;
    }
    events.sort((one, other) => one.start - other.start);
    events.forEach((event, index) => {
        event.index = index;
        event.row.events.push(event);
    });
    return {
        lanes: lanes.map(withRows),
        events,
        end: endOf(events),
        about: trace.otherData || {},
        problems: events.filter(isProblem),
        failedCases: events.filter((event) => event.kind === "case" && event.state === "failed"),
    };
}

function rowOf(entry, lane, rows) {
    const key = `${entry.pid}/${entry.tid}`;
    if (!rows.has(key)) {
        rows.set(key, {lane, number: entry.tid, title: "", events: []});
        lane.rows.push(rows.get(key));
    }
    return rows.get(key);
}

function readEvent(entry, row) {
    const args = entry.args || {};
    const start = entry.ts / 1e6;
    const event = {
        kind: row.lane.kind,
        row,
        name: entry.name,
        args,
        state: args.state || "ok",
        start,
        end: start + (entry.dur || 0) / 1e6,
        point: entry.ph !== "X",
    };
    event.rank = rankOf(event);
    return event;
}

// How much an event matters: what matters most is drawn last and picked first.
function rankOf(event) {
    if (event.state === "failed") return 4;
    if (event.state === "noreply") return 3;
    if (event.kind === "log") return {fatal: 3, critical: 2, warning: 1}[event.args.level] || 0;
    return event.state === "ok" || event.state === "running" ? 0 : 1;
}

function isProblem(event) {
    return event.rank >= 3;
}

function withRows(lane) {
    if (lane.rows.length === 0) lane.rows.push({lane, number: 1, title: "none", events: []});
    lane.rows.sort((one, other) => one.number - other.number);
    return lane;
}

function endOf(events) {
    return events.reduce((end, event) => Math.max(end, event.end), 0.001);
}

// The cases proper, without the spans in which suites and environments are set up and torn down.
function casesOf(run) {
    return run.events.filter((event) => event.kind === "case" && !/: (set-up|tear-down)$/.test(event.name));
}
