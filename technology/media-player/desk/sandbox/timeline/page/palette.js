// The colours of the style sheet, for the canvas.

const PLAIN_COLOURS = ["paper", "ink", "faint", "line", "stripe", "accent"];
const FILLED = [...LANES.map(([kind]) => kind), "failed", "skipped", "killed", "noreply"];
const LEVELS = ["debug", "info", "warning", "critical", "fatal", "output"];

function readPalette() {
    const style = getComputedStyle(document.documentElement);
    const colour = (name) => style.getPropertyValue(`--${name}`).trim();
    const palette = {fill: {}, edge: {}, level: {}};
    for (const name of PLAIN_COLOURS) palette[name] = colour(name);
    for (const name of FILLED) {
        palette.fill[name] = colour(`${name}-fill`);
        palette.edge[name] = colour(`${name}-edge`);
    }
    for (const name of LEVELS) palette.level[name] = colour(`level-${name}`);
    return palette;
}

// An error that is but an answer looks like any other answer.
function looks(event) {
    return event.kind === "call" && event.rank < PROBLEM ? "ok" : event.state;
}

function fillOf(event, palette) {
    return palette.fill[looks(event)] || palette.fill[event.kind];
}

function edgeOf(event, palette) {
    if (event.kind === "log") return palette.level[event.args.level] || palette.level.output;
    return palette.edge[looks(event)] || palette.edge[event.kind];
}
