// Mouse and touch on the lanes: hover shows, a click chooses, dragging moves, Ctrl with the wheel and
// pinching zoom.

const CLICK_SLACK = 4;

function listenToPointer(chart) {
    const {element} = chart;
    const fingers = new Map();
    let moved = 0;
    const handlers = {
        pointerdown(event) {
            fingers.set(event.pointerId, event);
            moved = 0;
        },
        pointermove(event) {
            const before = fingers.get(event.pointerId);
            if (!before) return hover(chart, event);
            moved += Math.abs(event.clientX - before.clientX) + Math.abs(event.clientY - before.clientY);
            if (moved > CLICK_SLACK) element.setPointerCapture(event.pointerId);
            if (moved > CLICK_SLACK || fingers.size > 1) drag(chart, fingers, event);
            fingers.set(event.pointerId, event);
        },
        pointerup: (event) => fingers.delete(event.pointerId),
        pointercancel: (event) => fingers.delete(event.pointerId),
        pointerleave: () => chart.change({hovered: null, pointerX: null}),
        click(event) {
            if (moved > CLICK_SLACK) return;
            const {event: found} = eventAt(chart, event);
            if (found)
                chart.choose(found);
            else
                chart.change({chosen: null});
            chart.element.focus({preventScroll: true});
        },
        dblclick(event) {
            const {event: found} = eventAt(chart, event);
            if (found) chart.view.fill(found);
            chart.change({});
        },
    };
    for (const [type, handler] of Object.entries(handlers)) element.addEventListener(type, handler);
    element.addEventListener("wheel", (event) => turnWheel(chart, event), {passive: false});
}

function timeAt(chart, clientX) {
    const x = clientX - chart.canvas.getBoundingClientRect().left;
    return chart.view.from + ((x - chart.frame.left) / (chart.width - chart.frame.left)) * chart.view.length;
}

function eventAt(chart, {clientX, clientY}) {
    const box = chart.canvas.getBoundingClientRect();
    const y = clientY - box.top - RULER_HEIGHT;
    const placed =
        y >= 0 && clientX - box.left >= chart.frame.left && rowAt(chart.layout, y + chart.element.scrollTop);
    if (!placed) return {event: null, others: 0};
    const reach = (6 * chart.view.length) / (chart.width - chart.frame.left);
    return pick(placed.row, timeAt(chart, clientX), reach, chart.matches);
}

function hover(chart, pointer) {
    const {event, others} = eventAt(chart, pointer);
    chart.element.style.cursor = event ? "pointer" : "";
    chart.change(
        {hovered: event, others, pointerX: pointer.clientX - chart.canvas.getBoundingClientRect().left});
}

function drag(chart, fingers, event) {
    const before = fingers.get(event.pointerId);
    const other = [...fingers.values()].find((finger) => finger.pointerId !== event.pointerId);
    if (other) {
        const spread = (finger) => Math.max(Math.abs(finger.clientX - other.clientX), 10);
        chart.view.zoom(spread(before) / spread(event), timeAt(chart, other.clientX));
    } else {
        chart.view.move(timeAt(chart, before.clientX) - timeAt(chart, event.clientX));
        if (event.pointerType === "mouse") chart.element.scrollTop -= event.clientY - before.clientY;
    }
    chart.change({hovered: null});
}

function turnWheel(chart, event) {
    const sideways = event.shiftKey ? event.deltaY || event.deltaX : event.deltaX;
    if (!event.ctrlKey && !sideways) return;
    event.preventDefault();
    if (event.ctrlKey)
        chart.view.zoom(1.002 ** Math.max(-250, Math.min(event.deltaY, 250)), timeAt(chart, event.clientX));
    else
        chart.view.move((sideways / chart.width) * chart.view.length);
    chart.change({hovered: null});
}
