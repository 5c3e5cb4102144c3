// Drives Firefox over its remote control, Marionette, without a display and without a network.
import { spawn } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { connect } from "node:net";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { setTimeout as delay } from "node:timers/promises";

const kKeys = { ArrowLeft: "\uE012", ArrowUp: "\uE013", ArrowRight: "\uE014", ArrowDown: "\uE015", Tab: "\uE004",
    Enter: "\uE007", Home: "\uE011", End: "\uE010" };
const kPreferences = { "marionette.port": 0, "network.proxy.type": 1, "network.proxy.http": "127.0.0.1",
    "network.proxy.http_port": 9, "network.proxy.ssl": "127.0.0.1", "network.proxy.ssl_port": 9,
    "webgl.force-enabled": true, "browser.shell.checkDefaultBrowser": false, "datareporting.policy.dataSubmissionEnabled": false,
    "app.normandy.enabled": false, "extensions.update.enabled": false, "toolkit.telemetry.enabled": false };

export class Firefox {
    static async start(program, { hasWebGl = true } = {}) {
        const browser = new Firefox();
        browser.profile = mkdtempSync(join(tmpdir(), "corvid-firefox-"));
        const preferences = { ...kPreferences, "webgl.disabled": !hasWebGl };
        writeFileSync(join(browser.profile, "user.js"), Object.entries(preferences)
            .map(([name, value]) => `user_pref(${JSON.stringify(name)}, ${JSON.stringify(value)});\n`).join(""));
        browser.process = spawn(program, ["--marionette", "--remote-allow-system-access", "--headless", "--no-remote", "--profile", browser.profile],
            { stdio: "ignore" });
        process.on("exit", () => browser.process.kill("SIGKILL")); // whatever goes wrong, it does not outlive the test
        await browser.connect();
        await browser.send("WebDriver:NewSession", { capabilities: {} });
        return browser;
    }

    constructor() {
        this.name = "firefox";
        this.next = 1;
        this.waiting = new Map();
        this.complaints = [];
        this.requests = [];
    }

    // The port stands in the profile once it is open.
    async connect() {
        for (let tries = 0; this.socket === undefined; ++tries) {
            await delay(250);
            try {
                const port = Number(readFileSync(join(this.profile, "MarionetteActivePort"), "utf8"));
                this.socket = await new Promise((resolve, reject) => {
                    const socket = connect(port, "127.0.0.1", () => resolve(socket)).once("error", reject);
                });
            } catch (error) {
                if (tries > 160 || this.process.exitCode !== null)
                    throw error;
            }
        }
        let rest = Buffer.alloc(0);
        this.socket.on("data", (bytes) => {
            rest = Buffer.concat([rest, bytes]);
            for (let colon; (colon = rest.indexOf(58)) > 0;) {
                const end = colon + 1 + Number(rest.subarray(0, colon).toString());
                if (rest.length < end)
                    break;
                this.receive(JSON.parse(rest.subarray(colon + 1, end).toString()));
                rest = rest.subarray(end);
            }
        });
    }

    receive(message) {
        if (!Array.isArray(message))
            return; // the greeting
        const [, id, error, result] = message;
        const { resolve, reject } = this.waiting.get(id);
        this.waiting.delete(id);
        if (error)
            reject(new Error(error.message));
        else
            resolve(result);
    }

    send(name, parameters = {}) {
        const id = this.next++;
        const text = JSON.stringify([0, id, name, parameters]);
        this.socket.write(`${Buffer.byteLength(text)}:${text}`);
        return new Promise((resolve, reject) => this.waiting.set(id, { resolve, reject }));
    }

    async open(url) {
        await this.send("WebDriver:Navigate", { url });
        await this.collectComplaints();
    }

    async run(script, ...args) {
        const { value } = await this.send("WebDriver:ExecuteScript", { script: `return (${script})(...arguments);`, args });
        await this.collectComplaints();
        return value;
    }

    // What the console has got from pages.
    async collectComplaints() {
        await this.send("Marionette:SetContext", { value: "chrome" });
        const { value } = await this.send("WebDriver:ExecuteScript", { args: [], sandbox: "system", script: `
            const found = Services.console.getMessageArray().filter((message) => message instanceof Ci.nsIScriptError
                && message.sourceName.startsWith("file:")).map((message) => message.errorMessage);
            Services.console.reset();
            return found;` });
        this.complaints.push(...value);
        await this.send("Marionette:SetContext", { value: "content" });
    }

    async act(type, actions, parameters) {
        await this.send("WebDriver:PerformActions", { actions: [{ type, id: type, actions, parameters }] });
    }

    async press(key, { shift = false } = {}) {
        const value = kKeys[key] ?? key;
        const around = shift ? [[{ type: "keyDown", value: "\uE008" }], [{ type: "keyUp", value: "\uE008" }]] : [[], []];
        await this.act("key", [...around[0], { type: "keyDown", value }, { type: "keyUp", value }, ...around[1]]);
    }

    async click(x, y) {
        await this.drag({ x, y }, { x, y });
    }

    async drag(from, to) {
        const move = ({ x, y }, duration) => ({ type: "pointerMove", x: Math.round(x), y: Math.round(y), duration });
        await this.act("pointer", [move(from, 0), { type: "pointerDown", button: 0 }, move(to, 100),
            { type: "pointerUp", button: 0 }], { pointerType: "mouse" });
    }

    async setScheme(scheme) {
        await this.send("Marionette:SetContext", { value: "chrome" });
        await this.send("WebDriver:ExecuteScript", { sandbox: "system", args: [scheme === "dark" ? 0 : 1],
            script: `Services.prefs.setIntPref("layout.css.prefers-color-scheme.content-override", arguments[0]);` });
        await this.send("Marionette:SetContext", { value: "content" });
    }

    async resize(width, height) {
        await this.send("WebDriver:SetWindowRect", { width, height: height + 90 });
    }

    async picture() {
        return Buffer.from((await this.send("WebDriver:TakeScreenshot", { full: false })).value, "base64");
    }

    async close() {
        const ended = new Promise((resolve) => this.process.once("exit", resolve));
        this.send("Marionette:Quit", { flags: ["eForceQuit"] }).catch(() => {});
        const timer = setTimeout(() => this.process.kill("SIGKILL"), 8000);
        await ended;
        clearTimeout(timer);
        this.socket.destroy();
        rmSync(this.profile, { recursive: true, force: true, maxRetries: 5, retryDelay: 200 });
    }
}
