// The card with the details of one event, beside what it tells about.

const LONG_ARGUMENTS = new Set(["failure", "request", "reply", "content", "error", "command", "crash"]);

function describeTime(event) {
    const start = timeText(event.start, 4);
    return event.point ? `at ${start}` :
                         `${start} to ${timeText(event.end, 4)}, ${durationText(event.end - event.start)}`;
}

function placeWords({row}) {
    return row.title ? `${row.lane.title}, ${row.title}` : row.lane.title;
}

function argumentRows(event) {
    return Object.entries(event.args)
        .filter(([name, value]) => name !== "state" && value !== "")
        .flatMap(
            ([name, value]) =>
                [element("dt", {}, ARGUMENT_WORDS[name] || name),
                 element(
                     "dd", {className: LONG_ARGUMENTS.has(name) ? "long" : ""},
                     name === "asked" ? `${value} ms` : String(value)),
    ]);
}

// Shows an event's details beside a spot of the window: { left, top, bottom }.
function showCard(event, others, spot) {
    const card = byId("card");
    const state = stateWord(event);
    card.className = `state-${looks(event)}`;
    card.replaceChildren(
        element("h3", {}, event.name),
        element(
            "p", {}, ...(state ? [element("strong", {}, state), " · "] : []),
            `${placeWords(event)} · ${describeTime(event)}`),
        element("dl", {}, ...argumentRows(event)),
        ...(others > 0 ? [element(
                             "p", {className: "faint"},
                             `and ${countText(others, "more event")} here: zoom in to part them`)] :
                         []));
    card.hidden = false;
    placeCard(card, spot);
}

function hideCard() {
    byId("card").hidden = true;
}

// Below the spot, or above it where there is no room below.
function placeCard(card, {left, top, bottom}) {
    const {width, height} = card.getBoundingClientRect();
    const below = bottom + 8;
    const above = top - height - 8;
    const y = below + height <= innerHeight || above < 0 ? Math.min(below, innerHeight - height - 4) : above;
    card.style.left = `${Math.max(4, Math.min(left, document.documentElement.clientWidth - width - 8))}px`;
    card.style.top = `${Math.max(4, y)}px`;
}

// One sentence for those who listen.
function spokenText(event) {
    return [event.name, stateWord(event), placeWords(event), describeTime(event), remarkOf(event)]
        .filter(Boolean)
        .join(". ");
}
