// The vertices and triangles of an exported mesh, back in the engine's coordinates and in the order of its file. What
// glTF's own attributes cannot hold (a NaN, a normal that is not of length one) stands in attributes of ours, as the two
// halves of each float's bits.

const kVertexParts = [["POSITION", "_POSITION", "XYZ"], ["NORMAL", "_NORMAL", "XYZ"], ["TANGENT", "_TANGENT", "XYZ"],
    ["TEXCOORD_0", "", "UV", "0"], ["TEXCOORD_1", "", "UV", "1"]];
const kComponentArrays = { 5121: Uint8Array, 5123: Uint16Array, 5125: Uint32Array, 5126: Float32Array };
const kWidths = { SCALAR: 1, VEC2: 2, VEC3: 3, VEC4: 4 };

class GlbFile {
    constructor(bytes) {
        const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
        const jsonLength = view.getUint32(12, true);
        this.json = JSON.parse(new TextDecoder().decode(bytes.subarray(20, 20 + jsonLength)));
        this.bytes = bytes;
        this.binary = bytes.subarray(Math.min(bytes.length, 20 + jsonLength + 8));
        this.primitives = this.json.meshes?.[0]?.primitives ?? [];
        this.attributes = this.primitives[0]?.attributes ?? {};
        this.vertexCount = this.json.accessors?.[this.attributes.POSITION]?.count ?? 0;
    }

    // Numbers of an accessor, one element after the other; a copy, since offsets need not suit the type.
    read(index) {
        const accessor = this.json.accessors[index];
        const width = kWidths[accessor.type];
        const array = new kComponentArrays[accessor.componentType](accessor.count * width);
        if (accessor.bufferView === undefined)
            return array;
        const view = this.json.bufferViews[accessor.bufferView];
        const size = width * array.BYTES_PER_ELEMENT;
        const stride = view.byteStride ?? size;
        const start = (view.byteOffset ?? 0) + (accessor.byteOffset ?? 0);
        const bytes = new Uint8Array(array.buffer);
        for (let i = 0; i < accessor.count; ++i)
            bytes.set(this.binary.subarray(start + i * stride, start + i * stride + size), i * size);
        return array;
    }

    // Columns of 13 floats: position, normal, tangent, both texture coordinates.
    vertexColumns() {
        const columns = [];
        for (const [standard, own, axes, set] of kVertexParts) {
            const index = this.attributes[standard];
            const values = index === undefined ? undefined : this.read(index);
            const width = index === undefined ? 0 : kWidths[this.json.accessors[index].type];
            [...axes].forEach((axis, k) => {
                const column = new Float32Array(this.vertexCount);
                for (let i = 0; values !== undefined && i < column.length; ++i)
                    column[i] = values[i * width + k];
                if (axis === "X")
                    column.forEach((value, i) => { column[i] = -value; });
                const exact = this.attributes[set === undefined ? `${own}_${axis}` : `_${axis}${set}`];
                columns.push(exact === undefined ? column : floatsOfHalves(this.read(exact)));
            });
        }
        return columns;
    }

    // Rows of four: three vertices and the material. Triangles of vertices that do not exist stand in the notes, each
    // behind its place in the list.
    triangles() {
        const rows = [];
        for (const primitive of this.primitives) {
            if (primitive.indices === undefined)
                continue;
            const material = primitive.material ?? Number(primitive.extras?.["corvid.iMaterial"] ?? -1);
            const indices = this.read(primitive.indices);
            for (let i = 0; i + 2 < indices.length; i += 3)
                rows.push([indices[i], indices[i + 2], indices[i + 1], material]);
        }
        const others = (this.json.nodes?.[0]?.extras?.["corvid.OtherTriangles"] ?? "").split(" ").filter(Boolean).map(Number);
        if (others.length === 0)
            return rows;
        const all = [];
        let taken = 0;
        for (let i = 0; i + 4 < others.length; i += 5) {
            while (all.length < others[i] && taken < rows.length)
                all.push(rows[taken++]);
            all.push(others.slice(i + 1, i + 5));
        }
        return all.concat(rows.slice(taken));
    }
}

function floatsOfHalves(halves) {
    const bits = new Uint32Array(halves.length / 2);
    for (let i = 0; i < bits.length; ++i)
        bits[i] = (halves[2 * i] | halves[2 * i + 1] << 16) >>> 0;
    return new Float32Array(bits.buffer);
}

// The shortest decimals that give the float back.
function floatText(value) {
    if (!Number.isFinite(value) || Object.is(value, -0))
        return Object.is(value, -0) ? "-0" : String(value).toLowerCase();
    for (let digits = 1; digits < 9; ++digits) {
        const rounded = Number(value.toPrecision(digits));
        if (Math.fround(rounded) === value)
            return String(rounded);
    }
    return String(Number(value.toPrecision(9)));
}
