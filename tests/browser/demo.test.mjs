// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// The page of the demo panels' real sessions, used with mouse and keyboard.
import assert from "node:assert/strict";
import {join} from "node:path";
import test, {after, before} from "node:test";
import {dataOf, launch, makeFolder, makePage, open, outlinesOf, recordDemo, removeFolder, reportedElements,
        rowsOf, uicov, violations, windowHash} from "./support.mjs";

let browser;
let folder;
let url;
const panel = "Window \"Heating panel\"";
const recording = (name) => join(folder, `${name}.uirec`);

before(async () => {
    browser = await launch();
    folder = makeFolder();
    recordDemo("panel-widgets", recording("panel-widgets"));
    recordDemo("panel-quick", recording("panel-quick"));
    url = makePage([recording("panel-widgets"), recording("panel-quick")], join(folder, "page.html"));
});

after(async () => {
    await browser.close();
    removeFolder(folder);
});

const widgets = (values) => url + windowHash(`panel-widgets: ${panel}`, values);
const quick = (values) => url + windowHash(`panel-quick: ${panel}`, values);
const selected = async (page) => (await rowsOf(page)).filter((row) => row.isSelected).map((row) => row.name);

test("the totals are those of uicov report", async () => {
    const {page, close} = await open(browser, url);
    const report = uicov("report", recording("panel-widgets"), recording("panel-quick"));
    const [elements, used, shown, missed, cover] = /^TOTAL +(.*)$/m.exec(report)[1].split(/ +/);
    const sum = await page.locator(".sum").innerText();
    for (const part of [`${cover} used`, `${used} used`, `${shown} only shown`, `${missed} missed`]) {
        assert.ok(sum.replace(/\s+/g, " ").includes(part), `${part} in ${sum}`);
    }
    assert.match(sum, new RegExp(`Elements\\s+${elements}\\b`));
    const windows = await page.$$eval(".windows tbody tr", (rows) => rows.map((row) => row.innerText.replace(/\s+/g, " ")));
    assert.equal(windows.length, report.split("\n").filter((line) => /^ {2}\S/.test(line)).length);
    const missedCounts = await page.$$eval(".windows tbody tr", (rows) => rows.map((row) => Number(row.children[4].innerText)));
    assert.deepEqual(missedCounts, [...missedCounts].sort((a, b) => b - a), "the most missed first");
    await close();
});

test("windows are sorted by the column that is clicked, and back", async () => {
    const {page, close} = await open(browser, url);
    const names = () => page.$$eval(".windows tbody th a", (links) => links.map((link) => link.textContent.toLowerCase()));
    await page.click(".windows thead button:text('Window')");
    const sorted = await names();
    assert.deepEqual(sorted, [...sorted].sort());
    await page.click(".windows thead button:text('Window')");
    assert.deepEqual(await names(), [...sorted].sort().reverse());
    assert.equal(await page.locator("th[aria-sort=descending]").count(), 1);
    await close();
});

for (const [name, address, types] of [["widgets", widgets, ["Button", "CheckBox", "TextInput", "Table", "ToolBar"]],
                                      ["quick", quick, ["Button", "CheckBox", "TextInput"]]]) {
    test(`outlines lie where the application said that its ${name} are`, async () => {
        const {page, close} = await open(browser, address());
        const reported = reportedElements(recording(`panel-${name}`)).filter(({place}) => place);
        const outlines = (await outlinesOf(page)).filter(({name: title}) => types.some((type) => title.startsWith(type)));
        assert.ok(outlines.length >= 8, String(outlines.length));
        for (const outline of outlines) {
            const [, type, , label] = /^(\w+)( "(.*?)")?/.exec(outline.name);
            const places = reported.filter((element) => element.type === type && (!label || element.text?.replace("...", "") === label))
                .map(({place}) => place.join());
            assert.ok(places.includes(outline.place.join()), `${outline.name}: ${outline.place} among ${places}`);
        }
        await close();
    });
}

test("items of the menu bar lie in the window, not in the bar", async () => {
    const {page, close} = await open(browser, widgets());
    const reported = reportedElements(recording("panel-widgets"));
    const bar = reported.find(({type}) => type === "MenuBar").place;
    for (const text of ["File", "View", "Help"]) {
        const item = reported.find((element) => element.text === text && element.type === "MenuItem").place;
        const outline = (await outlinesOf(page)).find(({name}) => name.startsWith(`MenuItem "${text}"`));
        assert.deepEqual(outline.place, [item[0] + bar[0], item[1] + bar[1], item[2], item[3]]);
    }
    await close();
});

test("picture, list and panel go together", async () => {
    const {page, close} = await open(browser, widgets());
    await page.click(".outline[data-node]:has(title:text-matches('Button \"Reset\"'))", {force: true});
    assert.deepEqual(await selected(page), ["Reset"]);
    assert.equal(await page.locator("#panel-title").innerText(), "Reset");
    assert.equal(await page.locator(".outline.selected title").textContent(), "Button \"Reset\": shown");

    await page.locator("#elements .row").filter({hasText: "Apply"}).click();
    assert.equal(await page.locator(".outline.selected title").textContent(), "Button \"Apply\": used");
    assert.match(await page.locator(".events").innerText(), /clicked\s+1×/);
    assert.equal(await page.locator(".outline.selected").count(), 1);

    await page.locator("#elements .row").filter({hasText: "Night setback"}).hover();
    assert.match(await page.locator(".outline.hovered title").textContent(), /Night setback/);
    await page.hover(".outline[data-node]:has(title:text-matches('Frost'))", {force: true});
    assert.match(await page.locator(".row.hovered").innerText(), /Frost protection/);
    await close();
});

test("the panel has all that is known", async () => {
    const {page, close} = await open(browser, widgets({e: `${panel} > CheckBox "Night setback"`}));
    await page.$$eval(".panel details", (all) => all.forEach((details) => { details.open = true; }));
    const text = (await page.locator(".panel").innerText()).replace(/\s+/g, " ");
    for (const part of ["Used:", "checked 1×", "unchecked not counted by this version", "Type CheckBox", "Class QCheckBox",
                        `Key ${panel} > CheckBox "Night setback"`]) {
        assert.ok(text.includes(part), `${part} in ${text}`);
    }
    assert.equal(await page.locator(".portrait .own").count(), 1);
    const dump = uicov("json", "--no-config", recording("panel-widgets"));
    const element = JSON.parse(dump).windows.flatMap(({elements}) => elements).find(({key}) => key === `${panel} > CheckBox "Night setback"`);
    for (const {name, contexts} of element.events) {
        const row = page.locator(".events tr", {has: page.locator(`th:text-is("${name}"), th:has(bdi:text-is("${name}"))`)});
        for (const [context, count] of Object.entries(contexts)) {
            const where = (await row.locator("xpath=following-sibling::tr[1]").innerText()).replace(/\s+/g, " ");
            assert.ok(where.includes(`${context} ${count}`), `${context} ${count} in ${where}`);
        }
    }
    await close();
});

test("the focus goes from the top to the bottom, and everything that can be operated gets it", async () => {
    const {page, close} = await open(browser, widgets({e: `${panel} > Button "Reset"`}));
    const seen = [];
    for (let i = 0; i < 40; ++i) {
        await page.keyboard.press("Tab");
        const name = await page.evaluate(() => {
            const element = document.activeElement;
            return element === document.body ? "" : element.id || element.getAttribute("aria-label") || (element.querySelector(".caption") ?? element).textContent.trim();
        });
        if (name === "" || name === seen[0]) {
            break;
        }
        seen.push(name);
    }
    const wanted = ["uicov", "filter", "Never used10", "missed0", "shown10", "used13", "Dark", "Help", "‹ Overview", "Previous window",
                    "Next window", "Smaller (-)", "Larger (+)", "Fit (0)", "Picture", "Window", "Menu File", "Menu File › Export", "Dialog \"Settings\" ↗", "order", "elements",
                    "Selected", "Copy keyc", "Copy ignore rule", "Copy link"];
    assert.deepEqual(seen.filter((name) => wanted.includes(name)), wanted.filter((name) => seen.includes(name)), "in that order");
    assert.deepEqual(wanted.filter((name) => !seen.includes(name)), [], `among ${seen}`);
    await close();
});

test("n and p go from gap to gap, also into the next window", async () => {
    const {page, close} = await open(browser, widgets());
    const data = await dataOf(page);
    const window = data.windows.find((one) => one.application === "panel-widgets" && data.nodes[one.node].label === "Heating panel");
    const gaps = data.nodes.slice(window.node, window.last + 1).filter(({state}) => state === "shown" || state === "missed").length;
    const seen = [];
    for (let i = 0; i < gaps; ++i) {
        await page.keyboard.press("n");
        seen.push(await page.locator("#panel-title").innerText());
        assert.notEqual((await rowsOf(page)).find((row) => row.isSelected).state, "used");
    }
    assert.equal(seen.length, gaps);
    await page.keyboard.press("p");
    assert.equal(await page.locator("#panel-title").innerText(), seen.at(-2));
    await page.keyboard.press("n");
    await page.keyboard.press("n");
    assert.match(await page.locator("h1").innerText(), /Dialog "Settings"/, "the gaps of this window are at an end");
    await close();
});

test("j, k, arrows, Home and End go through the list", async () => {
    const {page, close} = await open(browser, widgets());
    const first = (await rowsOf(page))[0].name;
    await page.keyboard.press("j");
    assert.deepEqual(await selected(page), [first]);
    await page.focus("#elements");
    await page.keyboard.press("ArrowDown");
    const second = await selected(page);
    assert.notDeepEqual(second, [first]);
    await page.keyboard.press("ArrowUp");
    assert.deepEqual(await selected(page), [first]);
    await page.keyboard.press("End");
    const active = await page.getAttribute("#elements", "aria-activedescendant");
    assert.equal(await page.locator(`#${active}`).getAttribute("aria-selected"), "true");
    assert.ok(await page.locator(`#${active}`).isVisible());
    await page.keyboard.press("Home");
    assert.deepEqual(await selected(page), [first]);
    await page.keyboard.press("k");
    assert.deepEqual(await selected(page), [first]);
    await close();
});

test("a menu is shown in place of its window, from the item that opens it and back", async () => {
    const {page, close} = await open(browser, widgets({e: `${panel} > MenuBar > MenuItem "File"`}));
    await page.click("text=Show its menu (4)");
    const inMenu = (await outlinesOf(page)).map(({name}) => name);
    assert.equal(inMenu.filter((name) => name.startsWith("MenuItem")).length, 4);
    const item = (await outlinesOf(page)).find(({name}) => name.includes("Load profile"));
    const reported = reportedElements(recording("panel-widgets")).find(({text}) => text === "Load profile");
    assert.deepEqual(item.place, reported.place);

    await page.dblclick(".outline:has(title:text-matches('Export'))", {force: true});
    assert.equal(await page.locator(".surfaces [aria-pressed=true] .caption").innerText(), "Menu File › Export");
    await page.keyboard.press("Escape");
    assert.equal(await page.locator(".surfaces [aria-pressed=true] .caption").innerText(), "Menu File");
    assert.deepEqual(await selected(page), ["Export"]);
    await page.keyboard.press("Escape");
    assert.equal(await page.locator(".surfaces [aria-pressed=true] .caption").innerText(), "Window");
    assert.deepEqual(await selected(page), ["File"]);
    await page.keyboard.press("Enter");
    assert.equal(await page.locator(".surfaces [aria-pressed=true] .caption").innerText(), "Menu File");
    await close();
});

test("a double click in the list opens a menu", async () => {
    const {page, close} = await open(browser, widgets());
    await page.locator("#elements .row").filter({hasText: /^used: File/}).dblclick();
    assert.equal(await page.locator(".surfaces [aria-pressed=true] .caption").innerText(), "Menu File");
    await close();
});

test("rows stay the same while the list is scrolled", async () => {
    const {page, close} = await open(browser, widgets(), {viewport: {width: 1280, height: 640}});
    const row = await page.locator("#elements .row").nth(4).elementHandle();
    await page.$eval("#elements", (list) => { list.scrollTop = 60; });
    await page.waitForFunction(() => document.querySelector("#elements").scrollTop === 60);
    await page.evaluate(() => new Promise((resolve) => { requestAnimationFrame(() => requestAnimationFrame(resolve)); }));
    assert.equal(await row.evaluate((element) => element.isConnected), true);
    const order = await page.$$eval("#elements .space > *", (all) => all.map((element) => parseInt(element.style.top, 10)));
    assert.deepEqual(order, [...order].sort((a, b) => a - b), "in the order in which they are read");
    await close();
});

test("a menu that nobody opened is listed, and said to be unknown", async () => {
    const {page, close} = await open(browser, widgets());
    await page.focus("#elements");
    await page.keyboard.press("End");
    assert.equal((await rowsOf(page)).at(-1).state, "unopened");
    assert.match(await page.locator(".panel").innerText(), /never opened: what is in it is unknown/);
    await close();
});

test("the filter stands in the address, and the address brings it back", async () => {
    const {page, close} = await open(browser, url);
    await page.keyboard.press("/");
    await page.keyboard.type("never:clicked t:button");
    const names = (await rowsOf(page)).map(({name}) => name);
    assert.deepEqual([...names].sort(), ["Calibrate", "Cancel", "Cancel", "Heating", "Print", "Refresh", "Reset", "Reset", "Rooms", "Test the valve"]);
    assert.equal(await page.locator("#filter-status").innerText(), "10 of 73");
    const address = page.url();
    assert.match(decodeURIComponent(address), /f=never:clicked\+t:button/);
    await close();

    const again = await open(browser, address);
    assert.equal(await again.page.inputValue("#filter"), "never:clicked t:button");
    assert.deepEqual((await rowsOf(again.page)).map(({name}) => name), names);
    await again.page.locator("#matches .row").first().click();
    assert.match(decodeURIComponent(again.page.url()), /w=.*&e=/);
    const inWindow = again.page.url();
    await again.page.goBack();
    assert.equal(await again.page.locator(".overview").count(), 1);
    await again.close();

    const third = await open(browser, inWindow);
    assert.equal((await selected(third.page)).length, 1);
    assert.equal(await third.page.inputValue("#filter"), "never:clicked t:button");
    await third.close();
});

test("an address that fits nothing shows the overview", async () => {
    for (const hash of ["#w=Nowhere&e=Nothing", "#%", "#sort=constructor&f=%F0", "#w=__proto__"]) {
        const {page, close} = await open(browser, url + hash);
        assert.equal(await page.locator(".overview").count(), 1, hash);
        await close();
    }
});

test("toggles, keys 1 to 3 and the text of the filter are one", async () => {
    const {page, close} = await open(browser, widgets());
    await page.keyboard.press("3");
    assert.equal(await page.inputValue("#filter"), "s:missed,shown");
    assert.ok((await rowsOf(page)).every(({state}) => state !== "used"));
    assert.equal(await page.locator(".toggle.used").getAttribute("aria-pressed"), "false");
    const faded = await page.locator(".outline.used:not(.faded)").count();
    assert.equal(faded, 0);
    await page.click(".toggle.used");
    assert.equal(await page.inputValue("#filter"), "");
    await page.fill("#filter", "s:used");
    assert.equal(await page.locator(".toggle.shown").getAttribute("aria-pressed"), "false");
    await page.fill("#filter", "q:1");
    assert.match(await page.locator("#filter-status").innerText(), /there is no q:/);
    assert.equal(await page.getAttribute("#filter", "aria-invalid"), "true");
    await close();
});

test("what was missed comes first unless another order is chosen", async () => {
    const {page, close} = await open(browser, url);
    const rank = ["missed", "shown", "used"];
    await page.fill("#filter", "t:button");
    const states = (await rowsOf(page)).map(({state}) => rank.indexOf(state));
    assert.ok(new Set(states).size > 1, String(states));
    assert.deepEqual(states, [...states].sort((a, b) => a - b));
    await page.fill("#filter", "");
    await page.goto(widgets());
    const inWindow = (await rowsOf(page)).slice(0, 10).map(({state}) => rank.indexOf(state));
    assert.deepEqual(inWindow, [...inWindow].sort((a, b) => a - b));
    await close();
});

test("the order can be chosen and stands in the address", async () => {
    const {page, close} = await open(browser, widgets({f: "t:check"}));
    await page.selectOption("#order", "name");
    const byName = (await rowsOf(page)).map(({name}) => name);
    assert.deepEqual(byName, ["Frost protection", "Night setback", "Pump schedule"]);
    await page.selectOption("#order", "place");
    assert.deepEqual((await rowsOf(page)).map(({name}) => name), ["Night setback", "Frost protection", "Pump schedule"]);
    assert.match(page.url(), /sort=place/);
    await close();
});

test("help opens on ? and names the keys; other keys stay with it", async () => {
    const {page, close} = await open(browser, widgets());
    await page.keyboard.press("?");
    assert.match(await page.locator("dialog.help").innerText(), /next, previous gap/);
    await page.keyboard.press("n");
    assert.deepEqual(await selected(page), []);
    await page.keyboard.press("Escape");
    assert.equal(await page.locator("dialog.help").isVisible(), false);
    await page.keyboard.press("o");
    assert.equal(await page.locator(".overview").count(), 1);
    await page.keyboard.press("]");
    assert.equal(await page.locator(".window").count(), 1);
    const first = await page.locator("h1").innerText();
    await page.keyboard.press("]");
    await page.keyboard.press("[");
    assert.equal(await page.locator("h1").innerText(), first);
    await close();
});

test("keys that are typed into the filter are no commands", async () => {
    const {page, close} = await open(browser, widgets());
    await page.keyboard.press("/");
    await page.keyboard.type("no?/1");
    assert.equal(await page.inputValue("#filter"), "no?/1");
    assert.equal(await page.locator("dialog.help").count(), 0);
    await page.keyboard.press("Escape");
    assert.equal(await page.evaluate(() => document.activeElement.id), "");
    await close();
});

test("key, rule and link are copied", async () => {
    const {page, context, close} = await open(browser, widgets({e: `${panel} > Button "Reset"`}));
    await context.grantPermissions(["clipboard-read", "clipboard-write"]);
    const copied = () => page.evaluate(() => navigator.clipboard.readText());
    await page.keyboard.press("c");
    await page.waitForFunction(() => document.querySelector(".toast").textContent === "Copied");
    assert.equal(await copied(), `${panel} > Button "Reset"`);
    await page.click("text=Copy ignore rule");
    await page.waitForFunction(async () => (await navigator.clipboard.readText()).startsWith("[[ignore]]"));
    assert.equal(await copied(), "[[ignore]]\nkey = \"Window \\\"Heating panel\\\" > Button \\\"Reset\\\"\"\nwhy = \"\"\n");
    await page.click("text=Copy link");
    await page.waitForFunction(async () => (await navigator.clipboard.readText()).startsWith("file:"));
    assert.equal(await copied(), page.url());
    await close();
});

for (const theme of ["light", "dark"]) {
    test(`nothing keeps people with a screen reader, or weak eyes, out: ${theme}`, async () => {
        const {page, close} = await open(browser, url, {colorScheme: theme});
        assert.deepEqual(await violations(page), [], "overview");
        await page.fill("#filter", "t:button");
        assert.deepEqual(await violations(page), [], "matches");
        await page.fill("#filter", "");
        await page.goto(widgets({e: `${panel} > Button "Reset"`}));
        assert.deepEqual(await violations(page), [], "window");
        await page.goto(quick({e: `${panel} > Button "Reset"`}));
        assert.deepEqual(await violations(page), [], "sketch");
        await page.fill("#filter", "q:");
        assert.deepEqual(await violations(page), [], "problem");
        await page.keyboard.press("Escape");
        await page.keyboard.press("?");
        assert.deepEqual(await violations(page), [], "help");
        await close();
    });
}
