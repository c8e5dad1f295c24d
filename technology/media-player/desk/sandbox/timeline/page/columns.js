// What the table shows of an event: a column's text, and the key that it sorts by.

const LONGEST_CELL = 160;

const COLUMNS = [
    {title: "Start", key: (event) => event.start, text: (event) => timeText(event.start, 4), numeric: true},
    {
        title: "Lasted",
        key: (event) => event.end - event.start,
        text: (event) => (event.point ? "" : durationText(event.end - event.start)),
        numeric: true
    },
    {
        title: "Lane",
        key: (event) => LANES.findIndex(([kind]) => kind === event.kind),
        text: (event) => event.row.lane.title
    },
    {title: "Row", key: (event) => event.row.title, text: (event) => event.row.title},
    {title: "What", key: (event) => event.name, text: (event) => event.name},
    {title: "State", key: (event) => stateWord(event), text: stateWord},
    {title: "Details", key: (event) => remarkOf(event), text: remarkOf},
];

function compare(one, other) {
    return typeof one === "number" ? one - other : one < other ? -1 : one > other ? 1 : 0;
}

// The card has all of it.
function shorten(text) {
    return text.length > LONGEST_CELL ? `${text.slice(0, LONGEST_CELL)}…` : text;
}
