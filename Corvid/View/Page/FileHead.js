// What is known of a file before its object is looked at.

function factList(facts) {
    return element("dl", { class: "facts-of-file" }, ...facts.filter(([, value]) => value !== "" && value !== undefined)
        .map(([name, value]) => element("div", {}, element("dt", {}, name), element("dd", {}, value))));
}

function fileHead(file) {
    const made = element("div", {}, element("h2", {}, shownPath(file.file)));
    made.append(factList([["Kind", file.kind || "unknown"], ["Encoding", file.encoding],
        ["Size", formatBytes(file.bytes)], ["Entity type", file.entityType && shown(file.entityType)]]));
    if (file.diagnostics.length > 0)
        made.append(element("h3", {}, "Diagnostics"), diagnosticsList(file));
    return made;
}

function diagnosticsList(file) {
    const made = element("ul", { class: "diagnostics" });
    for (const { severity, code, place, field, message, leftOut } of file.diagnostics) {
        if (leftOut !== undefined) {
            made.append(element("li", {}, element("span", {}, `${plural(leftOut, "diagnostic")} left out`)));
            continue;
        }
        const line = element("li", { class: severity }, element("strong", {}, severity), " ");
        if (place !== "")
            line.append(element("span", { class: "place" }, place), " ");
        if (field !== "")
            line.append(element("code", {}, shown(field)), element("span", {}, ": "));
        line.append(element("span", {}, shown(message)), " ", element("span", { class: "place" }, `[${code}]`));
        made.append(line);
    }
    return made;
}
