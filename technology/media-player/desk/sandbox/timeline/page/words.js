// What the page calls things, and how it writes times.

const LANES = [
    ["case", "Test cases"],
    ["pause", "Pauses"],
    ["process", "Processes"],
    ["name", "Bus names"],
    ["call", "Calls"],
    ["signal", "Signals"],
    ["log", "Log"],
];

const RESULT_WORDS = {
    "passed": "Passed",
    "failed": "Failed",
    "crashed": "Crashed",
    "killed": "Killed",
    "timed out": "Timed out",
    "cut off": "Cut off",
};

const STATE_WORDS = {
    ok: "",
    failed: "failed",
    skipped: "skipped",
    killed: "killed",
    noreply: "no answer",
    running: "running",
};

const ARGUMENT_WORDS = {
    asked: "Asked for",
    pid: "Process id",
    command: "Command",
    end: "End",
    killedBy: "Ended by",
    crash: "Crashed in",
    startedBy: "Started by",
    bus: "Bus",
    owner: "Owner",
    process: "Process",
    from: "From",
    to: "To",
    path: "Object",
    request: "Request",
    reply: "Reply",
    error: "Error",
    content: "Content",
    level: "Level",
    failure: "Failure",
};

function stateWord(event) {
    if (event.kind === "case" && event.state === "ok") return "passed";
    if (event.kind === "log") return event.args.level || "";
    if (event.kind === "call" && event.state === "failed") return "error";
    return STATE_WORDS[event.state] ?? event.state;
}

function timeText(seconds, decimals = 3) {
    return `${seconds.toFixed(decimals)} s`;
}

function durationText(seconds) {
    if (seconds >= 1) return `${seconds.toFixed(seconds < 100 ? 2 : 1)} s`;
    if (seconds >= 0.001) return `${Number((seconds * 1000).toPrecision(3))} ms`;
    return `${Math.round(seconds * 1e6)} µs`;
}

function countText(count, one, many = `${one}s`) {
    return `${count.toLocaleString("en")} ${count === 1 ? one : many}`;
}

// The last part of "Interface.Member" or of a bus name, as the parts before it fill most of a bar.
function memberOf(name) {
    return name.startsWith(":") ? name : name.slice(name.lastIndexOf(".") + 1);
}

function processLabel({name, args, state}) {
    const who = args.pid ? `${name} (pid ${args.pid})` : name;
    const end = state === "killed" && args.killedBy ? `killed by ${args.killedBy}` : args.end;
    return end && state !== "running" ? `${who}: ${end}` : who;
}

function shortError(error) {
    return error.replace("org.freedesktop.DBus.Error.", "");
}

// A line without the time and level that programs write before it: its place and mark tell them.
function lineText({name}) {
    return name.replace(/^ *\d+\.\d+ (debug|info|warning|critical|fatal) +/, "");
}

// The few words that fit beside an event in its lane.
const LABELS = {
    case: (event) => event.name,
    pause: (event) => event.name,
    process: processLabel,
    name: ({name, args}) => [args.process || name, args.bus].filter(Boolean).join(" on the "),
    call: ({name, args}) => memberOf(name) + (args.error ? `: error ${shortError(args.error)}` : ""),
    signal: (event) => memberOf(event.name),
    log: lineText,
};

function labelOf(event) {
    const label = LABELS[event.kind](event);
    const told =
        event.kind === "log" || event.args.end || event.args.error || ["ok", "running"].includes(event.state);
    return told ? label : `${stateWord(event)}: ${label}`;
}

// Why an event is suspect, in one sentence.
function suspicionOf(event) {
    if (event.kind !== "call") return labelOf(event);
    const {name, args, start, end} = event;
    const asked = (args.to || "nobody").split(", ").pop();
    const outcome = args.error ? `error ${shortError(args.error)}` : "no answer";
    return `${memberOf(name)} to ${asked} waited ${durationText(end - start)}: ${outcome}`;
}

// What else there is to say of an event, in one line of the table.
const REMARKS = {
    case: ({args}) => [args.failure],
    pause: ({args}) => [args.asked !== undefined && `asked for ${args.asked} ms`],
    process: ({args}) =>
        [args.end, args.killedBy && `ended by ${args.killedBy}`,
         args.crash && `crashed in ${args.crash.split("\n").join(", from ")}`, args.command],
    name: ({args}) => [args.process, args.owner, args.bus],
    call: ({args}) =>
        [args.error, args.from && `${args.from} → ${args.to}`, args.path, args.request,
         args.reply && `→ ${args.reply}`],
    signal: ({args}) => [args.from, args.path, args.content],
    log: () => [],
};

function remarkOf(event) {
    return REMARKS[event.kind](event).filter(Boolean).join(" · ");
}
