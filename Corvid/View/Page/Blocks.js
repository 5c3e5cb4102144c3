// What the page carries: an index of all files, and of each file blocks that are decoded when it is looked at.

function blockText(name) {
    return document.getElementById(name)?.textContent;
}

// A number as the file has it: 64 bits and the digits of a float survive in its text.
class Numeral {
    constructor(text) {
        this.text = text;
    }
}

const kStringOrNumber = /"(?:[^"\\]|\\.)*"|-?\d[\d.eE+-]*/g;

// JSON with numbers as Numeral: before it is parsed, a string gets an "s" in front, and a number becomes a string with "n".
function parseValues(json) {
    const marked = json.replace(kStringOrNumber, (token) => token[0] === '"' ? `"s${token.slice(1)}` : `"n${token}"`);
    return JSON.parse(marked, reviveMarked);
}

function reviveMarked(key, value) {
    if (typeof value === "string")
        return value[0] === "n" ? new Numeral(value.slice(1)) : value.slice(1);
    if (value === null || typeof value !== "object" || Array.isArray(value) || value instanceof Numeral)
        return value;
    const plain = Object.create(null); // labels are data: none of them means anything to the language
    for (const [label, member] of Object.entries(value))
        plain[label.slice(1)] = member;
    return plain;
}

// NaN and infinities are strings there, and become numbers here.
function toNumber(value) {
    const text = value instanceof Numeral ? value.text : String(value);
    if (/^[+-]?inf/i.test(text))
        return text[0] === "-" ? -Infinity : Infinity;
    return Number(text);
}

function bytesOfBase64(text) {
    const characters = atob(text);
    const bytes = new Uint8Array(characters.length);
    for (let i = 0; i < bytes.length; ++i)
        bytes[i] = characters.charCodeAt(i);
    return bytes;
}

const valuesOf = (number) => blockText(`values-${number}`);
const modelOf = (number) => blockText(`model-${number}`);
const vertexListsOf = (number) => JSON.parse(blockText(`lists-${number}`) ?? "[]");
