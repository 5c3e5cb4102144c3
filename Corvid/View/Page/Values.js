// Any object as tables: a line for each value, nested records and lists under headings that open.

const isRecord = (value) => value !== null && typeof value === "object" && !Array.isArray(value)
    && !(value instanceof Numeral);
const isPlain = (value) => !isRecord(value)
    && !(Array.isArray(value) && value.some((member) => isRecord(member) || Array.isArray(member)));
const kColour = /^#([0-9a-f]{2})([0-9a-f]{6})$/i;

function valueElement(value) {
    if (typeof value === "string" && kColour.test(value)) {
        const [, alpha, rgb] = kColour.exec(value);
        const swatch = element("span", { class: "swatch", "aria-hidden": "true" });
        swatch.style.backgroundColor = `#${rgb}${alpha}`;
        return element("span", { class: "value" }, swatch, value);
    }
    if (typeof value === "string")
        return element("span", { class: "value" }, value === "" ? '""' : shown(value));
    return element("span", { class: "value" }, plainText(value));
}

function plainText(value) {
    if (value instanceof Numeral)
        return value.text;
    if (Array.isArray(value))
        return `[ ${value.map(plainText).join(", ")} ]`;
    return String(value);
}

// Lists of vectors are rows of a matrix.
const isMatrix = (value) => Array.isArray(value) && value.length > 0
    && value.every((row) => Array.isArray(row) && row.every((member) => !isRecord(member) && !Array.isArray(member)));

function valuesTable(record) {
    const made = element("div", { class: "values" });
    let rows;
    for (const [label, value] of Object.entries(record)) {
        const simple = isPlain(value) && !(Array.isArray(value) && value.length === 0);
        if (!simple && !isMatrix(value)) {
            rows = undefined;
            made.append(Array.isArray(value) ? listSection(label, value) : section(shown(label), () => valuesTable(value)));
            continue;
        }
        if (rows === undefined) {
            rows = element("tbody");
            made.append(element("div", { class: "table" }, element("table", {}, rows)));
        }
        const cell = element("td");
        if (simple)
            cell.append(valueElement(value));
        else
            value.forEach((row) => cell.append(element("div", {}, valueElement(row))));
        rows.append(element("tr", {}, element("th", { scope: "row" }, shown(label)), cell));
    }
    if (made.childElementCount === 0)
        made.append(element("p", { class: "faint" }, "no values"));
    return made;
}

// Built when it is opened first.
function section(heading, build, isOpen = true) {
    const body = element("div", { class: "nested" });
    const made = element("details", {}, element("summary", {}, heading), body);
    const fill = () => {
        if (made.open && body.childElementCount === 0)
            body.append(build());
    };
    made.addEventListener("toggle", fill);
    made.open = isOpen;
    fill();
    return made;
}

const kOpenElements = 3; // of a list; the others open on demand

function listSection(label, values) {
    const heading = element("span", {}, shown(label), ` (${formatCount(values.length)})`);
    if (values.length === 0)
        return element("div", { class: "faint" }, heading);
    return section(heading, () => {
        const made = element("div");
        if (values.every(isPlain)) {
            appendRows(made, ["", "value"], values.length, (i) => [valueElement(values[i])]);
        } else {
            const list = element("div");
            made.append(list);
            appendInPortions(list, made, values.length, (i) => elementSection(label, values[i], i, values.length));
        }
        return made;
    }, values.length <= 1000);
}

function elementSection(label, value, index, count) {
    const name = isRecord(value) ? Object.entries(value).find(([key, text]) => /name|string|type/i.test(key)
        && typeof text === "string" && text !== "") : undefined;
    const heading = element("span", {}, shown(`${label}[${index}]`));
    if (name !== undefined)
        heading.append(" ", element("b", {}, shown(name[1])));
    const build = () => isRecord(value) ? valuesTable(value) : listSection(label, value);
    return section(heading, build, count <= kOpenElements);
}

// A table with an index in front of each row; `cells` gives the elements of row i.
function appendRows(parent, headings, count, cells) {
    const body = element("tbody");
    const head = element("tr", {}, ...headings.map((heading) => element("th", { scope: "col" }, heading)));
    parent.append(element("div", { class: "table" }, element("table", {}, element("thead", {}, head), body)));
    appendInPortions(body, parent, count, (i) => element("tr", {}, element("th", { scope: "row" }, `[${i}]`),
        ...cells(i).map((cell) => element("td", {}, cell))));
}
