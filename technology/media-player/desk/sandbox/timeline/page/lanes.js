// Draws the whole picture: ruler, titles, lanes and what is pointed at.

// What the drawing of one frame needs to know.
function makeFrame({view, layout, width, height, scrollTop, palette, matches, chosen, hovered, pointerX}) {
    const left = layout.titles;
    const scale = (width - left) / view.length;
    const x = (time) => left + (time - view.from) * scale;
    const time = (at) => view.from + (at - left) / scale;
    return {
        left,
        right: width,
        width,
        height,
        scrollTop,
        from: view.from,
        to: view.to,
        view,
        x,
        time,
        layout,
        palette,
        matches,
        chosen,
        hovered,
        pointerX,
    };
}

function drawPicture(context, run, frame) {
    context.textBaseline = "middle";
    context.fillStyle = frame.palette.paper;
    context.fillRect(0, 0, frame.width, frame.height);
    const ticks = ticksOf(frame.view, frame.right - frame.left);
    const topOf = (y) => y - frame.scrollTop + RULER_HEIGHT;
    within(context, frame.left, 0, frame.right - frame.left, frame.height, () => {
        for (const placed of frame.layout.lanes) drawLaneGround(context, placed, topOf, frame);
        drawGrid(context, ticks, frame);
        drawFailedCases(context, run, frame);
        for (const {row, top} of visibleRows(frame)) drawRow(context, row, topOf(top), frame);
        for (const event of [frame.hovered, frame.chosen])
            if (event) drawOutline(context, event, topOf, frame);
    });
    drawTitles(context, topOf, frame);
    if (run.about.cutOff) drawCut(context, run.end, frame);
    drawRuler(context, ticks, run, frame);
}

function within(context, left, top, width, height, draw) {
    context.save();
    context.beginPath();
    context.rect(left, top, width, height);
    context.clip();
    draw();
    context.restore();
}

function visibleRows({layout, scrollTop, height}) {
    return layout.rows.filter(
        ({top}) => top + ROW_HEIGHT > scrollTop && top < scrollTop + height - RULER_HEIGHT);
}

function drawLaneGround(context, {lane, top, bottom}, topOf, frame) {
    context.fillStyle = frame.palette.stripe;
    if (frame.layout.lanes.findIndex((placed) => placed.lane === lane) % 2 === 0) {
        context.fillRect(frame.left, topOf(top - LANE_GAP / 2), frame.right, bottom - top + LANE_GAP / 2);
    }
}

// A failed case's time runs through all lanes: what else happened then is what to look at.
function drawFailedCases(context, run, frame) {
    context.globalAlpha = 0.1;
    context.fillStyle = frame.palette.edge.failed;
    for (const event of run.failedCases) {
        const left = Math.max(frame.x(event.start), frame.left);
        const right = Math.min(frame.x(event.end), frame.right);
        if (right >= left) context.fillRect(left, RULER_HEIGHT, Math.max(right - left, 1), frame.height);
    }
    context.globalAlpha = 1;
}

function drawOutline(context, event, topOf, frame) {
    const left = Math.max(frame.x(event.start), frame.left) - (event.point ? 8 : 2);
    const right = Math.min(frame.x(event.end), frame.right) + (event.point ? 8 : 2);
    const placed = frame.layout.rows[placeOf(frame.layout, event.row)];
    context.strokeStyle = frame.palette.accent;
    context.lineWidth = 2;
    context.strokeRect(left, topOf(placed.top) + 1, Math.max(right - left, 4), ROW_HEIGHT - 2);
}

function drawTitles(context, topOf, frame) {
    const {layout, palette} = frame;
    context.fillStyle = palette.paper;
    context.fillRect(0, RULER_HEIGHT, frame.left - 1, frame.height);
    within(context, 0, RULER_HEIGHT, frame.left - 4, frame.height, () => {
        for (const {top, title} of visibleRows(frame)) {
            context.font = TEXT_FONT;
            context.fillStyle = palette.faint;
            const room = layout.titles - layout.laneTitles - 14;
            context.fillText(fitText(title, room), layout.laneTitles + 8, topOf(top) + ROW_HEIGHT / 2, room);
        }
    });
    for (const {lane, top} of layout.lanes) drawLaneTitle(context, lane.title, topOf(top), frame);
    context.strokeStyle = palette.line;
    strokeLines(context, [[frame.left - 0.5, 0, frame.left - 0.5, frame.height]], 1);
}

function drawLaneTitle(context, title, y, {palette, width}) {
    context.strokeStyle = palette.line;
    strokeLines(context, [[0, y - LANE_GAP / 2, width, y - LANE_GAP / 2]], 1);
    context.font = "bold 12px system-ui, sans-serif";
    context.fillStyle = palette.ink;
    context.fillText(title, 8, y + ROW_HEIGHT / 2);
}
