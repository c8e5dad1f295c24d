// Writes what events are beside or into them, as far as there is room.

const TEXT_FONT = "11px system-ui, sans-serif";

// Measured once, as measuring each text costs more than drawing it.
const characterWidth = (() => {
    const context = document.createElement("canvas").getContext("2d");
    context.font = TEXT_FONT;
    const sample = "com.talvex.DBus.MediaPlayer: MediaManager (pid 23) started";
    return context.measureText(sample).width / sample.length;
})();

function fitText(text, room) {
    const count = Math.floor(room / characterWidth);
    return text.length <= count ? text : count > 3 ? `${text.slice(0, count - 1)}…` : "";
}

function drawLabels(context, boxes, top, frame) {
    context.font = TEXT_FONT;
    context.fillStyle = frame.palette.ink;
    let free = -Infinity;
    for (const box of boxes) {
        drawLabel(context, box, free, top, frame);
        if (markOf(box.event)) free = frame.x(markTime(box.event)) + 10;
    }
}

// Inside its bar where the text fits better, otherwise to the right of it up to the next event. `free` is
// where the last mark before it ends.
function drawLabel(context, {event, left, right, next}, free, top, frame) {
    const atStart = markOf(event) && markTime(event) === event.start ? 10 : 4;
    const atEnd = markOf(event) && markTime(event) === event.end ? 9 : 3;
    const inside = Math.max(Math.max(left, frame.left) + atStart, free);
    const insideRoom = Math.min(right, frame.right) - inside - atEnd;
    const outside = Math.max(right, left) + Math.max(atStart, event.point ? 9 : atEnd + 1);
    const outsideRoom = Math.min(next, frame.right) - outside - 8;
    const text = labelOf(event);
    const within = insideRoom >= Math.min(outsideRoom, text.length * characterWidth);
    const room = within ? insideRoom : outsideRoom;
    const shown = room > 24 ? fitText(text, room) : "";
    if (shown) context.fillText(shown, within ? inside : outside, top + ROW_HEIGHT / 2 + 0.5, room);
}

// The last line of a log often says what went wrong, with no room left to the right: then its text stands to
// the left of its mark, in front of what is there. Gives back the row's last event if that is one of these.
function leftward(event, frame) {
    if (!event || !event.point || event.rank === 0) return null;
    const x = frame.x(event.start);
    const width = labelOf(event).length * characterWidth + 24;
    return x <= frame.right && frame.right - x < width && x - width >= frame.left ? event : null;
}

function drawLabelLeftward(context, event, top, frame) {
    const x = frame.x(event.start);
    const text = labelOf(event);
    const width = text.length * characterWidth;
    context.font = TEXT_FONT;
    context.fillStyle = frame.palette.paper;
    context.fillRect(x - width - 16, top + 2, width + 8, ROW_HEIGHT - 4);
    context.fillStyle = frame.palette.ink;
    context.fillText(text, x - width - 12, top + ROW_HEIGHT / 2 + 0.5, width);
}
