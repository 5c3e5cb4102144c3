// Drives Chromium over the pipe that it offers for this, without a display and without a network.
import { spawn } from "node:child_process";
import { mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";

const kKeys = { ArrowLeft: 37, ArrowUp: 38, ArrowRight: 39, ArrowDown: 40, Tab: 9, Enter: 13, Home: 36, End: 35 };

export class Chromium {
    static async start(program, { hasWebGl = true } = {}) {
        const browser = new Chromium();
        browser.profile = mkdtempSync(join(tmpdir(), "corvid-chromium-"));
        const drawing = hasWebGl ? ["--use-angle=swiftshader", "--enable-unsafe-swiftshader"] : ["--disable-3d-apis"];
        browser.process = spawn(program, ["--headless=new", "--remote-debugging-pipe", "--no-sandbox", "--no-first-run",
            "--disable-dev-shm-usage", "--disable-background-networking", "--disable-component-update",
            "--host-resolver-rules=MAP * ~NOTFOUND", `--user-data-dir=${browser.profile}`, ...drawing, "about:blank"],
        { stdio: ["ignore", "ignore", "ignore", "pipe", "pipe"] });
        process.on("exit", () => browser.process.kill("SIGKILL")); // whatever goes wrong, it does not outlive the test
        browser.listen();
        const { targetInfos } = await browser.send("Target.getTargets");
        const page = targetInfos.find((target) => target.type === "page");
        browser.session = (await browser.send("Target.attachToTarget", { targetId: page.targetId, flatten: true })).sessionId;
        for (const domain of ["Page", "Runtime", "Log", "Network"])
            await browser.send(`${domain}.enable`);
        await browser.send("Network.emulateNetworkConditions", { offline: true, latency: 0, downloadThroughput: 0,
            uploadThroughput: 0 });
        return browser;
    }

    constructor() {
        this.name = "chromium";
        this.next = 1;
        this.waiting = new Map();
        this.complaints = []; // errors and warnings of the console
        this.requests = [];   // addresses that were asked for
        this.loaded = undefined;
    }

    listen() {
        let rest = Buffer.alloc(0);
        this.process.stdio[4].on("data", (bytes) => {
            rest = Buffer.concat([rest, bytes]);
            for (let end; (end = rest.indexOf(0)) >= 0; rest = rest.subarray(end + 1))
                this.receive(JSON.parse(rest.subarray(0, end).toString()));
        });
        this.process.on("exit", () => {
            for (const { reject } of this.waiting.values())
                reject(new Error("chromium has ended"));
        });
    }

    receive({ id, result, error, method, params }) {
        if (id !== undefined) {
            const { resolve, reject } = this.waiting.get(id);
            this.waiting.delete(id);
            return error ? reject(new Error(error.message)) : resolve(result);
        }
        if (method === "Page.loadEventFired")
            this.loaded?.();
        else if (method === "Network.requestWillBeSent")
            this.requests.push(params.request.url);
        else if (method === "Runtime.exceptionThrown")
            this.complaints.push(params.exceptionDetails.exception?.description ?? params.exceptionDetails.text);
        else if (method === "Runtime.consoleAPICalled" && ["error", "warning", "assert"].includes(params.type))
            this.complaints.push(params.args.map((arg) => arg.value ?? arg.description).join(" "));
        // How slowly pixels are read for pictures is the browser's remark about itself.
        else if (method === "Log.entryAdded" && ["error", "warning"].includes(params.entry.level)
            && !/GPU stall due to ReadPixels/.test(params.entry.text))
            this.complaints.push(params.entry.text);
    }

    send(method, params = {}) {
        const id = this.next++;
        this.process.stdio[3].write(JSON.stringify({ id, method, params, sessionId: this.session }) + "\0");
        return new Promise((resolve, reject) => this.waiting.set(id, { resolve, reject }));
    }

    async open(url) {
        const loaded = new Promise((resolve) => { this.loaded = resolve; });
        await this.send("Page.navigate", { url });
        await loaded;
    }

    // The value of the function's result, which is JSON.
    async run(script, ...args) {
        const { result, exceptionDetails } = await this.send("Runtime.evaluate", { returnByValue: true, awaitPromise: true,
            expression: `(${script})(...${JSON.stringify(args)})` });
        if (exceptionDetails)
            throw new Error(exceptionDetails.exception?.description ?? exceptionDetails.text);
        return result.value;
    }

    async press(key, { shift = false } = {}) {
        const event = { key, code: key, windowsVirtualKeyCode: kKeys[key] ?? key.charCodeAt(0), modifiers: shift ? 8 : 0 };
        if (key.length === 1)
            event.text = key;
        else if (key === "Enter")
            event.text = "\r";
        await this.send("Input.dispatchKeyEvent", { ...event, type: "keyDown" });
        await this.send("Input.dispatchKeyEvent", { ...event, type: "keyUp", text: undefined });
    }

    async click(x, y) {
        await this.drag({ x, y }, { x, y });
    }

    async drag(from, to) {
        const mouse = (type, { x, y }, buttons) => this.send("Input.dispatchMouseEvent", { type, x, y, buttons,
            button: type === "mouseMoved" ? "none" : "left", clickCount: 1 });
        await mouse("mouseMoved", from, 0);
        await mouse("mousePressed", from, 1);
        if (from.x !== to.x || from.y !== to.y) {
            await mouse("mouseMoved", { x: (from.x + to.x) / 2, y: (from.y + to.y) / 2 }, 1);
            await mouse("mouseMoved", to, 1);
        }
        await mouse("mouseReleased", to, 0);
    }

    async setScheme(scheme) {
        await this.send("Emulation.setEmulatedMedia", { features: [{ name: "prefers-color-scheme", value: scheme }] });
    }

    async resize(width, height) {
        await this.send("Emulation.setDeviceMetricsOverride", { width, height, deviceScaleFactor: 1, mobile: false });
    }

    // A PNG of what is to be seen.
    async picture() {
        return Buffer.from((await this.send("Page.captureScreenshot", { format: "png" })).data, "base64");
    }

    async close() {
        const ended = new Promise((resolve) => this.process.once("exit", resolve));
        this.send("Browser.close").catch(() => {});
        const timer = setTimeout(() => this.process.kill("SIGKILL"), 5000);
        await ended;
        clearTimeout(timer);
        rmSync(this.profile, { recursive: true, force: true, maxRetries: 5, retryDelay: 200 });
    }
}
