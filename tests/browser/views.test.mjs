// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// What the page has of views and controls, with the demo's panel of Qt Quick: pages, menus, groups, times.
import assert from "node:assert/strict";
import {join} from "node:path";
import test, {after, before} from "node:test";
import {dataOf, launch, makeFolder, makePage, open, recordControls, removeFolder, rowsOf, violations, windowHash} from "./support.mjs";

const service = "Window \"Service\"";
let browser;
let folder;
let url;

before(async () => {
    browser = await launch();
    folder = makeFolder();
    const recordings = ["first", "second"].map((name) => join(folder, `${name}.uirec`));
    recordControls("panel-quick", recordings[0], "--label", "branch=main");
    recordControls("panel-quick", recordings[1]);
    url = makePage(recordings, join(folder, "page.html"));
});

after(async () => {
    await browser.close();
    removeFolder(folder);
});

const caption = (page) => page.locator(".look > .tools .caption").innerText();
const namesOn = (page) => page.$$eval(".picture .outline title", (titles) => titles.map((title) => title.textContent));

test("each page has its own small picture, and shows its own controls and no others", async () => {
    const {page, close} = await open(browser, url + windowHash(service));
    const names = await page.$$eval(".surfaces button .caption", (all) => all.map((one) => one.textContent));
    for (const name of ["Window", "Page Circuit", "Page Plan", "Page Log"]) {
        assert.ok(names.includes(name), `${name} among ${names}`);
    }
    const {nodes, surfaces} = await dataOf(page);
    for (const name of ["Page Circuit", "Page Plan", "Page Log"]) {
        await page.locator(".surfaces button").filter({hasText: name}).click();
        assert.match(await caption(page), new RegExp(name));
        const drawn = await page.$$eval(".picture .outline", (all) => all.map((group) => Number(group.dataset.node)));
        assert.ok(drawn.length > 1, name);
        const homes = new Set(drawn.map((index) => nodes[surfaces[nodes[index].home].node].label));
        assert.deepEqual([...homes], [name.replace("Page ", "")]);
        assert.ok(await page.locator(".stage .picture use").count() > 0, "it is a picture and no sketch");
    }
    await close();
});

test("nearly everything of a view that was seen is on a picture of it", async () => {
    const {page, close} = await open(browser, url);
    const {nodes, surfaces} = await dataOf(page);
    const parts = ["Option", "Command"]; // entries of a closed box, and what has a shortcut alone
    const seen = nodes.filter((node) => node.state && !parts.includes(node.kind) && surfaces[node.home].picture >= 0);
    assert.ok(seen.length > 20);
    assert.deepEqual(seen.filter((node) => !node.place).map(({step}) => step), []);
    await close();
});

test("a view that nobody opened has no outlines, and says so", async () => {
    const {page, close} = await open(browser, url + windowHash(service, {v: `${service} > Page "Diagnosis"`}));
    assert.match(await caption(page), /Page Diagnosis/);
    assert.match(await page.locator(".stage").innerText(), /Nobody ever opened this view/);
    assert.equal(await page.locator(".picture").count(), 0);
    await page.fill("#filter", "v:Diagnosis");
    assert.deepEqual((await rowsOf(page)).map(({state}) => state), ["missed", "missed", "missed", "unopened"]);
    await close();
});

test("the picture has the room while nothing is selected", async () => {
    const {page, close} = await open(browser, url + windowHash(service), {viewport: {width: 1440, height: 900}});
    const width = () => page.locator(".look").evaluate((look) => look.clientWidth);
    const wide = await width();
    assert.equal(await page.locator(".detail-column").isVisible(), false);
    await page.locator("#elements .row").first().click();
    assert.equal(await page.locator(".detail-column").isVisible(), true);
    const narrow = await width();
    assert.ok(narrow < wide, `${narrow} < ${wide}`);
    await page.keyboard.press("Escape");
    assert.equal(await width(), wide);
    await close();
});

test("a picture fits, grows and shrinks", async () => {
    const {page, close} = await open(browser, url + windowHash(service), {viewport: {width: 1440, height: 600}});
    const box = () => page.locator(".stage .picture").evaluate((one) => one.getBoundingClientRect().toJSON());
    const stage = await page.locator(".stage").evaluate((one) => one.getBoundingClientRect().toJSON());
    const fitting = await box();
    assert.ok(fitting.height < stage.height && fitting.width < stage.width);
    await page.keyboard.press("+");
    const larger = await box();
    assert.ok(larger.width > fitting.width);
    await page.locator(".zoom button").nth(1).click();
    assert.equal(Math.round((await box()).width), 480, "one to one");
    await page.keyboard.press("-");
    assert.equal(Math.round((await box()).width), 360);
    await page.keyboard.press("0");
    assert.equal(Math.round((await box()).width), Math.round(fitting.width));
    await close();
});

test("what is disabled looks disabled, and what never was enabled is not counted", async () => {
    const {page, close} = await open(browser, url + windowHash(service, {v: `${service} > Page "Circuit"`}));
    const line = await page.locator(".outline.unavailable .line").evaluate((one) => getComputedStyle(one).strokeDasharray);
    assert.notEqual(line, "none");
    assert.ok((await namesOn(page)).includes("Button \"Calibrate\": unavailable, disabled"));
    await page.fill("#filter", "s:unavailable");
    await page.locator("#elements .row").click();
    assert.match(await page.locator(".panel").innerText(), /Never enabled in any run/);
    await close();
});

test("a group is one line, opened on demand, and outlined member by member", async () => {
    const {page, close} = await open(browser, url + windowHash(service, {v: `${service} > Page "Plan"`}));
    const {nodes} = await dataOf(page);
    const group = nodes.find((node) => node.members > 1 && node.usedMembers > 0);
    const placed = group.group.filter(([, , surface]) => surface !== undefined).length;
    assert.ok(placed > 0);
    const index = nodes.indexOf(group);
    assert.equal(await page.locator(`.outline[data-node="${index}"]`).count(), placed);
    assert.equal(await page.locator(`.outline.used[data-node="${index}"]`).count(), group.group.filter(([, used, surface]) => used && surface !== undefined).length);
    await page.fill("#filter", "g:*");
    await page.locator(`#elements .row[data-node="${index}"]`).click();
    const members = page.locator(".panel .members");
    assert.match(await members.locator("summary").innerText(), new RegExp(`${group.members} of them, ${group.usedMembers} used`));
    assert.equal(await members.locator("li").first().isVisible(), false);
    await members.locator("summary").click();
    assert.equal(await members.locator("li .glyph").count(), group.group.length);
    await close();
});

test("the overview has two numbers, small pictures with the worst first, and what was never opened", async () => {
    const {page, close} = await open(browser, url);
    const {totals} = await dataOf(page);
    assert.equal(await page.locator(".sum .cover").count(), 2);
    assert.match(await page.locator(".sum").innerText(), new RegExp(`${totals.seenViews} of ${totals.views}`));
    const shares = await page.$$eval(".card .figures .cover", (all) => all.map((one) => parseFloat(one.textContent)));
    assert.ok(shares.length > 4);
    assert.deepEqual(shares, [...shares].sort((a, b) => a - b));
    assert.ok(await page.locator(".card .small use").count() > 0);
    assert.ok(await page.locator(".unopened-views li").filter({hasText: "Page Diagnosis"}).filter({hasText: "3 controls"}).isVisible());
    await page.locator(".card").filter({hasText: "Page Plan"}).click();
    assert.match(await caption(page), /Page Plan/);
    await page.reload();
    assert.match(await caption(page), /Page Plan/, "the address says which view it is");
    await close();
});

test("what nobody ever used is one click, and the next one brings the rest back", async () => {
    const {page, close} = await open(browser, url);
    const {totals} = await dataOf(page);
    const button = page.locator(".never-used");
    assert.match(await button.innerText(), new RegExp(String(totals.elements - totals.used)));
    await button.click();
    assert.equal(await page.inputValue("#filter"), "s:missed,shown");
    assert.equal(await button.getAttribute("aria-pressed"), "true");
    assert.match(await page.locator("#matches-title").innerText(), new RegExp(`${totals.elements - totals.used} controls`));
    await button.click();
    assert.equal(await page.inputValue("#filter"), "");
    await close();
});

test("choices write the filter and read it", async () => {
    const {page, close} = await open(browser, url);
    await page.locator(".facets summary").click();
    await page.selectOption("#facet-l", "branch=main");
    assert.equal(await page.inputValue("#filter"), "l:branch=main");
    await page.selectOption("#facet-r", "2");
    assert.equal(await page.inputValue("#filter"), "l:branch=main r:2");
    await page.fill("#filter", "r:1");
    assert.equal(await page.inputValue("#facet-r"), "1");
    assert.equal(await page.inputValue("#facet-l"), "");
    await close();
});

test("the strip of times shows uses in their order and leads to them", async () => {
    const {page, close} = await open(browser, url);
    const {nodes} = await dataOf(page);
    const times = nodes.flatMap(({uses}) => uses ? [uses] : []);
    assert.ok(times.length > 10);
    const used = await page.$$eval(".strip .use", (marks) => marks.map((mark) => ({node: Number(mark.dataset.node),
        x: Number(mark.querySelector(".mark").getAttribute("x"))})));
    const last = (index) => nodes[index].uses.slice(-2)[0];
    for (const one of used) {
        for (const other of used) {
            assert.ok(!(last(one.node) < last(other.node) && one.x > other.x), "earlier is further to the left");
        }
    }
    const mark = page.locator(".strip .use").first();
    const {label} = nodes[Number(await mark.getAttribute("data-node"))];
    await mark.locator(".mark").click();
    assert.match(await page.locator("#panel-title").innerText(), new RegExp(label));
    assert.match(await page.locator(".panel").innerText(), /2 of 2 runs, last in run 2 (at|from) 0:0\d\.\d/);
    await close();
});

for (const width of [390, 1440]) {
    test(`nothing is wider than a page of ${width} pixels, and nothing keeps people out`, async () => {
        const {page, close} = await open(browser, url, {viewport: {width, height: 800}});
        for (const hash of ["", windowHash(service), windowHash(service, {e: `${service} > Page "Circuit" > Dial "Pump speed"`})]) {
            await page.goto(url + hash);
            assert.ok(await page.evaluate(() => document.documentElement.scrollWidth) <= width, hash);
            assert.deepEqual(await violations(page), [], hash);
        }
        await close();
    });
}

test("without scripts there is a figure for each page that was seen, and a line for those that were not", async () => {
    const {page, close} = await open(browser, url, {javaScriptEnabled: false});
    const captions = await page.locator(".static figcaption").allInnerTexts();
    for (const name of ["Page \"Circuit\": 7 of 10 used", "Page \"Plan\": ", "Page \"Log\": "]) {
        assert.ok(captions.some((one) => one.startsWith(name)), `${name} among ${captions}`);
    }
    assert.ok(!captions.some((one) => one.includes("Diagnosis")));
    assert.match(await page.locator(".static").innerText(), /unopened\s+Page "Diagnosis"/);
    await close();
});
