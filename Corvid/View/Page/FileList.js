// The list of the files, with its search and its keys.

function findingsOf(file) {
    return [["error", file.errors], ["warning", file.warnings]].filter(([, count]) => count > 0);
}

// Every word must be found in the file's path, its kind, or in what was found about it.
function searchTextOf(file) {
    const findings = file.diagnostics.map(({ severity, code, field, message }) => [severity, code, field, message].join(" "));
    return [file.file, file.kind, file.encoding, file.entityType, ...findings].join("\n").toLowerCase();
}

class FileList {
    constructor(files, show) {
        this.list = document.getElementById("files");
        this.search = document.getElementById("search");
        this.matches = document.getElementById("matches");
        this.show = show;
        this.entries = files.map((file, number) => this.makeEntry(file, number));
        this.list.append(...this.entries.map((entry) => entry.item));
        this.list.addEventListener("keydown", (event) => this.move(event));
        this.search.addEventListener("input", () => this.filter());
        this.search.addEventListener("keydown", (event) => {
            if (event.key === "ArrowDown" || event.key === "Enter") {
                event.preventDefault();
                this.visible()[0]?.button.focus();
            }
        });
        this.filter();
    }

    makeEntry(file, number) {
        const facts = element("span", { class: "facts" }, element("span", {}, file.kind || "unknown"),
            element("span", {}, formatBytes(file.bytes)));
        for (const [severity, count] of findingsOf(file))
            facts.append(element("span", { class: severity }, plural(count, severity)));
        const button = element("button", { type: "button", onclick: () => this.show(number) },
            element("span", { class: "name" }, shownPath(file.file)), facts);
        return { button, item: element("li", {}, button), text: searchTextOf(file) };
    }

    visible() {
        return this.entries.filter((entry) => !entry.item.hidden);
    }

    filter() {
        const words = this.search.value.toLowerCase().split(/\s+/).filter((word) => word !== "");
        for (const entry of this.entries)
            entry.item.hidden = !words.every((word) => entry.text.includes(word));
        this.list.scrollTop = 0;
        const count = this.visible().length;
        this.matches.textContent = words.length === 0 ? plural(count, "file")
            : `${formatCount(count)} of ${plural(this.entries.length, "file")}`;
    }

    mark(number) {
        this.entries.forEach((entry, i) => {
            if (i === number)
                entry.button.setAttribute("aria-current", "true");
            else
                entry.button.removeAttribute("aria-current");
        });
        this.entries[number].item.scrollIntoView({ block: "nearest" });
    }

    move(event) {
        const entries = this.visible();
        const at = entries.findIndex((entry) => entry.button === document.activeElement);
        const to = { ArrowDown: at + 1, ArrowUp: at - 1, Home: 0, End: entries.length - 1, PageDown: at + 10,
            PageUp: at - 10 }[event.key];
        if (to === undefined || at < 0)
            return;
        event.preventDefault();
        if (to < 0 && event.key === "ArrowUp")
            this.search.focus();
        else
            entries[Math.max(0, Math.min(to, entries.length - 1))].button.focus();
    }
}
