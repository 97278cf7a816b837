// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// The page under rules, criteria, contexts and gates, and of several runs.
import assert from "node:assert/strict";
import {execFileSync} from "node:child_process";
import {mkdirSync, readFileSync, writeFileSync} from "node:fs";
import {join} from "node:path";
import {pathToFileURL} from "node:url";
import test, {after, before} from "node:test";
import {build, dataOf, launch, makeFolder, open, outlinesOf, recordDemo, removeFolder, rowsOf, uicov, violations,
        windowHash} from "./support.mjs";

let browser;
let folder;
const inFolder = (name) => join(folder, name);
const panel = "Window \"Heating panel\"";
const gates = ["--fail-under", "95", "--require-window", "Heating*"];
const configuration = `[[ignore]]
type = "Button"
text = "Reset"
why = "tried <by hand> before each release"

[[ignore]]
window = "Settings"

[[ignore]]
text = "Lampshade"

[criteria]
CheckBox = ["checked", "partiallyChecked"]

[report]
precision = 2
`;

/** Whatever it ends with, as long as a gate is all that is wrong. */
function uicovWithGates(...commandLine) {
    try {
        return {output: uicov(...commandLine), status: 0};
    } catch (error) {
        assert.equal(error.status, 2, error.stderr);
        return {output: error.stdout, status: error.status};
    }
}

function page(name, ...options) {
    const {status} = uicovWithGates("html", "-q", "-o", inFolder(name), ...options);
    return {url: pathToFileURL(inFolder(name)).href, status};
}

before(async () => {
    browser = await launch();
    folder = makeFolder();
    mkdirSync(inFolder("config"));
    writeFileSync(inFolder("config/uicov.toml"), configuration);
    recordDemo("panel-widgets", inFolder("panel.uirec"));
    ["namesTheRoom", "switchesNightSetback"].forEach((name, index) => {
        execFileSync(process.env.UICOV_PROGRAM, ["run", "-q", "--label", `build=${index + 1}`, "--context", "nightly", "-o",
            inFolder(`${name}.uicov`), "--", join(build, "demos", "panel-widgets-session"), "-silent", name], {stdio: "ignore"});
    });
});

after(async () => {
    await browser.close();
    removeFolder(folder);
});

const config = () => ["--config", inFolder("config/uicov.toml")];

test("a page of the data file is the page of its recording, byte for byte", () => {
    const pages = ["panel.uirec", "panel.uirec.uicov"].map((input) => {
        uicov("html", "-q", "--no-config", "-o", inFolder("same.html"), inFolder(input));
        return readFileSync(inFolder("same.html"));
    });
    assert.ok(pages[0].length > 50000);
    assert.ok(pages[0].equals(pages[1]));
});

for (const [name, options] of [["as it is", () => ["--no-config"]], ["with rules and criteria", config],
                               ["in one context", () => [...config(), "--contexts", "*namesTheRoom"]]]) {
    test(`the page says what uicov report says: ${name}`, async () => {
        const {url, status} = page("page.html", ...options(), ...gates, inFolder("panel.uirec"));
        const report = uicovWithGates("report", ...options(), ...gates, inFolder("panel.uirec"));
        assert.equal(status, 2);
        assert.equal(status, report.status);
        const [elements, used, shown, missed, cover] = /^TOTAL +(.*)$/m.exec(report.output)[1].split(/ +/);
        const {page: shownPage, close} = await open(browser, url);
        const sum = (await shownPage.locator(".sum").innerText()).replace(/\s+/g, " ");
        for (const part of [`${cover} used`, `${used} used`, `${shown} only shown`, `${missed} missed`, `Elements ${elements}`]) {
            assert.ok(sum.includes(part), `${part} in ${sum}`);
        }
        for (const line of report.output.split("\n").filter((text) => /^ {2}\S/.test(text))) {
            const [window, numbers] = /^ {2}(\S.*?) {2,}(.*)$/.exec(line).slice(1);
            const row = await shownPage.locator(".windows tbody tr").filter({hasText: window}).first().innerText();
            const [all, inUse, onlyShown, gone, share] = numbers.split(/ +/);
            assert.equal(row.replace(/\s+/g, " ").trim(), `${window} ${all} ${gone} ${onlyShown} ${inUse} ${share}`);
        }
        await close();
    });
}

test("gates stand below the totals, with what is and what was asked for", async () => {
    const {url} = page("gates.html", "--no-config", ...gates, inFolder("panel.uirec"));
    const {page: shownPage, close} = await open(browser, url);
    const items = (await shownPage.locator(".gates li").allInnerTexts()).map((text) => text.replace(/\s+/g, " "));
    assert.equal(items.length, 2);
    assert.match(items[0], /^not met fail-under 95: \d+ of \d+ elements are used, \d+%$/);
    assert.match(items[1], /^met require-window Heating\*: /);
    const [sum, list, windows] = await Promise.all([".sum", ".gates", ".windows"].map((part) => shownPage.locator(part).boundingBox()));
    assert.ok(sum.y < list.y && list.y < windows.y);
    assert.deepEqual(await violations(shownPage), []);
    await close();
});

test("what rules leave out is listed with rule and reason, in the overview and in its window", async () => {
    const {url} = page("rules.html", ...config(), inFolder("panel.uirec"));
    const {page: shownPage, close} = await open(browser, url);
    const rules = (await shownPage.locator(".rules tbody tr").allInnerTexts()).map((text) => text.replace(/\s+/g, " ").trim());
    assert.deepEqual(rules, [
        "type = \"Button\", text = \"Reset\" tried <by hand> before each release uicov.toml:1 1 0",
        "window = \"Settings\" uicov.toml:6 6 3",
        "text = \"Lampshade\" uicov.toml:9 0 0"]);
    await shownPage.locator(".rules a").first().click();
    await shownPage.waitForFunction(() => document.querySelector("#filter").value === "s:ignored");
    assert.equal(await shownPage.locator("#matches-title").innerText(), "Matches: 0 elements, 7 left out by rules");
    assert.equal((await rowsOf(shownPage)).length, 7);
    assert.ok((await rowsOf(shownPage)).every(({state}) => state === "ignored"));

    await shownPage.goto(url + windowHash(panel));
    await shownPage.waitForFunction(() => document.querySelector("#elements .row"));
    assert.match(await shownPage.locator(".status").innerText(), /^22 elements, 1 left out$/);
    const outline = (await outlinesOf(shownPage)).find(({name}) => name === "Button \"Reset\": ignored");
    assert.ok(outline.screen.width > 50);
    const row = shownPage.locator("#elements .row.ignored");
    await shownPage.fill("#filter", "reset");
    assert.match(await row.innerText(), /left out: tried <by hand> before each release/);
    assert.equal(await shownPage.locator("#elements .group").filter({hasText: "Left out by rules"}).count(), 1);
    await row.click();
    const text = (await shownPage.locator(".panel").innerText()).replace(/\s+/g, " ");
    for (const part of ["Left out of every number by a rule.", "Rule type = \"Button\", text = \"Reset\"",
                        "Why tried <by hand> before each release", "Where uicov.toml:1", "Without it shown", "clicked never"]) {
        assert.ok(text.includes(part), `${part} in ${text}`);
    }
    assert.equal(await shownPage.locator("text=Copy ignore rule").count(), 0);
    assert.deepEqual(await violations(shownPage), []);
    await close();
});

test("a window of which everything is left out is there, behind all others", async () => {
    const {url} = page("rules.html", ...config(), inFolder("panel.uirec"));
    const {page: shownPage, close} = await open(browser, url);
    const names = await shownPage.locator(".windows tbody th").allInnerTexts();
    assert.match(names.at(-1), /Settings/);
    for (const order of ["Cover", "Missed"]) {
        await shownPage.click(`.windows thead button:text('${order}')`);
        assert.equal(await shownPage.locator(".windows tbody tr").count(), names.length);
    }
    await shownPage.click(".windows a:has-text('Settings')");
    assert.match(await shownPage.locator(".title").innerText(), /- of 0 elements used/);
    assert.equal((await rowsOf(shownPage)).filter(({state}) => state === "ignored").length, 6);
    await shownPage.keyboard.press("n");
    assert.equal(await shownPage.locator(".toast").textContent(), "No further gap", "left out is no gap");
    await close();
});

test("the panel says what the criteria ask for, and whether it happened", async () => {
    const {url} = page("rules.html", ...config(), inFolder("panel.uirec"));
    const {page: shownPage, close} = await open(browser, url);
    const panelText = async (label) => {
        await shownPage.goto(url + windowHash(panel, {e: `${panel} > CheckBox "${label}"`}));
        return (await shownPage.locator(".panel").innerText()).replace(/\s+/g, " ");
    };
    assert.match(await panelText("Night setback"), /Used: all that is asked of a CheckBox happened \(checked\)\. .*checked asked for 1×/);
    assert.match(await panelText("Pump schedule"), /Only shown: .* not all that is asked of a CheckBox \(checked, partiallyChecked\)\. .*checked asked for never/);
    await close();
});

test("copied rules leave out what they were copied from", async () => {
    const {url} = page("page.html", "--no-config", inFolder("panel.uirec"));
    const {page: shownPage, context, close} = await open(browser, url + windowHash(panel, {e: `${panel} > MenuBar > MenuItem "File"`}));
    await context.grantPermissions(["clipboard-read", "clipboard-write"]);
    await shownPage.click("text=Copy ignore rule");
    await shownPage.waitForFunction(async () => (await navigator.clipboard.readText()).startsWith("[[ignore]]"));
    writeFileSync(inFolder("copied.toml"), await shownPage.evaluate(() => navigator.clipboard.readText()));
    await close();
    const report = JSON.parse(uicov("json", "--config", inFolder("copied.toml"), inFolder("panel.uirec")));
    assert.deepEqual(report.windows.flatMap(({elements}) => elements).filter((element) => element.ignored_by !== null).map(({key}) => key),
                     [`${panel} > MenuBar > MenuItem "File"`]);
});

test("runs are told with labels, contexts and what each was the first to use, and their trend is drawn", async () => {
    const files = ["namesTheRoom", "switchesNightSetback"].map((name) => inFolder(`${name}.uicov`));
    const {url} = page("runs.html", "--no-config", ...files, inFolder("panel.uirec"));
    const {page: shownPage, close} = await open(browser, url);
    const {runs, totals} = await dataOf(shownPage);
    assert.equal(runs.length, 3);
    assert.equal(runs.reduce((sum, run) => sum + run.first, 0), totals.used, "each element was used first by one run");
    const rows = await shownPage.locator(".runs tbody tr").allInnerTexts();
    const first = rows.find((row) => row.includes("build=1"));
    assert.match(first, /nightly\|PanelSession::namesTheRoom/);
    assert.equal(await shownPage.locator(".trend rect.used").count(), 3);
    const heights = await shownPage.$$eval(".trend rect.used", (bars) => bars.map((bar) => Number(bar.getAttribute("height"))));
    const numbers = (await shownPage.locator(".trend text").allTextContents()).map(Number);
    assert.deepEqual(numbers, runs.map((run) => run.totals.used));
    runs.forEach((run, index) => assert.ok(Math.abs(heights[index] - 70 * run.totals.used / totals.elements) < 0.01, `${heights[index]}`));
    await shownPage.click(".chip:has-text('nightly|PanelSession::namesTheRoom')");
    assert.equal(await shownPage.inputValue("#filter"), "c:\"nightly|PanelSession::namesTheRoom\"");
    assert.ok((await rowsOf(shownPage)).length > 5);
    await close();
});

test("contexts that do not count are told apart, and nothing of them is on the page", async () => {
    const {url} = page("page.html", "--no-config", "--contexts", "*namesTheRoom", inFolder("panel.uirec"));
    const {page: shownPage, close} = await open(browser, url);
    assert.deepEqual((await dataOf(shownPage)).contexts, ["PanelSession::namesTheRoom"]);
    assert.deepEqual(await shownPage.locator("a.chip").allInnerTexts(), ["PanelSession::namesTheRoom"]);
    assert.equal(await shownPage.locator(".chip.uncounted").count(), 3);
    assert.match(await shownPage.locator(".notes").innerText(), /Only what happened in contexts like this is counted: \*namesTheRoom/);
    await close();
});

test("dialogs are reached from the window that they belong to, and lead back", async () => {
    const {url} = page("page.html", "--no-config", inFolder("panel.uirec"));
    const {page: shownPage, close} = await open(browser, url + windowHash(panel));
    await shownPage.click(".surfaces a:has-text('Dialog \"Settings\"')");
    assert.equal(await shownPage.locator("h1").innerText(), "Dialog \"Settings\"");
    await shownPage.click(".title .over");
    assert.equal(await shownPage.locator("h1").innerText(), panel);
    await close();
});

test("without scripts rules, reasons and gates are there too", async () => {
    const {url} = page("rules.html", ...config(), ...gates, inFolder("panel.uirec"));
    const {page: shownPage, close} = await open(browser, url, {javaScriptEnabled: false});
    const text = await shownPage.locator(".static").innerText();
    assert.match(text, /not met: fail-under 95: /);
    assert.match(text, /left out by uicov\.toml:1: type = "Button", text = "Reset", because: tried <by hand> before each release/);
    assert.equal(await shownPage.locator(".static td.state.ignored").count(), 7);
    await close();
});
