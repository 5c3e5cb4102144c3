// What can be shown of a mesh, each as an object of the scene that is made when it is first wanted.

const kLayers = [
    { key: "surface", name: "Surface", make: (model) => model.scene },
    { key: "wire", name: "Wire", make: wireLayer },
    { key: "normals", name: "Normals", make: normalsLayer },
    { key: "points", name: "Points", make: pointsLayer },
    { key: "bounds", name: "Stored bounds", make: boundsLayer },
    ...kDirections.map((name, i) => ({ key: `list-${i}`, name, list: i, make: (model) => listLayer(model, i) })),
];
const kListColours = [0x1b9e3e, 0xd95f02, 0x7570f3, 0xe7298a, 0x00a0c8, 0xc8a000];
const kAxisColours = [0xe03c31, 0x2fa84f, 0x3b7de0];

function surfacesOf(model) {
    const surfaces = [];
    model.scene.traverse((object) => {
        if (object.isMesh)
            surfaces.push(object);
    });
    return surfaces;
}

function wireLayer(model) {
    const made = new THREE.Group();
    const material = new THREE.MeshBasicMaterial({ color: model.colours.line, wireframe: true });
    for (const surface of surfacesOf(model))
        made.add(new THREE.Mesh(surface.geometry, material));
    return made;
}

function segments(positions, colour, colours) {
    const geometry = new THREE.BufferGeometry();
    geometry.setAttribute("position", new THREE.BufferAttribute(new Float32Array(positions), 3));
    if (colours !== undefined)
        geometry.setAttribute("color", new THREE.BufferAttribute(new Float32Array(colours), 3));
    const material = new THREE.LineBasicMaterial(colours === undefined ? { color: colour } : { vertexColors: THREE.VertexColors });
    return new THREE.LineSegments(geometry, material);
}

function normalsLayer(model) {
    const { glb } = model.mesh;
    if (glb.vertexCount === 0 || glb.attributes.NORMAL === undefined)
        return new THREE.Group();
    const positions = glb.read(glb.attributes.POSITION);
    const normals = glb.read(glb.attributes.NORMAL);
    const ends = new Float32Array(positions.length * 2);
    const length = 0.06 * model.radius;
    for (let i = 0; i < positions.length; i += 3) {
        for (let k = 0; k < 3; ++k) {
            ends[2 * i + k] = positions[i + k];
            ends[2 * i + 3 + k] = positions[i + k] + length * normals[i + k];
        }
    }
    return segments(ends, model.colours.accent);
}

// The three axes of each point: X red, Y green, Z blue.
function pointsLayer(model) {
    const ends = [];
    const colours = [];
    for (const { position, axes } of model.mesh.points) {
        axes.forEach((axis, k) => {
            const colour = new THREE.Color(kAxisColours[k]).toArray();
            ends.push(...position, ...position.map((value, i) => value + 0.18 * model.radius * axis[i]));
            colours.push(...colour, ...colour);
        });
    }
    return segments(ends, undefined, colours);
}

// The box of the extents, and three circles of the radius about the origin.
function boundsLayer(model) {
    const made = new THREE.Group();
    const { bounds } = model.mesh;
    if (bounds === undefined)
        return made;
    if ([...bounds.from, ...bounds.to].every(Number.isFinite)) {
        const corner = (bits) => [0, 1, 2].map((k) => (bits >> k & 1 ? bounds.to : bounds.from)[k]);
        const ends = [];
        for (let bits = 0; bits < 8; ++bits)
            for (let k = 0; k < 3; ++k)
                if (!(bits >> k & 1))
                    ends.push(...corner(bits), ...corner(bits | 1 << k));
        made.add(segments(ends, model.colours.stretch));
    }
    if (Number.isFinite(bounds.radius) && bounds.radius > 0) {
        const steps = 96;
        const ends = [];
        for (let k = 0; k < 3; ++k) {
            for (let i = 0; i < steps; ++i) {
                for (const angle of [i, i + 1].map((step) => step * 2 * Math.PI / steps)) {
                    const place = [0, 0, 0];
                    place[(k + 1) % 3] = bounds.radius * Math.cos(angle);
                    place[(k + 2) % 3] = bounds.radius * Math.sin(angle);
                    ends.push(...place);
                }
            }
        }
        made.add(segments(ends, model.colours.content));
    }
    return made;
}

function listLayer(model, direction) {
    const { glb, lists } = model.mesh;
    const list = (lists[direction] ?? []).filter((index) => index >= 0 && index < glb.vertexCount);
    if (list.length === 0)
        return new THREE.Group();
    const positions = glb.read(glb.attributes.POSITION);
    const geometry = new THREE.BufferGeometry();
    const places = new Float32Array(list.length * 3);
    list.forEach((index, i) => places.set(positions.subarray(3 * index, 3 * index + 3), 3 * i));
    geometry.setAttribute("position", new THREE.BufferAttribute(places, 3));
    const material = new THREE.PointsMaterial({ color: kListColours[direction], size: 9, sizeAttenuation: false });
    return new THREE.Points(geometry, material);
}
