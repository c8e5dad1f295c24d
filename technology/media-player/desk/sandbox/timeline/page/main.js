// Puts the page together from the trace that it carries.

function readTrace() {
    const trace = JSON.parse(byId("trace").textContent);
    if (!Array.isArray(trace.traceEvents)) throw new Error("it holds no trace events");
    return readRun(trace);
}

function connectTools(chart, table, filter) {
    const apply = () => {
        filter.set(byId("filter").value, byId("problems").checked);
        const matches = filter.matches();
        chart.change({matches});
        table.show(matches);
        const all = countText(filter.events.length, "event");
        byId("matching").textContent =
            matches ? `${table.events.length.toLocaleString("en")} of ${all}` : all;
    };
    byId("filter").addEventListener("input", apply);
    byId("problems").addEventListener("change", apply);
    byId("zoom-in").addEventListener("click", () => chart.zoom(1 / ZOOM_STEP));
    byId("zoom-out").addEventListener("click", () => chart.zoom(ZOOM_STEP));
    byId("whole-run").addEventListener("click", () => chart.showAll());
    byId("next-problem").addEventListener("click", () => chart.chooseNextProblem());
    byId("next-problem").disabled = chart.run.problems.length === 0;
    apply();
}

function start(run) {
    const chart = new Chart(run);
    const table = new EventTable(run, (event) => chart.bringTo(event));
    fillSummary(byId("summary"), run, (event) => chart.bringTo(event));
    chart.resize();
    listenToPointer(chart);
    listenToKeys(chart, (event) => table.showEvent(event));
    connectTools(chart, table, new Filter(run.events));
    drawLegend(byId("legend"));
    matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => drawLegend(byId("legend")));
    addEventListener("beforeprint", () => preparePrint(chart, table));
    addEventListener("afterprint", () => endPrint(chart, table));
    addEventListener("resize", () => chart.resize());
}

try {
    start(readTrace());
} catch (error) {
    const text = `This page can't show its run: ${error.message}. Was the file copied whole?`;
    document.body.prepend(element("p", {className: "notice", role: "alert"}, text));
}
