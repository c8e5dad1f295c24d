// Draws what tells the time: the ruler on top and the lines through the lanes.

function drawGrid(context, ticks, frame) {
    context.strokeStyle = frame.palette.line;
    strokeLines(
        context, ticks.map(({time}) => [frame.x(time), RULER_HEIGHT, frame.x(time), frame.height]), 1);
}

// Nobody knows what came after a recording that ended before its run.
function drawCut(context, time, frame) {
    const x = Math.max(frame.x(time), frame.left);
    context.strokeStyle = frame.palette.edge.noreply;
    context.setLineDash([6, 4]);
    strokeLines(context, [[x, RULER_HEIGHT, x, frame.height]], 2);
    context.setLineDash([]);
    context.fillStyle = frame.palette.edge.noreply;
    context.font = TEXT_FONT;
    context.textAlign = "right";
    context.fillText("cut off here", x - 5, frame.height - 10);
    context.textAlign = "left";
}

function drawRuler(context, ticks, run, frame) {
    const {palette} = frame;
    context.fillStyle = palette.paper;
    context.fillRect(0, 0, frame.width, RULER_HEIGHT);
    context.strokeStyle = palette.faint;
    strokeLines(context, [[0, RULER_HEIGHT - 0.5, frame.width, RULER_HEIGHT - 0.5]], 1);
    context.font = TEXT_FONT;
    context.fillStyle = palette.faint;
    for (const {time, text} of ticks) {
        if (frame.x(time) < frame.left) continue;
        context.fillText(text, frame.x(time) + 4, RULER_HEIGHT / 2);
        context.fillRect(frame.x(time), RULER_HEIGHT - 8, 1, 8);
    }
    drawAlarms(context, run.alarms, frame);
    if (frame.pointerX > frame.left) drawPointedTime(context, frame);
}

// The time under the pointer, as a line through all lanes.
function drawPointedTime(context, {pointerX, time, view, height, palette}) {
    const text = timeText(time(pointerX), decimalsOf(view.length / 1000));
    context.strokeStyle = palette.accent;
    strokeLines(context, [[pointerX, RULER_HEIGHT - 8, pointerX, height]], 1);
    context.fillStyle = palette.paper;
    context.fillRect(pointerX + 2, 2, text.length * characterWidth + 8, RULER_HEIGHT - 8);
    context.fillStyle = palette.accent;
    context.fillText(text, pointerX + 4, RULER_HEIGHT / 2);
}

function drawAlarms(context, alarms, frame) {
    let last = -Infinity;
    for (const event of alarms) {
        const x = frame.x(markTime(event));
        if (x < frame.left || Math.abs(x - last) < 3) continue;
        last = x;
        context.fillStyle = edgeOf(event, frame.palette);
        fillShape(context, [[x - 4, RULER_HEIGHT - 7], [x + 4, RULER_HEIGHT - 7], [x, RULER_HEIGHT]]);
    }
}
