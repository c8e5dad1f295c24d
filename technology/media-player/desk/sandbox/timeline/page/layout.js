// Where the rows of the lanes lie, top to bottom, and how wide their titles are.

const ROW_HEIGHT = 20;
const HEAD_HEIGHT = 20;
const LANE_GAP = 7;
const RULER_HEIGHT = 26;

// On a narrow page each lane has its title above its rows, otherwise to the left of their titles.
function layOut(run, width) {
    const narrow = width < 720;
    const lanes = [];
    let y = LANE_GAP;
    for (const lane of run.lanes) {
        const top = y;
        if (narrow) y += HEAD_HEIGHT;
        const rows = lane.rows.map((row, n) => ({row, top: y + n * ROW_HEIGHT, title: shownTitle(lane, n)}));
        y += lane.rows.length * ROW_HEIGHT + LANE_GAP;
        lanes.push({lane, top, rows, bottom: y - LANE_GAP / 2});
    }
    return {
        narrow,
        lanes,
        rows: lanes.flatMap((lane) => lane.rows),
        height: y,
        titles: narrow ? 96 : 228,
        laneTitles: narrow ? 0 : 86
    };
}

// Bus names without what most of them begin with, and nothing twice below each other.
function shownTitle({kind, rows}, place) {
    const {title} = rows[place];
    if (place > 0 && rows[place - 1].title === title) return "";
    return kind === "name" ? memberOf(title) : title;
}

function rowAt(layout, y) {
    return layout.rows.find(({top}) => y >= top && y < top + ROW_HEIGHT);
}

function placeOf(layout, row) {
    return layout.rows.findIndex((placed) => placed.row === row);
}
