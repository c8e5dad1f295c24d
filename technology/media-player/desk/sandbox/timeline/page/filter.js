// Which events the filter lets through.

class Filter {
    constructor(events) {
        this.events = events;
        this.words = [];
        this.problemsOnly = false;
    }

    // All that is known of an event, in small letters. Made when it is first asked for: it doubles the page's
    // data.
    get texts() {
        this.allTexts ??= this.events.map(
            (event) => [event.name, event.row.title, event.row.lane.title, stateWord(event),
                        ...Object.values(event.args)]
                           .join("\n")
                           .toLowerCase());
        return this.allTexts;
    }

    set(text, problemsOnly) {
        this.words = text.toLowerCase().split(/\s+/).filter(Boolean);
        this.problemsOnly = problemsOnly;
    }

    // One byte for each event, 1 for those with all the words; null when nothing is filtered.
    matches() {
        if (this.words.length === 0 && !this.problemsOnly) return null;
        const texts = this.words.length > 0 ? this.texts : null;
        return Uint8Array.from(
            this.events,
            (event, index) => (!this.problemsOnly || isProblem(event)) &&
                    this.words.every((word) => texts[index].includes(word)) ?
                1 :
                0);
    }
}
