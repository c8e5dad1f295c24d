// The part of the run that the lanes show, in seconds.

const NARROWEST_VIEW = 20e-6;

class View {
    constructor(end) {
        this.first = -0.012 * end;
        this.last = 1.015 * end;
        this.showAll();
    }

    get length() {
        return this.to - this.from;
    }

    showAll() {
        this.set(this.first, this.last);
    }

    // Keeps the moment `at` where it is.
    zoom(factor, at = (this.from + this.to) / 2) {
        const length = Math.min(Math.max(this.length * factor, NARROWEST_VIEW), this.last - this.first);
        const from = at - ((at - this.from) / this.length) * length;
        this.set(from, from + length);
    }

    move(seconds) {
        this.set(this.from + seconds, this.to + seconds);
    }

    fill(event) {
        const length =
            Math.max(event.point ? this.length / 10 : (event.end - event.start) * 1.3, NARROWEST_VIEW);
        const middle = (event.start + event.end) / 2;
        this.set(middle - length / 2, middle + length / 2);
    }

    // Moves as little as brings the event, or its beginning, into sight.
    reveal(event) {
        const margin = this.length / 10;
        if (event.end < this.from + margin / 2)
            this.move(event.start - margin - this.from);
        else if (event.start > this.to - margin / 2)
            this.move(event.start + margin * 3 - this.to);
    }

    set(from, to) {
        const length = Math.min(to - from, this.last - this.first);
        this.from = Math.min(Math.max(from, this.first), this.last - length);
        this.to = this.from + length;
    }
}

// Round steps of time of which one takes at least `pixels`.
function tickStep(view, width, pixels = 90) {
    const least = (view.length * pixels) / width;
    const power = 10 ** Math.floor(Math.log10(least));
    return [1, 2, 5, 10].map((factor) => factor * power).find((step) => step >= least);
}

// How many decimals tell moments apart that lie this far from each other.
function decimalsOf(step) {
    return Math.max(0, -Math.floor(Math.log10(step) + 1e-9));
}

function ticksOf(view, width) {
    const step = tickStep(view, width);
    const decimals = decimalsOf(step);
    const ticks = [];
    for (let n = Math.max(0, Math.ceil(view.from / step)); n * step <= view.to; n++) {
        ticks.push({time: n * step, text: timeText(n * step, decimals)});
    }
    return ticks;
}
