// The head of the page: how the run ended and why, to be read before anything is touched.

const SHOWN_FAILURES = 3;

function fillSummary(header, run, choose) {
    const {about} = run;
    const result = about.result || "unknown";
    document.title = `${RESULT_WORDS[result] || result}: ${programOf(about.command)}`;
    header.className = `result-${result.replaceAll(" ", "-")}`;
    header.replaceChildren(
        element(
            "h1", {}, element("span", {className: "result"}, RESULT_WORDS[result] || result),
            element("code", {}, about.command || "")),
        element("p", {className: "reason"}, about.resultText || ""), ...reasons(run, choose),
        element("p", {className: "faint"}, factsOf(run)));
}

function programOf(command = "") {
    return command.split(" ")[0].split("/").pop() || "a run";
}

function factsOf(run) {
    const {about} = run;
    const facts = [
        caseCounts(run),
        `lasted ${durationText(run.end)}`,
        about.start && `started ${about.start.replace("T", " ")}`,
        about.speed && about.speed !== "1" && `${about.speed} times the clock's speed`,
        about.clock,
        about.version && `version ${about.version}`,
    ];
    return facts.filter(Boolean).join(" · ");
}

function caseCounts(run) {
    const cases = casesOf(run);
    const counts = new Map();
    for (const event of cases) counts.set(stateWord(event), (counts.get(stateWord(event)) || 0) + 1);
    const parts = [...counts].map(([word, count]) => `${count} ${word}`);
    return cases.length ? `${countText(cases.length, "test case")}: ${parts.join(", ")}` : "no test cases";
}

function reasons(run, choose) {
    const lines = run.about.postMortem || [];
    const postMortem = element(
        "section", {className: "post-mortem", ariaLabel: "Post-mortem"},
        element("h2", {}, "What became of the services"),
        element("ul", {}, ...lines.map((line) => element("li", {}, line))));
    const failures = run.failedCases.map((event) => failureOf(event, choose));
    return [
        ...(lines.length ? [postMortem] : []), ...failures.slice(0, SHOWN_FAILURES),
        ...others(failures.slice(SHOWN_FAILURES))
    ];
}

function others(failures) {
    if (failures.length === 0) return [];
    return [element(
        "details", {}, element("summary", {}, `${countText(failures.length, "more failed case")}`),
        ...failures)];
}

function failureOf(event, choose) {
    const button = element("button", {type: "button", onclick: () => choose(event)}, "Show");
    button.ariaLabel = `Show ${event.name} in the time line`;
    return element(
        "section", {className: "failure", ariaLabel: `Failure of ${event.name}`},
        element(
            "h2", {}, `✖ ${event.name}`,
            element(
                "span", {className: "faint"},
                ` failed at ${timeText(event.end)} after ${durationText(event.end - event.start)} `),
            button),
        element("pre", {tabIndex: 0}, event.args.failure || "(it says nothing of why)"));
}
