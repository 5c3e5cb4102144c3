// Puts the page together: the list, and beside it the file that was chosen. The address tells which, so that the
// browser's way back works.

const index = JSON.parse(blockText("index"));
const main = document.getElementById("object");
const list = new FileList(index.files, (number) => {
    location.hash = `file-${number}`;
});

function objectSections(file, number) {
    const json = valuesOf(number);
    if (json === undefined)
        return [element("p", { class: "notice" }, "Nothing of this file could be read.")];
    const values = parseValues(json);
    if (file.kind === "mesh" && modelOf(number) !== undefined)
        return [meshSection(number, values)];
    const made = [];
    if (file.kind === "brushes")
        made.push(brushSection(values));
    made.push(element("h3", {}, "Values"), valuesTable(values));
    return made;
}

function showFile(number) {
    const file = index.files[number];
    theStage?.close();
    list.mark(number);
    document.title = `${file.file} \u2013 corvid view`;
    main.replaceChildren(fileHead(file), ...objectSections(file, number));
    main.scrollTop = 0;
}

function showChosen() {
    const number = Number(/^#file-(\d+)$/.exec(location.hash)?.[1] ?? NaN);
    if (index.files[number] !== undefined)
        showFile(number);
    else if (main.querySelector("h2") === null && index.files.length > 0)
        showFile(0);
}

const broken = index.files.filter((file) => file.errors > 0).length;
document.getElementById("page-facts").textContent = `${plural(index.files.length, "file")}`
    + `${broken > 0 ? `, ${formatCount(broken)} with errors` : ""}. This page is ${formatBytes(index.pageBytes)} long.`;
if (index.files.length === 0)
    main.replaceChildren(element("p", { class: "notice" }, "There are no files on this page."));
addEventListener("hashchange", showChosen);
showChosen();
