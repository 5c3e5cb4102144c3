// A mesh: the model, if there is WebGL, and its values.

const kDirections = ["Up", "Down", "Left", "Right", "Front", "Back"]; // in the order of the file
const kOwnTables = ["Vertex", "Triangle"];

function meshSection(number, values) {
    const made = element("section");
    const data = values?.MeshData;
    const glb = new GlbFile(bytesOfBase64(modelOf(number)));
    const mesh = { glb, lists: vertexListsOf(number), bounds: storedBounds(data), points: storedPoints(data) };
    made.append(modelSection(mesh));

    made.append(element("h3", {}, "Values"));
    if (data !== undefined)
        made.append(valuesTable(withoutOwnTables(data)));
    const vertices = `Vertex (${formatCount(glb.vertexCount)})`;
    made.append(section(vertices, () => vertexTable(glb), false));
    const triangles = glb.triangles();
    made.append(section(`Triangle (${formatCount(triangles.length)})`, () => triangleTable(triangles), false));
    kDirections.forEach((direction, i) => {
        const list = mesh.lists[i] ?? [];
        made.append(section(`Vertices that face ${direction.toLowerCase()} (${formatCount(list.length)})`,
            () => indexList(list), false));
    });
    return made;
}

// What has tables of its own is empty among the values.
function withoutOwnTables(data) {
    const made = Object.create(null);
    for (const [label, value] of Object.entries(data))
        if (!kOwnTables.includes(label) && !label.startsWith("NumCachedVertexIndicesInDirection"))
            made[label] = value;
    return made;
}

function vertexTable(glb) {
    const made = element("div");
    const columns = glb.vertexColumns();
    const row = (i) => [[0, 3], [3, 3], [6, 3], [9, 2], [11, 2]].map(([first, width]) => element("span", { class: "value" },
        columns.slice(first, first + width).map((column) => floatText(column[i])).join(", ")));
    appendRows(made, ["", "Position", "Normal", "Tangent", "U0, V0", "U1, V1"], glb.vertexCount, row);
    return made;
}

function triangleTable(triangles) {
    const made = element("div");
    appendRows(made, ["", "iVertex0", "iVertex1", "iVertex2", "iMaterial"], triangles.length,
        (i) => triangles[i].map((index) => element("span", { class: "value" }, String(index))));
    return made;
}

const kIndicesAtOnce = 2000;

function indexList(list) {
    const made = element("div");
    const lines = Math.ceil(list.length / kIndicesAtOnce);
    const line = (i) => element("p", { class: "value" }, list.slice(i * kIndicesAtOnce, (i + 1) * kIndicesAtOnce).join(" "));
    if (lines === 0)
        return element("p", { class: "faint" }, "no vertices");
    const body = element("div");
    made.append(body);
    appendInPortions(body, made, lines, line);
    return made;
}

// In the coordinates of the model, where X is negated.
const mirrored = (vector) => [-toNumber(vector[0]), toNumber(vector[1]), toNumber(vector[2])];

function storedBounds(data) {
    if (!Array.isArray(data?.MinBoundingExtents) || !Array.isArray(data?.MaxBoundingExtents))
        return undefined;
    return { radius: toNumber(data.BoundingRadius), from: mirrored(data.MinBoundingExtents),
        to: mirrored(data.MaxBoundingExtents) };
}

function storedPoints(data) {
    const points = Array.isArray(data?.Point) ? data.Point : [];
    return points.filter((point) => Array.isArray(point.Position) && Array.isArray(point.Orientation)).map((point) => ({
        name: String(point.DataString ?? ""),
        position: mirrored(point.Position),
        axes: point.Orientation.map(mirrored),
    })).filter((point) => [...point.position, ...point.axes.flat()].every(Number.isFinite));
}
