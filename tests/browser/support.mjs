// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// What the tests of the page share: recordings, pages made of them, and a browser that tells on them.
import assert from "node:assert/strict";
import {execFileSync} from "node:child_process";
import {mkdtempSync, rmSync} from "node:fs";
import {tmpdir} from "node:os";
import {join} from "node:path";
import {pathToFileURL} from "node:url";
import {chromium} from "playwright-core";

export const build = process.env.UICOV_BUILD;
export const source = process.env.UICOV_SOURCE_DIR;
const program = process.env.UICOV_PROGRAM;

const browserArguments = [
    "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync"
];

export function makeFolder() {
    return mkdtempSync(join(tmpdir(), "uicov-browser-"));
}

export function removeFolder(folder) {
    rmSync(folder, {recursive: true, force: true});
}

/** Runs uicov and gives back its standard output. */
export function uicov(...commandLine) {
    return execFileSync(program, commandLine, {encoding: "utf8", stdio: ["ignore", "pipe", "pipe"]});
}

/** One of the recordings that no application makes; gives back what was printed about it. */
export function makeRecording(kind, file) {
    return execFileSync(join(build, "tests", "makerecording"), [kind, file], {encoding: "utf8"});
}

export function recordDemo(panel, file) {
    uicov("run", "--screenshots", "-o", `${file}.uicov`, "--recording", file, "--", join(build, "demos", `${panel}-session`), "-silent");
}

/**
 * With the extension that knows views and controls, whatever the tests record with otherwise. The session waits a little
 * with each event, as a person does: a page that is left while it still slides in has no picture.
 */
export function recordControls(panel, file, ...options) {
    const {UICOV_CLASSIC, VORSK_RECORDING_EXTENSION, ...env} = process.env;
    assert.ok(UICOV_CLASSIC && VORSK_RECORDING_EXTENSION, "the tests' environment has changed");
    execFileSync(program, ["run", "--screenshots", ...options, "-o", `${file}.uicov`, "--recording", file, "--",
                           join(build, "demos", `${panel}-session`), "-silent", "-eventdelay", "100"],
                 {encoding: "utf8", stdio: ["ignore", "pipe", "pipe"], env});
}

export function makePage(recordings, file, ...options) {
    uicov("html", "-q", "-o", file, ...options, ...recordings);
    return pathToFileURL(file).href;
}

/** The last place and text that an application told of each element, from the messages alone. */
export function reportedElements(recording) {
    const elements = new Map();
    for (const line of uicov("dump", recording).split("\n")) {
        const match = /^\S+ (elementAdded|geometryChanged|textChanged) (#\d+) ?(\w*)/.exec(line);
        if (match) {
            const element = elements.get(match[2]) ?? {};
            const place = / left=(-?\d+) top=(-?\d+) right=(-?\d+) bottom=(-?\d+)/.exec(line);
            const text = match[1] === "textChanged" ? / text="([^"]*)"/.exec(line) : / "([^"]*)"/.exec(line);
            if (match[3]) {
                element.type = match[3];
            }
            if (text) {
                element.text = text[1];
            }
            if (place) {
                const [left, top, right, bottom] = place.slice(1).map(Number);
                element.place = [left, top, right - left + 1, bottom - top + 1];
            }
            elements.set(match[2], element);
        }
    }
    return [...elements.values()];
}

export async function launch() {
    return chromium.launch({executablePath: process.env.UICOV_CHROMIUM, args: browserArguments});
}

/**
 * Opens the page in a window of its own. What it complains about, and every request but the expected
 * ones, is collected; close() fails when there was any.
 */
export async function open(browser, url, options = {}) {
    const {allowed = [url.replace(/#.*/, "")], ...contextOptions} = options;
    const context = await browser.newContext({viewport: {width: 1280, height: 900}, ...contextOptions});
    const page = await context.newPage();
    const complaints = [];
    page.on("console", (message) => {
        if (["error", "warning"].includes(message.type())) {
            complaints.push(`console: ${message.text()}`);
        }
    });
    page.on("pageerror", (error) => complaints.push(`error: ${error.message}`));
    page.on("dialog", (dialog) => {
        complaints.push(`dialog: ${dialog.message()}`);
        dialog.dismiss();
    });
    page.on("request", (request) => {
        const address = request.url().replace(/#.*/, "");
        if (!address.startsWith("data:") && !allowed.some((start) => address.startsWith(start))) {
            complaints.push(`request: ${address}`);
        }
    });
    await page.goto(url);
    return {
        page, complaints, context,
        close: async () => {
            await context.close();
            assert.deepEqual(complaints, []);
        }
    };
}

/** Everything that the page's scripts know, as they got it. */
export function dataOf(page) {
    return page.evaluate(() => globalThis.uicovData ?? JSON.parse(document.getElementById("data").textContent));
}

/** The hash of a window's page. */
export function windowHash(key, values = {}) {
    return `#${new URLSearchParams({...values, w: key})}`;
}

/** The rows of the list that are in the document: name, state and whether selected. */
export function rowsOf(page) {
    return page.$$eval(".row", (rows) => rows.map((row) => ({
        name: row.querySelector(".name bdi").textContent,
        state: ["missed", "shown", "used", "ignored", "unopened"].find((state) => row.classList.contains(state)),
        isSelected: row.getAttribute("aria-selected") === "true"
    })));
}

/**
 * The outlines that are drawn: name, and place in pixels of the screen and of what was reported,
 * found from the screen alone.
 */
export function outlinesOf(page) {
    return page.$$eval(".picture .outline", (groups) => {
        const picture = document.querySelector(".stage .picture");
        const frame = picture.getBoundingClientRect();
        const [left, top, width] = picture.getAttribute("viewBox").split(" ").map(Number);
        const scale = frame.width / width;
        return groups.map((group) => {
            // The drawn line without its thickness: the shape's own box through what it is scaled by.
            const line = group.querySelector(".line");
            const box = line.getBBox();
            const matrix = line.getScreenCTM();
            const screen = {x: box.x * matrix.a + matrix.e, y: box.y * matrix.d + matrix.f,
                            width: box.width * matrix.a, height: box.height * matrix.d};
            return {
                name: group.querySelector("title").textContent, screen,
                place: [(screen.x - frame.x) / scale + left, (screen.y - frame.y) / scale + top,
                        screen.width / scale, screen.height / scale].map(Math.round)
            };
        });
    });
}

/** Sums up axe's violations of WCAG 2.1 A and AA. */
export async function violations(page) {
    const {readFileSync} = await import("node:fs");
    const axe = readFileSync(new URL("./node_modules/axe-core/axe.min.js", import.meta.url), "utf8");
    await page.evaluate(axe);
    const found = await page.evaluate(() => globalThis.axe.run(document, {
        runOnly: ["wcag2a", "wcag2aa", "wcag21a", "wcag21aa", "best-practice"]
    }));
    return found.violations.map((violation) =>
        `${violation.id}: ${violation.nodes.map((node) => `${node.html.slice(0, 120)} ${node.failureSummary}`).join(" | ")}`);
}
