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
        alarms: events.filter(isAlarm),
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

// How much an event matters, from 0 to 5: what matters most is drawn last and picked first.
const PROBLEM = 3;
const ALARM = 4;
const LEVEL_RANKS = {
    fatal: ALARM,
    critical: 2,
    warning: 1
};

function rankOf(event) {
    if (event.kind === "call") return rankOfCall(event);
    if (event.kind === "log") return LEVEL_RANKS[event.args.level] || 0;
    if (event.kind === "process" && event.state === "killed") return ALARM;
    if (event.state === "failed") return 5;
    return event.state === "ok" || event.state === "running" ? 0 : 1;
}

// The bus's own errors are mostly answers ("nobody has that name"), and those of others may be what a test
// asks for. Who waits long for one, or for nothing, is in trouble.
function rankOfCall({state, args, start, end}) {
    if (state !== "failed" && state !== "noreply") return 0;
    if (end - start >= 1) return ALARM;
    return args.to === "org.freedesktop.DBus" ? 2 : PROBLEM;
}

function isProblem(event) {
    return event.rank >= PROBLEM;
}

function isAlarm(event) {
    return event.rank >= ALARM;
}

function withRows(lane) {
    if (lane.rows.length === 0) lane.rows.push({lane, number: 1, title: "none", events: []});
    // Calls at the same time have rows of their own; those of one bus belong together.
    const group = (row) => (lane.kind === "call" ? lane.rows.findIndex(({title}) => title === row.title) : 0);
    lane.rows.sort((one, other) => group(one) - group(other) || one.number - other.number);
    return lane;
}

// A pause is as long as was asked for, also when the run ended in it.
function endOf(events) {
    const ends = events.filter(({kind}) => kind !== "pause").map(({end}) => end);
    return ends.reduce((last, end) => Math.max(last, end), 0.001);
}

// The cases proper, without the spans in which suites and environments are set up and torn down.
function casesOf(run) {
    return run.events.filter((event) => event.kind === "case" && !/: (set-up|tear-down)$/.test(event.name));
}

// What a failed run is likely to have failed of, besides its cases: alarms of the services, and what was
// logged as critical while a case failed. That the program itself failed is known.
function suspectsOf(run) {
    const during = (event) =>
        run.failedCases.some(({start, end}) => event.start >= start && event.start <= end);
    const suspect = (event) => {
        if (event.kind === "log") return event.rank >= 2 && during(event);
        return isAlarm(event) && event.kind !== "case" && event.args.command !== run.about.command;
    };
    return run.events.filter(suspect).sort((one, other) => markTime(one) - markTime(other));
}
