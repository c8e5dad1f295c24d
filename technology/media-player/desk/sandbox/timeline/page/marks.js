// The shapes that tell states and levels apart without their colours. Each is drawn around a middle point.

function strokeLines(context, lines, width = 1.8) {
    context.lineWidth = width;
    context.beginPath();
    for (const [fromX, fromY, toX, toY] of lines) {
        context.moveTo(fromX, fromY);
        context.lineTo(toX, toY);
    }
    context.stroke();
}

function fillShape(context, points) {
    context.beginPath();
    for (const [x, y] of points) context.lineTo(x, y);
    context.fill();
}

function badge(context, x, y, paper) {
    context.beginPath();
    context.arc(x, y, 6.5, 0, 2 * Math.PI);
    context.fill();
    context.fillStyle = context.strokeStyle = paper;
}

function cross(x, y, arm) {
    return [[x - arm, y - arm, x + arm, y + arm], [x + arm, y - arm, x - arm, y + arm]];
}

const MARKS = {
    failed(context, x, y, paper) {
        badge(context, x, y, paper);
        strokeLines(context, cross(x, y, 2.6));
    },
    error(context, x, y, paper) {
        const colour = context.strokeStyle;
        badge(context, x, y, colour);
        context.fillStyle = paper;
        context.beginPath();
        context.arc(x, y, 5.2, 0, 2 * Math.PI);
        context.fill();
        context.strokeStyle = colour;
        strokeLines(context, cross(x, y, 2.3), 1.4);
    },
    noreply(context, x, y, paper) {
        badge(context, x, y, paper);
        context.font = "bold 10px sans-serif";
        context.textAlign = "center";
        context.fillText("?", x, y + 0.5);
        context.textAlign = "left";
    },
    killed(context, x, y, paper) {
        context.fillRect(x - 5.5, y - 5.5, 11, 11);
        context.fillStyle = paper;
        context.fillRect(x - 2, y - 2, 4, 4);
    },
    skipped(context, x, y) {
        for (const left of [x - 5, x]) fillShape(context, [[left, y - 4.5], [left + 5, y], [left, y + 4.5]]);
    },
    running(context, x, y) {
        fillShape(context, [[x - 4, y - 5], [x + 4, y], [x - 4, y + 5]]);
    },
    signal(context, x, y) {
        fillShape(context, [[x, y - 5.5], [x + 4.5, y], [x, y + 5.5], [x - 4.5, y]]);
    },
    fatal(context, x, y, paper) {
        MARKS.failed(context, x, y, paper);
    },
    critical(context, x, y) {
        fillShape(context, [[x, y - 6], [x + 5.5, y + 5], [x - 5.5, y + 5]]);
    },
    warning(context, x, y) {
        context.beginPath();
        context.arc(x, y, 4, 0, 2 * Math.PI);
        context.fill();
    },
    line(context, x, y) {
        context.fillRect(x - 1, y - 5, 2, 10);
    },
};

function drawMark(context, mark, x, y, colour, paper) {
    context.fillStyle = context.strokeStyle = colour;
    MARKS[mark](context, x, y, paper);
}

function markOf(event) {
    if (event.kind === "log") return MARKS[event.args.level] ? event.args.level : "line";
    if (event.kind === "call" && event.state === "failed") return "error";
    return event.state === "ok" ? (event.point ? "signal" : null) : event.state;
}

// What happens at its end is marked there.
function markTime(event) {
    return event.state === "killed" || event.state === "running" ? event.end : event.start;
}
