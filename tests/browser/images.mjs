// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Draws the page of the demo panels in every state that it has, for people to look at, and the pictures of the docs.
// UICOV_PROGRAM, UICOV_BUILD and UICOV_CHROMIUM as the tests have them; arguments: FOLDER [all].
import {execFileSync} from "node:child_process";
import {copyFileSync, mkdirSync, writeFileSync} from "node:fs";
import {join} from "node:path";
import {pathToFileURL} from "node:url";
import {build, launch, makeFolder, open, removeFolder, uicov, windowHash} from "./support.mjs";

const [folder, wanted = "docs"] = process.argv.slice(2);
const panel = "Window \"Heating panel\"";
const work = makeFolder();
mkdirSync(folder, {recursive: true});

/** A week of builds whose tests grow, so that there is something to follow. */
const tests = ["namesTheRoom", "switchesNightSetback", "exportsAsTable", "changesTheSettings"];
const files = [];
const seconds = () => Math.floor(Date.now() / 1000);
for (const [name, runs] of [["panel-widgets", [1, 2, 2, 3, 4]], ["panel-quick", [4]]]) {
    runs.forEach((many, index) => {
        const file = join(work, `${name}-${index}.uicov`);
        // Qt Quick has pictures of its windows on a display only.
        execFileSync("xvfb-run", ["-a", "-s", "-screen 0 1280x1024x24", process.env.UICOV_PROGRAM, "run", "-q", "--screenshots",
            "--label", `build=${41 + index}`, "-o", file, "--", join(build, "demos", `${name}-session`), "-silent",
            ...(many < tests.length ? tests.slice(0, many) : [])], {stdio: "ignore", env: {...process.env, QT_QPA_PLATFORM: "xcb"}});
        files.push(file);
        // Runs are in the order of the seconds in which they started.
        for (const second = seconds(); seconds() === second;) {
            Atomics.wait(new Int32Array(new SharedArrayBuffer(4)), 0, 0, 50);
        }
    });
}
const url = (name) => pathToFileURL(join(work, name)).href;
uicov("html", "-q", "--no-config", "--title", "Heating panel", "-o", join(work, "page.html"), ...files);
const reset = {e: `${panel} > Button "Reset"`};
const widgets = windowHash(`panel-widgets: ${panel}`, reset);
const quick = windowHash(`panel-quick: ${panel}`, reset);

/** [name, address, options of the browser, what is done there] */
const pictures = [
    ["html-overview", `${url("page.html")}`, {viewport: {width: 1280, height: 860}}],
    ["html-window", `${url("page.html")}${quick}`, {viewport: {width: 1440, height: 680}}]
];

if (wanted === "all") {
    const config = join(work, "uicov.toml");
    writeFileSync(config, `[[ignore]]\ntext = "Reset*"\nwhy = "tried by hand before each release"\n
[[ignore]]\nwindow = "About*"\nwhy = "text from the lawyers"\n[[ignore]]\ntext = "Lampshade"\n
[criteria]\nCheckBox = ["checked", "clicked"]\nTextInput = ["textEdited", "confirmed"]\n`);
    const gates = ["--fail-under", "80", "--require-window", "Heating*"];
    try {
        uicov("html", "-q", "--config", config, ...gates, "-o", join(work, "rules.html"), ...files);
    } catch (error) {
        if (error.status !== 2) {
            throw error;
        }
    }
    const killed = join(work, "killed.uirec");
    uicov("run", "-q", "--screenshots", "--recording", killed, "-o", join(work, "killed.uicov"), "--", join(build, "demos", "panel-widgets-session"), "-silent");
    const {readFileSync} = await import("node:fs");
    const bytes = readFileSync(killed);
    writeFileSync(killed, bytes.subarray(0, bytes.length - 3000));
    uicov("html", "-q", "--no-config", "-o", join(work, "partial.html"), killed);
    uicov("html", "-q", "--no-config", "--max-size", "0.115", "-o", join(work, "small.html"), files[0]);
    const page = url("page.html");
    const menu = windowHash(`panel-widgets: ${panel}`, {e: `${panel} > MenuBar > MenuItem "File" > Menu > MenuItem "Export"`});
    const ignored = windowHash(`panel-widgets: ${panel}`, {e: `${panel} > Button "Reset"`});
    const input = windowHash(`panel-widgets: ${panel}`, {e: `${panel} > CheckBox "Night setback"`});
    const dialog = windowHash("panel-widgets: Dialog \"Settings\"");
    uicov("run", "-q", "--screenshots", "-o", join(work, "sketch.uicov"), "--", join(build, "demos", "panel-quick-session"), "-silent");
    uicov("html", "-q", "--no-config", "-o", join(work, "sketch.html"), join(work, "sketch.uicov"));
    const narrow = {viewport: {width: 360, height: 740}, isMobile: true, hasTouch: true};
    const wide = {viewport: {width: 1920, height: 1080}};
    const usual = {viewport: {width: 1280, height: 860}};
    const press = (key) => (opened) => opened.keyboard.press(key);
    const whole = {fullPage: true};
    pictures.push(
        ["overview-dark", page, {...usual, colorScheme: "dark"}, null, whole],
        ["overview-whole", page, usual, null, whole],
        ["overview-filter", `${page}#f=s:missed+t:button`, usual],
        ["overview-problem", `${page}#f=q:1`, usual],
        ["overview-narrow", page, narrow, null, whole],
        ["overview-wide", page, wide],
        ["window-dark", page + widgets, {...usual, colorScheme: "dark"}],
        ["window-nothing-selected", page + windowHash(`panel-widgets: ${panel}`), usual],
        ["window-wide", page + widgets, wide],
        ["window-narrow", page + widgets, narrow, null, whole],
        ["window-filter", `${page + widgets}&f=s:missed`, usual],
        ["window-quick", page + quick, usual],
        ["window-dialog", page + dialog, usual],
        ["window-sketch", url("sketch.html") + windowHash(panel, reset), usual],
        ["window-nomatch", `${page + windowHash(`panel-widgets: ${panel}`)}&f=nothing`, usual],
        ["menu", page + menu, usual],
        ["help", page, usual, press("?")],
        ["help-narrow", page, narrow, press("?")],
        ["rules-overview", url("rules.html"), usual, null, whole],
        ["rules-window", url("rules.html") + ignored, usual],
        ["rules-criteria", url("rules.html") + input, usual],
        ["rules-ignored", `${url("rules.html")}#f=s:ignored`, usual, null, whole],
        ["partial", url("partial.html"), usual, null, whole],
        ["reduced", url("small.html") + windowHash(panel), usual],
        ["noscript", page, {...usual, javaScriptEnabled: false}, null, whole],
        ["noscript-narrow", page, {...narrow, javaScriptEnabled: false}, null, whole],
        ["noscript-rules", url("rules.html"), {...usual, javaScriptEnabled: false}, null, whole]);
}

const browser = await launch();
for (const [name, address, options, act, how] of pictures) {
    const {page, close} = await open(browser, address, {...options, allowed: [pathToFileURL(work).href]});
    await act?.(page);
    await page.mouse.move(0, 0);
    await page.screenshot({path: join(folder, `${name}.png`), ...how});
    await close();
}
if (wanted === "all") {
    const {page, close} = await open(browser, url("rules.html"));
    await page.pdf({path: join(folder, "print.pdf"), format: "A4", printBackground: true});
    copyFileSync(join(work, "page.html"), join(folder, "page.html"));
    copyFileSync(join(work, "rules.html"), join(folder, "rules.html"));
    await close();
}
await browser.close();
removeFolder(work);
