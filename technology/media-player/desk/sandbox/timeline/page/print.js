// On paper: the whole run in all its lanes, on white, and the table as it is sorted and filtered.

const PRINTED_ROWS = 500;
const PAPER_WIDTH = 1040;
const TALLEST_PICTURE = 8000;

function preparePrint(chart, table) {
    if (document.documentElement.classList.contains("printing")) return;
    document.documentElement.classList.add("printing");
    const layout = layOut(chart.run, PAPER_WIDTH);
    const height = Math.min(layout.height + RULER_HEIGHT, TALLEST_PICTURE);
    const paper = {layout, height, width: PAPER_WIDTH, scrollTop: 0, palette: readPalette()};
    const frame = makeFrame({...chart, ...paper, chosen: null, hovered: null, pointerX: null});
    drawPicture(sizedContext(chart.canvas, PAPER_WIDTH, height), chart.run, frame);
    drawLegend(byId("legend"));
    hideCard();
    table.render(PRINTED_ROWS);
    const left = table.events.length - PRINTED_ROWS;
    byId("print-note").textContent =
        left > 0 ? `${countText(left, "more event")} not printed: filter the table to print others.` : "";
}

function endPrint(chart, table) {
    document.documentElement.classList.remove("printing");
    drawLegend(byId("legend"));
    table.render();
    chart.resize();
}
