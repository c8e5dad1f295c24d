// The lanes on their canvas: what they show, and when they are drawn anew. Everything that changes goes
// through change().

class Chart {
    constructor(run) {
        this.run = run;
        this.view = new View(run.end);
        this.element = byId("chart");
        this.canvas = byId("lanes");
        this.matches = null;
        this.chosen = null;
        this.hovered = null;
        this.others = 0;
        this.pointerX = null;
        this.showsCard = false;
        this.drawing = 0;
        new ResizeObserver(() => this.resize()).observe(this.element);
        this.element.addEventListener("scroll", () => this.change({}));
        matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => this.resize());
        this.resize();
    }

    resize() {
        this.palette = readPalette();
        this.width = this.element.clientWidth;
        this.layout = layOut(this.run, this.width);
        const whole = this.layout.height + RULER_HEIGHT;
        this.height = Math.min(whole, Math.max(240, innerHeight - 90));
        this.element.style.height = `${this.height + 2}px`;
        byId("chart-space").style.height = `${whole - this.height}px`;
        this.draw();
    }

    change(changes) {
        Object.assign(this, changes);
        this.drawing ||= requestAnimationFrame(() => this.draw());
    }

    draw() {
        cancelAnimationFrame(this.drawing);
        this.drawing = 0;
        this.frame = makeFrame({...this, scrollTop: this.element.scrollTop});
        drawPicture(sizedContext(this.canvas, this.width, this.height), this.run, this.frame);
        const event = this.hovered || this.chosen;
        const spot = event && this.spotOf(event);
        if (!spot) return this.dropCard();
        showCard(event, event === this.hovered ? this.others : 0, spot);
        this.showsCard = true;
    }

    // Only its own: the table shows the same card.
    dropCard() {
        if (this.showsCard) hideCard();
        this.showsCard = false;
    }

    // Where an event is in the window; null when it is out of sight.
    spotOf(event) {
        const x = this.frame.x(event.start);
        const y =
            this.layout.rows[placeOf(this.layout, event.row)].top - this.element.scrollTop + RULER_HEIGHT;
        if (y <= 0 || y >= this.height || this.frame.x(event.end) < this.frame.left || x > this.width)
            return null;
        const box = this.canvas.getBoundingClientRect();
        const left = box.left + Math.max(event === this.hovered ? this.pointerX : x, this.frame.left);
        return {left, top: box.top + y, bottom: box.top + y + ROW_HEIGHT};
    }

    // Makes an event the current one: in sight, with its details, and read out.
    choose(event) {
        this.view.reveal(event);
        const {top} = this.layout.rows[placeOf(this.layout, event.row)];
        const scroll = this.element.scrollTop;
        const visible = this.height - RULER_HEIGHT;
        if (top < scroll)
            this.element.scrollTop = top - LANE_GAP;
        else if (top + ROW_HEIGHT > scroll + visible)
            this.element.scrollTop = top + ROW_HEIGHT - visible + LANE_GAP;
        byId("spoken").textContent = spokenText(event);
        this.change({chosen: event, hovered: null});
    }

    // The same for someone who is elsewhere on the page.
    bringTo(event) {
        this.choose(event);
        this.element.focus({preventScroll: true});
        this.element.scrollIntoView({block: "nearest"});
    }

    chooseNextProblem(step = 1) {
        const from = this.chosen ? this.chosen.index : step > 0 ? -1 : 0;
        const event = nextWhere(
            this.run.events, from, step, (candidate) => isProblem(candidate) && this.isMatched(candidate));
        if (event)
            this.choose(event);
        else
            byId("spoken").textContent = "No problems to go to";
    }

    isMatched(event) {
        return this.matches === null || this.matches[event.index] === 1;
    }

    zoom(factor, at) {
        this.view.zoom(factor, at);
        this.change({});
    }

    showAll() {
        this.view.showAll();
        this.change({});
    }
}

// A canvas is emptied by being given a size, so that is done where it changes only.
function sizedContext(canvas, width, height) {
    const ratio = window.devicePixelRatio || 1;
    const [columns, rows] = [Math.round(width * ratio), Math.round(height * ratio)];
    if (canvas.width !== columns || canvas.height !== rows) {
        [canvas.width, canvas.height] = [columns, rows];
        [canvas.style.width, canvas.style.height] = [`${width}px`, `${height}px`];
    }
    const context = canvas.getContext("2d", {alpha: false});
    context.setTransform(ratio, 0, 0, ratio, 0, 0);
    return context;
}
