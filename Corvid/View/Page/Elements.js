// Makes elements. Whatever comes out of a file goes into text nodes and attributes only, never through markup.

function element(name, properties = {}, ...children) {
    const made = document.createElement(name);
    for (const [key, value] of Object.entries(properties)) {
        if (key.startsWith("on"))
            made.addEventListener(key.slice(2), value);
        else if (value !== undefined && value !== false)
            made.setAttribute(key, value === true ? "" : value);
    }
    made.append(...children.filter((child) => child !== undefined));
    return made;
}

function drawing(name, attributes = {}, ...children) {
    const made = document.createElementNS("http://www.w3.org/2000/svg", name);
    for (const [key, value] of Object.entries(attributes))
        made.setAttribute(key, value);
    made.append(...children);
    return made;
}

// Controls, invisible and directing characters, unpaired halves of pairs.
const kUnseen = /[\p{Cc}\p{Cf}\p{Zl}\p{Zp}\p{Cs}\uFFFE\uFFFF]/gu;

// The text as it is, isolated from the direction of what stands around it, with a mark behind what cannot be seen.
function shown(text) {
    const made = element("bdi");
    let from = 0;
    for (const match of text.matchAll(kUnseen)) {
        const code = "U+" + match[0].codePointAt(0).toString(16).toUpperCase().padStart(4, "0");
        made.append(text.slice(from, match.index), element("span", { class: "unseen", "data-code": code }, match[0]));
        from = match.index + match[0].length;
    }
    made.append(text.slice(from));
    return made;
}

// A path, which may be broken behind each '/'.
function shownPath(path) {
    const made = element("span");
    for (const part of path.split(/(?<=\/)/))
        made.append(shown(part), element("wbr"));
    return made;
}

const kRowsAtOnce = 200;

// Appends `make(i)` for each i below `count`, the first ones at once and the rest when they are asked for. `more` is
// where the button goes.
function appendInPortions(parent, more, count, make) {
    let done = 0;
    const button = element("button", { type: "button", onclick: append });
    function append() {
        const end = Math.min(count, done + kRowsAtOnce);
        const first = done;
        for (; done < end; ++done)
            parent.append(make(done));
        button.textContent = `Show ${formatCount(Math.min(kRowsAtOnce, count - done))} more of ${formatCount(count - done)}`;
        if (done === count)
            button.remove();
        if (first > 0)
            parent.children[first]?.querySelector("button, summary, a")?.focus();
    }
    append();
    if (done < count)
        more.append(button);
}

function formatCount(count) {
    return count.toLocaleString("en");
}

function formatBytes(bytes) {
    if (bytes < 1024)
        return `${bytes} bytes`;
    const [value, unit] = bytes < 1024 * 1024 ? [bytes / 1024, "KB"] : [bytes / 1024 / 1024, "MB"];
    return `${value < 10 ? value.toFixed(1) : formatCount(Math.round(value))} ${unit}`;
}

function plural(count, word) {
    return `${formatCount(count)} ${word}${count === 1 ? "" : "s"}`;
}
