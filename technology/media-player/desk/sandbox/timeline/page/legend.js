// What the shapes mean, drawn by what draws them in the lanes.

const LEGEND = [
    ["failed", "failed", "failed-edge"],
    ["error", "error reply", "failed-edge"],
    ["noreply", "no answer", "noreply-edge"],
    ["killed", "killed", "killed-edge"],
    ["skipped", "skipped", "skipped-edge"],
    ["running", "still ran at the end", "process-edge"],
    ["signal", "signal", "signal-edge"],
    ["critical", "critical line", "level-critical"],
    ["warning", "warning", "level-warning"],
    ["line", "other line", "level-debug"],
];

function drawLegend(legend) {
    const style = getComputedStyle(document.documentElement);
    legend.replaceChildren(...LEGEND.map(([mark, words, colour]) => {
        const canvas = element("canvas", {ariaHidden: "true"});
        const context = sizedContext(canvas, 16, 16);
        context.fillStyle = style.getPropertyValue("--paper");
        context.fillRect(0, 0, 16, 16);
        context.textBaseline = "middle";
        drawMark(
            context, mark, 8, 8, style.getPropertyValue(`--${colour}`), style.getPropertyValue("--paper"));
        return element("span", {}, canvas, words);
    }));
}
