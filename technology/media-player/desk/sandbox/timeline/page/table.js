// All events as a table. Only the rows in sight exist in the page, so that it is as quick with fifty
// thousand.

const TABLE_ROW = 26;
const SPARE_ROWS = 10;

class EventTable {
    constructor(run, choose) {
        this.run = run;
        this.choose = choose;
        this.ordered = run.events;
        this.sorted = {column: COLUMNS[0], descending: false};
        this.current = 0;
        this.heads = COLUMNS.map((column) => this.makeHead(column));
        this.body = element("tbody");
        this.table = element(
            "table", {ariaLabel: "All events of the run", ariaColCount: COLUMNS.length},
            element("thead", {}, element("tr", {ariaRowIndex: 1}, ...this.heads)), this.body);
        this.element = byId("events");
        this.element.replaceChildren(this.table);
        this.element.addEventListener("scroll", () => requestAnimationFrame(() => this.render()));
        this.body.addEventListener("click", ({target}) => this.focusRow(target.closest("tr[data-place]")));
        this.body.addEventListener("dblclick", () => this.choose(this.events[this.current]));
        this.body.addEventListener("keydown", (event) => this.press(event));
        this.body.addEventListener(
            "focusin", ({target}) => showCard(this.events[this.current], 0, target.getBoundingClientRect()));
        this.body.addEventListener("focusout", hideCard);
        this.show(null);
    }

    makeHead(column) {
        const button = element("button", {type: "button", onclick: () => this.sortBy(column)}, column.title);
        return element("th", {scope: "col", className: column.numeric ? "number" : ""}, button);
    }

    sortBy(column) {
        this.sorted = {column, descending: this.sorted.column === column && !this.sorted.descending};
        this.ordered = this.sortEvents();
        this.show(this.matches);
    }

    sortEvents() {
        const {column, descending} = this.sorted;
        const keyed = this.run.events.map((event) => [column.key(event), event]);
        keyed.sort(([one], [other]) => (descending ? compare(other, one) : compare(one, other)));
        return keyed.map(([, event]) => event);
    }

    // Shows the events that a filter lets through; all of them without one.
    show(matches) {
        this.matches = matches;
        const {column, descending} = this.sorted;
        this.events = this.ordered.filter((event) => matches === null || matches[event.index]);
        this.current = 0;
        setProperty(this.table, "ariaRowCount", this.events.length + 1);
        const order = descending ? "descending" : "ascending";
        this.heads.forEach(
            (head, n) => setProperty(head, "ariaSort", COLUMNS[n] === column ? order : "none"));
        this.element.scrollTop = 0;
        this.render();
    }

    render(limit = 0) {
        const first = limit ? 0 : Math.max(0, Math.floor(this.element.scrollTop / TABLE_ROW) - SPARE_ROWS);
        const count = limit || Math.ceil(this.element.clientHeight / TABLE_ROW) + 2 * SPARE_ROWS;
        const last = Math.min(first + count, this.events.length);
        const hadFocus = this.body.contains(document.activeElement);
        const rows = this.events.slice(first, last).map((event, n) => this.makeRow(event, first + n));
        this.body.replaceChildren(spacer(first), ...rows, spacer(limit ? 0 : this.events.length - last));
        if (hadFocus) (rows[this.current - first] || this.element).focus({preventScroll: true});
    }

    makeRow(event, place) {
        const cells = COLUMNS.map(
            (column) =>
                element("td", {className: column.numeric ? "number" : ""}, shorten(column.text(event))));
        const row = element(
            "tr", {
                className: `state-${looks(event)} ${event.args.level ? `level-${event.args.level}` : ""}`,

                tabIndex: place === this.current ? 0 : -1,
                ariaRowIndex: place + 2
            },
            ...cells);
        row.dataset.place = place;
        return row;
    }

    focusRow(row) {
        if (row) this.goTo(Number(row.dataset.place));
    }

    press(event) {
        const page = Math.floor(this.element.clientHeight / TABLE_ROW) - 2;
        const steps =
            {ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page, Home: -Infinity, End: Infinity};
        if (event.key in steps)
            this.goTo(this.current + steps[event.key]);
        else if (event.key === "Enter")
            this.choose(this.events[this.current]);
        else
            return;
        event.preventDefault();
    }

    showEvent(event) {
        const place = this.events.indexOf(event);
        if (place >= 0) this.goTo(place);
    }

    goTo(place) {
        this.current = Math.min(Math.max(place, 0), this.events.length - 1);
        const top = this.current * TABLE_ROW;
        const room = this.element.clientHeight - 2 * TABLE_ROW;
        if (top < this.element.scrollTop)
            this.element.scrollTop = top;
        else if (top > this.element.scrollTop + room)
            this.element.scrollTop = top - room;
        this.render();
        this.body.querySelector("tr[tabindex='0']").focus();
    }
}

// Stands for the rows that are not there, for the scroll bar.
function spacer(rows) {
    return element("tr", {ariaHidden: "true", hidden: rows === 0, style: `height: ${rows * TABLE_ROW}px`});
}
