// Draws the events of one row. What would fall onto the pixels of an event that matters as much is left out,
// so that a row costs as much as it has pixels, however many events there are.

function drawRow(context, row, top, frame) {
    const events = row.events;
    const shown = [];
    const last = leftward(events[events.length - 1], frame);
    let covered = -Infinity;
    let coveredRank = -2;
    let free = -Infinity;
    for (let i = firstEndingFrom(row, frame.from); i < events.length && events[i].start <= frame.to; i++) {
        const event = events[i];
        const dim = frame.matches !== null && !frame.matches[event.index];
        const rank = dim ? -1 : event.rank;
        const left = frame.x(event.start);
        const right = event.point ? left : Math.max(frame.x(event.end), left + 1.5);
        if (right < covered + 1 && rank <= coveredRank) continue;
        context.globalAlpha = dim ? 0.2 : 1;
        if (!event.point) drawBar(context, event, left, right, top, frame);
        if (!dim) shown.push(event);
        if (!dim && event !== last)
            drawLabel(context, event, {left, right, free, next: nextLeft(events, i, frame)}, top, frame);
        if (!dim && markOf(event)) free = frame.x(markTime(event)) + 10;
        if (right >= covered)
            [covered, coveredRank] = [right, rank];
        else
            coveredRank = Math.max(coveredRank, rank);
    }
    context.globalAlpha = 1;
    drawMarks(context, shown, top, frame);
    if (shown.includes(last)) drawLabelLeftward(context, last, top, frame);
}

function nextLeft(events, index, frame) {
    return index + 1 < events.length ? frame.x(events[index + 1].start) : frame.right;
}

function drawBar(context, event, left, right, top, frame) {
    const from = Math.max(left, frame.left - 4);
    const width = Math.min(right, frame.right + 4) - from;
    context.fillStyle = context.strokeStyle = edgeOf(event, frame.palette);
    context.fillRect(from, top + 2, Math.min(2, width), ROW_HEIGHT - 4);
    if (width < 4) return;
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
