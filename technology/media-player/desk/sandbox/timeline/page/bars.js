// Draws the events of one row. What would fall onto the pixels of an event that matters as much is left out,
// so that a row costs as much as it has pixels, however many events there are.

function drawRow(context, row, top, frame) {
    const boxes = boxesOf(row, frame);
    for (const box of boxes)
        if (!box.event.point) drawBar(context, box, top, frame);
    const matching = boxes.filter(({dim}) => !dim);
    const last = leftward(row.events[row.events.length - 1], frame);
    drawLabels(context, matching.filter(({event}) => event !== last), top, frame);
    drawMarks(context, matching.map(({event}) => event), top, frame);
    if (matching.some(({event}) => event === last)) drawLabelLeftward(context, last, top, frame);
}

// The events of a row that are drawn, with their places from left to right.
function boxesOf({events}, frame) {
    const boxes = [];
    let covered = {right: -Infinity, rank: -2};
    for (let i = firstEndingFrom({events}, frame.from); i < events.length && events[i].start <= frame.to;
         i++) {
        const box = boxOf(events[i], events[i + 1], frame);
        const {right, rank} = covered;
        if (box.right < right + 1 && box.rank <= rank) continue;
        boxes.push(box);
        covered = box.right < right ? {right, rank: Math.max(rank, box.rank)} : box;
    }
    return boxes;
}

// `dim` is what the filter leaves out, and it hides nothing.
function boxOf(event, following, frame) {
    const dim = frame.matches !== null && !frame.matches[event.index];
    const left = frame.x(event.start);
    const right = event.point ? left : Math.max(frame.x(event.end), left + 1.5);
    const next = following ? frame.x(following.start) : frame.right;
    return {event, dim, rank: dim ? -1 : event.rank, left, right, next};
}

function drawBar(context, {event, dim, left, right}, top, frame) {
    const from = Math.max(left, frame.left - 4);
    const width = Math.min(right, frame.right + 4) - from;
    context.globalAlpha = dim ? 0.2 : 1;
    context.fillStyle = context.strokeStyle = edgeOf(event, frame.palette);
    context.fillRect(from, top + 2, Math.min(2, width), ROW_HEIGHT - 4);
    if (width >= 4) fillBar(context, event, from, width, top, frame);
    context.globalAlpha = 1;
}

function fillBar(context, event, from, width, top, frame) {
    context.fillStyle = fillOf(event, frame.palette);
    context.fillRect(from + 2, top + 2, width - 2, ROW_HEIGHT - 4);
    context.lineWidth = 1;
    context.setLineDash(event.state === "noreply" ? [4, 3] : []);
    context.strokeRect(from + 0.5, top + 2.5, width - 1, ROW_HEIGHT - 5);
    context.setLineDash([]);
    if (["failed", "skipped"].includes(looks(event))) hatch(context, from, width, top);
}

function hatch(context, left, width, top) {
    context.save();
    context.beginPath();
    context.rect(left, top + 2, width, ROW_HEIGHT - 4);
    context.clip();
    context.globalAlpha *= 0.3;
    const lines = [];
    for (let x = left - ROW_HEIGHT; x < left + width; x += 7)
        lines.push([x, top + ROW_HEIGHT, x + ROW_HEIGHT, top]);
    strokeLines(context, lines, 1);
    context.restore();
}

// The important ones last, and none onto another as important.
function drawMarks(context, events, top, frame) {
    const marked =
        events.filter(markOf).sort((one, other) => one.rank - other.rank || one.start - other.start);
    let last = -Infinity;
    let lastMark = null;
    for (const event of marked) {
        const mark = markOf(event);
        const x = frame.x(markTime(event));
        const apart = mark === "line" ? 1 : 6;
        if (x < frame.left - 6 || x > frame.right + 6 || (mark === lastMark && Math.abs(x - last) < apart))
            continue;
        drawMark(context, mark, x, top + ROW_HEIGHT / 2, edgeOf(event, frame.palette), frame.palette.paper);
        [last, lastMark] = [x, mark];
    }
}
