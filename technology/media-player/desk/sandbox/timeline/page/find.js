// Finding events by place: all rows are sorted by time, and the spans of one row don't overlap.

// The index of the first event of a row that ends at `time` or later.
function firstEndingFrom(row, time) {
    let low = 0;
    let high = row.events.length;
    while (low < high) {
        const middle = (low + high) >> 1;
        if (row.events[middle].end < time)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

// The events of a row that touch a stretch of time.
function eventsWithin(row, from, to) {
    const found = [];
    for (let i = firstEndingFrom(row, from); i < row.events.length && row.events[i].start <= to; i++)
        found.push(row.events[i]);
    return found;
}

// What a pointer at `time` means: of what lies within `reach` seconds the most important, then the nearest.
function pick(row, time, reach, matches) {
    const near =
        eventsWithin(row, time - reach, time + reach).filter((event) => !matches || matches[event.index]);
    const distance = (event) => Math.max(event.start - time, time - event.end, 0);
    const better = (one, other) => (one.rank - other.rank || distance(other) - distance(one)) > 0;
    const event = near.reduce((best, next) => (best && !better(next, best) ? best : next), null);
    return {event, others: Math.max(near.length - 1, 0)};
}

// The event of a row that is nearest to a moment; null in an empty row.
function nearest(row, time) {
    const at = Math.min(firstEndingFrom(row, time), row.events.length - 1);
    const before = row.events[at - 1];
    const event = row.events[at];
    if (!event || !before) return event || null;
    return time - before.end < event.start - time ? before : event;
}

// The first event after (`step` 1) or before (-1) another one that passes a test, around the end if need be.
function nextWhere(events, from, step, test) {
    const count = events.length;
    for (let n = 1; n <= count; n++) {
        const event = events[(((from + n * step) % count) + count) % count];
        if (test(event)) return event;
    }
    return null;
}
