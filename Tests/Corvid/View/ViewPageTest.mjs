// node ViewPageTest.mjs BROWSER CORVID SOURCE PICTURES: what a person does with the page of `corvid view`, in a real
// browser without a network. Ends with 77 where there is no such browser, or no page.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { setTimeout as delay } from "node:timers/promises";
import { pathToFileURL } from "node:url";

import { Chromium } from "./Chromium.mjs";
import { Firefox } from "./Firefox.mjs";
import { cut, differingShare, readPng } from "./Png.mjs";

const kBrowsers = { chromium: [Chromium, ["chromium", "chromium-browser", "google-chrome"]],
    firefox: [Firefox, ["firefox-esr", "firefox"]] };
const kExamples = ["Brushes/ConsolePanels.brushes", "Brushes/Portraits.brushes", "Entity/HullFragments.entity",
    "Mesh/cube-binary.mesh", "Mesh/cube.mesh", "Particle/ReactorBlast.particle"].map((path) => `Examples/${path}`);
const kHostileName = "</script><script>document.title='run'</script><!-- \u2028 &amp;";

const [, , browserName, corvid, source, pictures] = process.argv;
const folder = mkdtempSync(join(tmpdir(), "corvid-view-"));
const [Browser, programs] = kBrowsers[browserName];
const program = programs.find((name) => spawnSync(name, ["--version"]).status === 0);
let browser;

function skip(reason) {
    console.log(`skipped: ${reason}`);
    process.exitCode = 77;
}

// The examples, a file with an error, a mesh with values that glTF cannot have, and a brush set with a name that would
// like to be markup.
function makePage() {
    writeFileSync(join(folder, "hostile.brushes"), "TXT\nonlyLoadOnDemand FALSE\nbrushCount 1\nbrush\n"
        + `\tname "${kHostileName}"\n\tcontent "Simple"\n\tfileName "<img src=x>"\n\tpixelBox [ 0 , 0 , 8 , 8 ]\n`);
    const cube = readFileSync(join(source, "Examples/Mesh/cube.mesh"), "utf8");
    writeFileSync(join(folder, "broken.mesh"), cube.replace("NumVertices", "NumVertexes"));
    writeFileSync(join(folder, "odd.mesh"), cube.replace("Normal [ 0.000000 1.000000", "Normal [ 0.000000 2.500000")
        .replace(/iVertex0 \d+/, "iVertex0 99").replace("iMaterial 0", "iMaterial 7"));
    const page = join(folder, "page.html");
    const run = spawnSync(corvid, ["view", ...kExamples, folder, "-o", page], { cwd: source, encoding: "utf8" });
    if (/libjs-three/.test(run.stderr))
        return undefined;
    assert.equal(run.status, 1, `a file with an error: ${run.stderr}`);
    return page;
}

const text = () => browser.run("() => document.getElementById('object').innerText");
const focused = () => browser.run("() => document.activeElement.id || document.activeElement.tagName");

async function choose(name) {
    await browser.run(`(name) => [...document.querySelectorAll("#files button")]
        .find((button) => button.textContent.includes(name)).click()`, name);
    await delay(700);
}

async function keep(name) {
    mkdirSync(pictures, { recursive: true });
    const bytes = await browser.picture();
    writeFileSync(join(pictures, `view-${name}-${browserName}.png`), bytes);
    return readPng(bytes);
}

async function canvas(name) {
    const box = await browser.run(`() => { const box = document.querySelector("canvas").getBoundingClientRect();
        return { x: box.x + 90, y: box.y + 50, width: box.width - 260, height: Math.min(box.height, innerHeight - box.y) - 70 }; }`);
    return { box, ...cut(await keep(name), box) };
}

async function testList(page) {
    await browser.open(pathToFileURL(page).href);
    await delay(800);
    assert.equal(await browser.run("() => document.querySelectorAll('#files li').length"), 9);
    assert.match(await browser.run("() => document.getElementById('page-facts').textContent"), /9 files, 1 with errors.*[KM]B long/);
    await browser.run("() => document.getElementById('search').focus()");
    for (const letter of "mesh")
        await browser.press(letter);
    assert.equal(await browser.run("() => document.getElementById('matches').textContent"), "4 of 9 files");
    await browser.press("ArrowDown");
    assert.equal(await focused(), "BUTTON");
    await browser.press("ArrowDown");
    await browser.press("Enter");
    await delay(700);
    assert.match(await browser.run("() => document.querySelector('h2').textContent"), /\.mesh$/);
    await browser.run(`() => { const search = document.getElementById("search"); search.value = "missing-field";
        search.dispatchEvent(new Event("input")); }`);
    assert.equal(await browser.run("() => document.getElementById('matches').textContent"), "1 of 9 files");
    await browser.run(`() => { const search = document.getElementById("search"); search.value = "";
        search.dispatchEvent(new Event("input")); }`);
}

async function testKinds() {
    const kExpected = [["ConsolePanels.brushes", ["LaunchButton", "Pressed", "96 × 96", "Panels.tga"]],
        ["ReactorBlast.particle", ["HasInfiniteLifeTime", "Sparks", "EmitRate"]],
        ["HullFragments.entity", ["Entity type", "entityType"]],
        ["cube.mesh", ["BoundingRadius", "CargoCrate-da.dds", "Hook-Top", "Vertex (24)", "Triangle (12)"]],
        ["broken.mesh", ["missing-field", "NumVertexes"]]];
    for (const [name, expected] of kExpected) {
        await choose(name);
        const shown = await text();
        for (const part of expected)
            assert.ok(shown.includes(part), `${name} shows ${part}:\n${shown}`);
        await keep(name.replace(/\..*/, ""));
    }
    await choose("odd.mesh");
    await browser.run(`() => document.querySelectorAll("details").forEach((it) => { it.open = /^(Vertex|Triangle)/
        .test(it.querySelector("summary").textContent); })`);
    await delay(200);
    const rows = await browser.run("() => [...document.querySelectorAll('tr')].map((row) => row.innerText.replace(/\\s+/g, ' ').trim())");
    assert.ok(rows.some((row) => row.startsWith("[0] -0.5, 0.5, -0.5 0, 2.5, 0 1, 0, 0 0, 1")), `a vertex as it is: ${rows}`);
    assert.ok(rows.some((row) => /^\[0\] 99 \d+ \d+ 7$/.test(row)), `a triangle of a vertex that does not exist: ${rows}`);
    assert.ok(await browser.run("() => document.querySelectorAll('.stage canvas').length") <= 1);
    await choose("hostile.brushes");
    assert.equal(await browser.run("() => document.querySelector('.brush figcaption').textContent"), kHostileName);
    assert.equal(await browser.run("() => document.querySelectorAll('img').length"), 0);
    assert.match(await browser.run("() => document.title"), /hostile\.brushes/);
}

async function testModel() {
    await choose("cube.mesh");
    const before = await canvas("model");
    assert.ok(before.colourCount > 10, `the canvas is not blank: ${before.colourCount} colours`);
    const middle = { x: before.box.x + before.box.width / 2, y: before.box.y + before.box.height / 2 };
    await browser.drag(middle, { x: middle.x + 120, y: middle.y + 40 });
    await delay(400);
    const dragged = await canvas("model-dragged");
    assert.ok(differingShare(before, dragged) > 0.02, "the mouse turns the model");
    await browser.run("() => document.querySelector('canvas').focus()");
    for (const key of ["ArrowLeft", "ArrowLeft", "ArrowUp"])
        await browser.press(key);
    await delay(400);
    const turned = await canvas("model-turned");
    assert.ok(differingShare(dragged, turned) > 0.02, "arrow keys turn the model");
    await browser.press("+");
    await browser.press("+");
    await delay(400);
    const zoomed = await canvas("model-zoomed");
    assert.ok(differingShare(turned, zoomed) > 0.02, "plus zooms");
    await browser.press("0");
    await delay(400);
    assert.ok(differingShare(before, await canvas("model")) < 0.01, "0 puts it back");

    let last = await canvas("model");
    for (const layer of ["surface", "wire", "normals", "bounds", "points", ...[0, 1, 2, 3, 4, 5].map((i) => `list-${i}`)]) {
        await browser.run("(id) => document.getElementById(id).click()", `layer-${layer}`);
        await delay(250);
        const next = await canvas("model-layers");
        assert.ok(differingShare(last, next) > 0 || /^list-[0-5]$/.test(layer), `${layer} is switched`);
        last = next;
    }
    await browser.run("() => document.getElementById('layer-surface').click()");
    await browser.setScheme("dark");
    await delay(400);
    const dark = await canvas("model-dark");
    assert.ok(differingShare(last, dark) > 0.5, "the page follows the system into the dark");
    await browser.setScheme("light");
}

// From the top, the keyboard comes by everything, and its place is to be seen.
async function testKeyboard() {
    await browser.run("() => { document.body.tabIndex = -1; document.body.focus(); }");
    const met = new Set();
    for (let i = 0; i < 45; ++i) {
        await browser.press("Tab");
        met.add(await browser.run(`() => { const it = document.activeElement;
            const outline = getComputedStyle(it).outlineStyle;
            return outline === "none" && it !== document.body ? "unseen " + it.outerHTML.slice(0, 80) : it.id || it.tagName; }`));
    }
    for (const wanted of ["search", "BUTTON", "layer-surface", "layer-bounds", "layer-list-5", "CANVAS", "SUMMARY"])
        assert.ok(met.has(wanted), `${wanted} is reached: ${[...met]}`);
    assert.deepEqual([...met].filter((name) => name.startsWith("unseen")), []);
}

// A folder of 500 files stays usable: the page comes at once, as does each file that is looked at.
async function testManyFiles() {
    const kMany = 500;
    const many = join(folder, "many");
    mkdirSync(many);
    const effect = readFileSync(join(source, "Examples/Particle/ReactorBlast.particle"));
    const cube = readFileSync(join(source, "Examples/Mesh/cube-binary.mesh"));
    for (let i = 0; i < kMany; ++i)
        writeFileSync(join(many, `file-${String(i).padStart(3, "0")}.${i % 5 === 0 ? "particle" : "mesh"}`), i % 5 === 0 ? effect : cube);
    const page = join(folder, "many.html");
    const run = spawnSync(corvid, ["view", many, "-o", page], { encoding: "utf8" });
    assert.equal(run.status, 0, run.stderr);
    const start = performance.now();
    await browser.open(pathToFileURL(page).href);
    assert.equal(await browser.run("() => document.querySelectorAll('#files li').length"), kMany);
    const loaded = performance.now();
    assert.ok(loaded - start < 15000, `the page is there after ${loaded - start} ms`);
    for (const name of ["file-499.mesh", "file-250.particle", "file-001.mesh"]) {
        const asked = performance.now();
        await browser.run(`(name) => [...document.querySelectorAll("#files button")]
            .find((button) => button.textContent.includes(name)).click()`, name);
        while (!(await text()).includes(name.endsWith("mesh") ? "BoundingRadius" : "EmitRate"))
            assert.ok(performance.now() - asked < 10000, `${name} is shown in time`);
        assert.match(await browser.run("() => document.querySelector('h2').textContent"), new RegExp(name));
    }
    await browser.run("() => document.getElementById('search').focus()");
    for (const letter of "-49")
        await browser.press(letter);
    assert.equal(await browser.run("() => document.getElementById('matches').textContent"), `10 of ${kMany} files`);
    await delay(500);
    await keep("many");
}

async function testWithoutWebGl(page) {
    browser = await Browser.start(program, { hasWebGl: false });
    await browser.resize(1280, 900);
    await browser.open(pathToFileURL(page).href);
    await choose("cube.mesh");
    const shown = await text();
    assert.match(shown, /no WebGL/);
    assert.match(shown, /BoundingRadius/);
    assert.equal(await browser.run("() => document.querySelectorAll('canvas').length"), 0);
    await browser.close();
    browser = undefined;
}

async function test(page) {
    await testWithoutWebGl(page);
    browser = await Browser.start(program);
    await browser.resize(1280, 900);
    await testList(page);
    await testKinds();
    const hasWebGl = await browser.run("() => document.createElement('canvas').getContext('webgl') !== null");
    if (hasWebGl) {
        await testModel();
        await testKeyboard();
    } else {
        console.log(`${browserName} has no WebGL here: models are not tested`);
    }
    await testManyFiles();
    const complaints = browser.complaints.filter((line) => hasWebGl || !/WebGL/.test(line));
    assert.deepEqual(complaints, [], "nothing in the console");
    assert.deepEqual(browser.requests.filter((url) => !/^(file|blob|data|about):/.test(url)), [], "nothing is fetched");
    console.log(`${browserName}: all well`);
}

try {
    const page = program === undefined ? undefined : makePage();
    if (program === undefined)
        skip(`${browserName} is not installed`);
    else if (page === undefined)
        skip("corvid was built without three.js");
    else
        await test(page);
} catch (error) {
    console.error(error);
    console.error(browser?.complaints);
    process.exitCode = 1;
} finally {
    await browser?.close();
    rmSync(folder, { recursive: true, force: true });
}
