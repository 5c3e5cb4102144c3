// A brush set drawn to scale: each state's rectangle of its texture, with the margins that divide it.

const kStates = ["Disabled", "Pressed", "CursorOver", "Focused", "Normal"];
const kRoom = 320;      // pixels of the page that the widest brush of a set takes at most when it is made to fit
const kMaxDrawn = 4096; // pixels of the page; what is larger is drawn at a scale of its own

function statesOf(brush) {
    const states = kStates.filter((state) => isRecord(brush[state])).map((state) => [state, brush[state]]);
    return states.length > 0 ? states : [["", brush]];
}

const boxOf = (state) => Array.isArray(state.pixelBox) ? state.pixelBox.map(toNumber) : [0, 0, 0, 0];
const longestSide = (state) => Math.max(boxOf(state)[2], boxOf(state)[3]);

function brushSection(set) {
    const brushes = Array.isArray(set.brush) ? set.brush : [];
    const sides = brushes.flatMap((brush) => statesOf(brush).map(([, state]) => longestSide(state)))
        .filter((side) => side > 0 && side <= kMaxDrawn);
    const fitting = Math.min(4, kRoom / sides.reduce((most, side) => Math.max(most, side), 1));

    const scale = element("select", { id: "scale" });
    for (const [name, value] of [["to fit", fitting], ["half size", 0.5], ["1 : 1", 1], ["2 : 1", 2], ["4 : 1", 4]])
        scale.append(element("option", { value }, name));
    const drawn = element("div");
    const draw = () => {
        const sheet = element("div", { class: "brushes" });
        drawn.replaceChildren(sheet);
        appendInPortions(sheet, drawn, brushes.length, (i) => brushFigure(brushes[i], Number(scale.value)));
    };
    scale.addEventListener("change", draw);
    draw();
    return element("section", {}, element("h3", {}, `Brushes (${formatCount(brushes.length)})`),
        element("p", {}, element("label", { for: "scale" }, "Scale "), scale, legend("stretch", "stretch margins"),
            legend("content", "content margins")), drawn);
}

function legend(name, text) {
    return element("span", { class: "legend faint" }, drawing("svg", { width: 28, height: 8, "aria-hidden": "true" },
        drawing("line", { x1: 0, y1: 4, x2: 28, y2: 4, class: name })), text);
}

function brushFigure(brush, scale) {
    const states = element("div", { class: "states" });
    for (const [name, state] of statesOf(brush))
        states.append(stateFigure(brush, name, state, scale));
    return element("figure", { class: "brush" }, element("figcaption", {}, shown(String(brush.name ?? ""))), states);
}

function stateFigure(brush, name, state, wantedScale) {
    const [x, y, width, height] = boxOf(state);
    const caption = element("figcaption");
    if (name !== "")
        caption.append(element("b", {}, name), " ");
    caption.append(`${width} \u00d7 ${height}`);
    if (!(width > 0 && height > 0)) {
        caption.append(" (nothing to draw)");
    } else if (typeof state.fileName === "string" && state.fileName !== "") {
        caption.append(" at ", `${x}, ${y} of `, shown(state.fileName));
    }
    if (!(width > 0 && height > 0))
        return element("figure", {}, caption);
    const scale = Math.min(wantedScale, kMaxDrawn / Math.max(width, height));
    if (scale < wantedScale)
        caption.append(element("span", { class: "warning" }, ` (not to scale: ${(scale / wantedScale).toPrecision(2)} of the others)`));
    return element("figure", {}, stateDrawing(brush, width, height, scale), caption);
}

function stateDrawing(brush, width, height, scale) {
    const [w, h] = [width * scale, height * scale];
    const made = drawing("svg", { width: w + 2, height: h + 2, viewBox: `-1 -1 ${w + 2} ${h + 2}`, role: "img" },
        drawing("title", {}, `${String(brush.name ?? "")}, ${width} by ${height} pixels`),
        drawing("rect", { x: 0, y: 0, width: w, height: h }));
    for (const [margins, name] of [[brush.stretchMargins, "stretch"], [brush.contentMargins, "content"]]) {
        if (!isRecord(margins))
            continue;
        const [left, right, top, bottom] = [margins.left, margins.right, margins.top, margins.bottom]
            .map((margin) => toNumber(margin) * scale);
        for (const at of [left, w - right])
            if (at >= 0 && at <= w)
                made.append(drawing("line", { x1: at, x2: at, y1: 0, y2: h, class: name }));
        for (const at of [top, h - bottom])
            if (at >= 0 && at <= h)
                made.append(drawing("line", { x1: 0, x2: w, y1: at, y2: at, class: name }));
    }
    return made;
}
