// The keys of the lanes. Each says what it does to the chart.

const ZOOM_STEP = 1.5;

const KEYS = {
    ArrowRight: (chart) => stepInRow(chart, 1),
    ArrowLeft: (chart) => stepInRow(chart, -1),
    ArrowDown: (chart) => stepToRow(chart, 1),
    ArrowUp: (chart) => stepToRow(chart, -1),
    "Shift+ArrowRight": (chart) => moveView(chart, 0.2),
    "Shift+ArrowLeft": (chart) => moveView(chart, -0.2),
    "+": (chart) => chart.zoom(1 / ZOOM_STEP, middleOf(chart)),
    "=": (chart) => chart.zoom(1 / ZOOM_STEP, middleOf(chart)),
    "-": (chart) => chart.zoom(ZOOM_STEP, middleOf(chart)),
    0: (chart) => chart.showAll(),
    n: (chart) => chart.chooseNextProblem(1),
    p: (chart) => chart.chooseNextProblem(-1),
};

function listenToKeys(chart, showInTable) {
    chart.element.addEventListener("keydown", (event) => {
        if (event.ctrlKey || event.altKey || event.metaKey) return;
        const name = event.shiftKey && event.key.startsWith("Arrow") ? `Shift+${event.key}` : event.key;
        if (name === "Enter" && chart.chosen)
            showInTable(chart.chosen);
        else if (Object.hasOwn(KEYS, name))
            KEYS[name](chart);
        else
            return;
        event.preventDefault();
    });
    // Whoever comes with the keyboard sees details at once: of what went wrong, or of what came first.
    chart.element.addEventListener("focus", () => {
        if (!chart.element.matches(":focus-visible") || chart.chosen) return;
        const first = chart.run.failedCases[0] || chart.run.problems[0] || chart.run.events[0];
        if (first) chart.choose(first);
    });
    chart.element.addEventListener("blur", () => {
        chart.dropCard();
        chart.change({chosen: null});
    });
    addEventListener("keydown", ({key}) => {
        if (key === "Escape") chart.change({chosen: null, hovered: null});
    });
}

// Zooms about the current event, if there is one in sight.
function middleOf({chosen, view}) {
    return chosen && chosen.start >= view.from && chosen.start <= view.to ? chosen.start :
                                                                            (view.from + view.to) / 2;
}

function moveView(chart, part) {
    chart.view.move(part * chart.view.length);
    chart.change({});
}

function stepInRow(chart, step) {
    const {chosen} = chart;
    const events = chosen ? chosen.row.events : chart.run.events;
    const next =
        nextWhere(events, chosen ? events.indexOf(chosen) : -1, step, (event) => chart.isMatched(event));
    if (next) chart.choose(next);
}

function stepToRow(chart, step) {
    const {chosen, layout} = chart;
    if (!chosen) return stepInRow(chart, step);
    const rows = layout.rows.map(({row}) => row);
    const next = nextWhere(
        rows, rows.indexOf(chosen.row), step, (row) => row.events.some((event) => chart.isMatched(event)));
    const matched = next && {events: next.events.filter((event) => chart.isMatched(event))};
    if (matched) chart.choose(nearest(matched, chosen.start));
}
