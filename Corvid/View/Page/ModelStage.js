// The canvas on which models turn. One serves all files, since a page has only so many drawing contexts; it draws when
// something has changed, and rests otherwise.

const kTurn = Math.PI / 24; // of one press of an arrow key
const kZoom = 1.15;
const kStart = [-0.9, 0.6, 1.7]; // where the camera stands first: above the front, at the model's right
const kDistance = 3.1;           // in radii of the model
const kMaxLabels = 100;

class ModelStage {
    // Throws when there is no WebGL.
    constructor() {
        this.canvas = element("canvas", { tabindex: 0, role: "img" });
        this.labels = element("div", { class: "labels", "aria-hidden": "true" });
        this.element = element("div", { class: "stage" }, this.canvas, this.labels, this.makeButtons());
        const context = this.canvas.getContext("webgl", { antialias: true }); // asked for here, three.js would complain aloud
        if (context === null)
            throw new Error("no WebGL");
        this.renderer = new THREE.WebGLRenderer({ canvas: this.canvas, context });
        this.renderer.gammaOutput = true;
        this.renderer.setPixelRatio(window.devicePixelRatio);
        this.camera = new THREE.PerspectiveCamera(40, 1, 0.01, 200);
        this.controls = new THREE.OrbitControls(this.camera, this.canvas);
        this.controls.enableKeys = false;
        this.controls.minDistance = 0.05;
        this.controls.maxDistance = 50;
        this.controls.addEventListener("change", () => this.draw());
        this.shown = new Set(["surface", "points"]); // keys of layers; they stay from file to file
        this.canvas.addEventListener("keydown", (event) => this.pressed(event));
        new ResizeObserver(() => this.draw()).observe(this.element);
        matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => this.recolour());
        this.makeScene();
    }

    makeButtons() {
        const button = (name, text, action) => element("button", { type: "button", "aria-label": name, title: name,
            onclick: action }, text);
        return element("div", { class: "buttons", role: "group", "aria-label": "View" },
            button("Zoom in", "+", () => this.zoom(kZoom)), button("Zoom out", "\u2212", () => this.zoom(1 / kZoom)),
            button("Put back", "Reset", () => this.reset()));
    }

    makeScene() {
        this.scene = new THREE.Scene();
        const light = new THREE.DirectionalLight(0xffffff, 0.75);
        light.position.set(0.4, 0.7, 1);
        this.camera.add(light, light.target);
        this.scene.add(this.camera, new THREE.HemisphereLight(0xffffff, 0x70707c, 0.35));
        this.holder = new THREE.Group(); // brings the model to the origin, and its radius to 1
        this.scene.add(this.holder);
    }

    // A model is { mesh, scene, radius, centre, colours, layers }.
    async open(mesh, name) {
        this.close();
        const opened = this.opened = {};
        const gltf = await parseGlb(mesh.glb.bytes);
        if (this.opened !== opened)
            return; // another file was chosen meanwhile
        const model = { mesh, scene: gltf.scene, layers: new Map() };
        for (const surface of surfacesOf(model))
            for (const attribute of Object.keys(surface.geometry.attributes).filter((key) => key.startsWith("_")))
                surface.geometry.deleteAttribute(attribute);
        Object.assign(model, extentOf(mesh));
        this.model = model;
        this.canvas.setAttribute("aria-label", `${name} in 3D. Arrow keys turn it, plus and minus zoom, 0 puts it back.`);
        const scale = 1 / model.radius;
        this.holder.scale.setScalar(scale);
        this.holder.position.set(...model.centre.map((value) => -value * scale));
        this.recolour();
        this.reset();
    }

    close() {
        this.opened = undefined;
        if (this.model !== undefined)
            this.removeLayers(true);
        this.model = undefined;
        this.labels.replaceChildren();
    }

    removeLayers(all) {
        for (const [key, layer] of this.model.layers) {
            if (key === "surface" && !all)
                continue;
            this.holder.remove(layer);
            this.model.layers.delete(key);
            layer.traverse((object) => {
                if (all || key !== "wire")
                    object.geometry?.dispose();
                for (const material of [object.material ?? []].flat())
                    material.dispose();
            });
        }
    }

    recolour() {
        if (this.model === undefined)
            return;
        const style = getComputedStyle(document.documentElement);
        const colour = (name) => new THREE.Color(style.getPropertyValue(`--${name}`).trim());
        this.model.colours = { line: colour("text"), accent: colour("accent"), stretch: colour("stretch"),
            content: colour("content") };
        this.renderer.setClearColor(colour("canvas"));
        this.removeLayers(false);
        this.update();
    }

    show(key, isShown) {
        if (isShown)
            this.shown.add(key);
        else
            this.shown.delete(key);
        this.update();
    }

    update() {
        if (this.model === undefined)
            return;
        for (const { key, make } of kLayers) {
            let layer = this.model.layers.get(key);
            if (layer === undefined && this.shown.has(key)) {
                layer = make(this.model);
                this.model.layers.set(key, layer);
                this.holder.add(layer);
            }
            if (layer !== undefined)
                layer.visible = this.shown.has(key);
        }
        const named = this.shown.has("points") ? this.model.mesh.points.slice(0, kMaxLabels) : [];
        this.labels.replaceChildren(...named.map((point) => element("span", {}, shown(point.name))));
        this.draw();
    }

    reset() {
        this.controls.target.set(0, 0, 0);
        this.camera.position.set(...kStart).setLength(kDistance);
        this.controls.update();
        this.draw();
    }

    turn(right, up) {
        const offset = this.camera.position.clone().sub(this.controls.target);
        const place = new THREE.Spherical().setFromVector3(offset);
        place.theta -= right;
        place.phi = Math.min(Math.PI - 0.001, Math.max(0.001, place.phi - up));
        this.camera.position.copy(this.controls.target).add(offset.setFromSpherical(place));
        this.controls.update();
        this.draw();
    }

    zoom(factor) {
        const offset = this.camera.position.clone().sub(this.controls.target);
        const length = Math.min(this.controls.maxDistance, Math.max(this.controls.minDistance, offset.length() / factor));
        this.camera.position.copy(this.controls.target).add(offset.setLength(length));
        this.controls.update();
        this.draw();
    }

    pressed(event) {
        if (event.ctrlKey || event.altKey || event.metaKey)
            return;
        const actions = {
            ArrowLeft: () => this.turn(-kTurn, 0), ArrowRight: () => this.turn(kTurn, 0),
            ArrowUp: () => this.turn(0, kTurn), ArrowDown: () => this.turn(0, -kTurn),
            "+": () => this.zoom(kZoom), "=": () => this.zoom(kZoom), "-": () => this.zoom(1 / kZoom),
            0: () => this.reset(),
        };
        if (actions[event.key] === undefined)
            return;
        event.preventDefault();
        actions[event.key]();
    }

    draw() {
        if (this.isDue)
            return;
        this.isDue = true;
        requestAnimationFrame(() => {
            this.isDue = false;
            const { clientWidth: width, clientHeight: height } = this.element;
            if (this.model === undefined || width === 0 || height === 0)
                return;
            this.renderer.setSize(width, height, false);
            this.camera.aspect = width / height;
            this.camera.updateProjectionMatrix();
            this.renderer.render(this.scene, this.camera);
            this.placeLabels(width, height);
        });
    }

    placeLabels(width, height) {
        const place = new THREE.Vector3();
        [...this.labels.children].forEach((label, i) => {
            this.holder.localToWorld(place.set(...this.model.mesh.points[i].position)).project(this.camera);
            label.hidden = place.z > 1;
            label.style.transform = `translate(${(place.x + 1) / 2 * width + 4}px, ${(1 - place.y) / 2 * height + 4}px)`;
        });
    }
}

function parseGlb(bytes) {
    const copy = bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.byteLength);
    return new Promise((resolve, reject) => new THREE.GLTFLoader().parse(copy, "", resolve, reject));
}

// The sphere about the middle of what is there: vertices, or else points.
function extentOf({ glb, points }) {
    const places = glb.vertexCount > 0 ? glb.read(glb.attributes.POSITION)
        : new Float32Array(points.flatMap((point) => point.position));
    const from = [Infinity, Infinity, Infinity];
    const to = [-Infinity, -Infinity, -Infinity];
    for (let i = 0; i < places.length; ++i) {
        from[i % 3] = Math.min(from[i % 3], places[i]);
        to[i % 3] = Math.max(to[i % 3], places[i]);
    }
    const centre = from.map((value, k) => (value + to[k]) / 2);
    const radius = Math.hypot(...from.map((value, k) => (to[k] - value) / 2));
    return { centre: centre.every(Number.isFinite) ? centre : [0, 0, 0], radius: radius > 0 && Number.isFinite(radius) ? radius : 1 };
}
