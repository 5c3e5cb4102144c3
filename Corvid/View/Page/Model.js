// The model of a mesh with its switches; without WebGL, a line that says so.

let theStage; // made for the first mesh; null: there is no WebGL

function stage() {
    if (theStage === undefined) {
        try {
            theStage = new ModelStage();
        } catch (error) {
            theStage = null;
        }
    }
    return theStage;
}

function modelSection(mesh) {
    if (stage() === null)
        return element("p", { class: "notice", role: "note" },
            "This browser has no WebGL, or has it switched off, so the model cannot be drawn. Its values follow.");
    const toggles = (layers) => layers.map(({ key, name }) => {
        const box = element("input", { type: "checkbox", id: `layer-${key}`,
            onchange: (event) => stage().show(key, event.target.checked) });
        box.checked = stage().shown.has(key);
        return element("label", {}, box, name);
    });
    const controls = element("div", { class: "layers" },
        element("fieldset", {}, element("legend", {}, "Show"), ...toggles(kLayers.filter((layer) => layer.list === undefined))),
        element("fieldset", {}, element("legend", {}, "Vertices that face"),
            ...toggles(kLayers.filter((layer) => layer.list !== undefined))));
    const made = element("section", { class: "model" }, controls, stage().element,
        element("p", { class: "faint" }, "Drag to turn, scroll to zoom. With the model in focus: arrow keys turn, + and \u2212 zoom, 0 resets."));
    stage().open(mesh, document.title).catch(() => {
        stage().close();
        made.replaceChildren(element("p", { class: "notice" }, "The model cannot be drawn. Its values follow."));
    });
    return made;
}
