// The head of the page: how the run ended and why, to be read before anything is touched.

const SHOWN_FAILURES = 4;
const SHOWN_SUSPECTS = 5;

function fillSummary(header, run, choose) {
    const {about} = run;
    const result = about.result || "unknown";
    document.title = `${RESULT_WORDS[result] || result}: ${programOf(about.command)}`;
    header.className = `result-${result.replaceAll(" ", "-")}`;
    header.replaceChildren(
        element(
            "h1", {}, element("span", {className: "result"}, RESULT_WORDS[result] || result),
            element("code", {}, about.command || "")),
        element("p", {className: "reason"}, about.resultText || ""), reasons(run, choose),
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
        about.start && `started ${about.start.replace(/T([\d:]+).*?(Z?)$/, " $1$2").replace("Z", " UTC")}`,
        about.clock && about.clock.replace(/\.$/, ""),
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
    const failures = run.failedCases.map((event) => failureOf(event, choose));
    return element(
        "div", {className: "reasons"}, ...postMortem(run.about.postMortem || []),
        ...failures.slice(0, SHOWN_FAILURES), ...others(failures.slice(SHOWN_FAILURES)),
        ...suspects(suspectsOf(run), choose));
}

function reason(title, className, ...content) {
    return element("section", {className, ariaLabel: title}, element("h2", {}, title), ...content);
}

function postMortem(lines) {
    if (lines.length === 0) return [];
    const items = lines.map((line) => element("li", {}, line.replace(/^post-mortem: /, "")));
    return [reason("What became of the services", "wide", element("ul", {}, ...items))];
}

function failureOf(event, choose) {
    const time = ` failed at ${timeText(event.end)} after ${durationText(event.end - event.start)} `;
    const section = reason(
        `✖ ${event.name}`, "failure",
        element("pre", {tabIndex: 0}, (event.args.failure || "(it says nothing of why)").trim()));
    section.querySelector("h2").append(
        element("span", {className: "faint"}, time), showButton(event, choose));
    return section;
}

function showButton(event, choose) {
    const ariaLabel = `Show ${event.name} in the time line`;
    return element("button", {type: "button", ariaLabel, onclick: () => choose(event)}, "Show");
}

function others(failures) {
    if (failures.length === 0) return [];
    const summary = element("summary", {}, `${countText(failures.length, "more failed case")}`);
    return [element("details", {className: "wide"}, summary, ...failures)];
}

function suspects(events, choose) {
    if (events.length === 0) return [];
    const more = events.length - SHOWN_SUSPECTS;
    const items =
        events.slice(0, SHOWN_SUSPECTS).map((event) => element("li", {}, suspectButton(event, choose)));
    if (more > 0) items.push(element("li", {}, `${more} more: see Problems only`));
    return [reason("Also seen", "suspects", element("ul", {}, ...items))];
}

function suspectButton(event, choose) {
    const button = element("button", {type: "button", className: "link", onclick: () => choose(event)});
    button.append(element("span", {className: "faint"}, timeText(markTime(event))), ` ${suspicionOf(event)}`);
    return button;
}
