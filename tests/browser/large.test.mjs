// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Pages with 200 windows and 5,000 elements, and with 10,000 controls: what keeps them fluid, apart from time.
import assert from "node:assert/strict";
import {statSync} from "node:fs";
import {join} from "node:path";
import test, {after, before} from "node:test";
import {launch, makeFolder, makePage, makeRecording, open, removeFolder} from "./support.mjs";

let browser;
let folder;
let url;
let urlOfControls;

before(async () => {
    browser = await launch();
    folder = makeFolder();
    makeRecording("large", join(folder, "large.uirec"));
    url = makePage([join(folder, "large.uirec")], join(folder, "page.html"));
    makeRecording("controls", join(folder, "controls.uirec"));
    urlOfControls = makePage([join(folder, "controls.uirec")], join(folder, "controls.html"));
});

after(async () => {
    await browser.close();
    removeFolder(folder);
});

test("the page keeps to its size", () => {
    assert.ok(statSync(join(folder, "page.html")).size <= 20e6);
});

test("only what is in sight is in the document, and all of it can be reached", async () => {
    const {page, close} = await open(browser, url);
    assert.equal(await page.locator(".windows tbody tr").count(), 200);
    await page.fill("#filter", "action");
    assert.match(await page.locator("#matches-title").innerText(), /4,800 elements/);
    assert.ok(await page.locator(".row").count() < 60);
    await page.focus("#matches");
    await page.keyboard.press("End");
    const rows = page.locator(".row");
    assert.equal(await rows.last().getAttribute("aria-posinset"), "4800");
    assert.equal(await rows.last().getAttribute("aria-setsize"), "4800");
    assert.ok(await rows.count() < 60);
    await page.keyboard.press("Enter");
    assert.equal(await page.locator(".window").count(), 1);
    assert.equal(await page.locator(".outline").count(), 25);
    await close();
});

test("filtering leaves the windows that have a match", async () => {
    const {page, close} = await open(browser, url);
    await page.fill("#filter", "w:\"Window 17*\" s:missed");
    assert.equal(await page.locator(".windows tbody tr:visible").count(), 11);
    await close();
});

test("of many views only the first have small pictures, and these are drawn when they come into sight", async () => {
    const {page, close} = await open(browser, urlOfControls);
    assert.equal(await page.locator(".card").count(), 12);
    assert.ok(await page.locator(".card .patch").count() <= 12 * 80, "patches are bounded");
    await page.locator(".views > .action").click();
    assert.equal(await page.locator(".card").count(), 100);
    const drawn = await page.locator(".card .small:has(use)").count();
    assert.ok(drawn < 100, `${drawn} of 100 while nobody has scrolled`);
    await page.locator(".card").last().scrollIntoViewIfNeeded();
    await page.locator(".card").last().locator("use").first().waitFor({state: "attached"});
    await close();
});

test("a page of a large window shows its own controls alone", async () => {
    const {page, close} = await open(browser, urlOfControls);
    await page.locator(".card").first().click();
    assert.equal(await page.locator(".picture .outline").count(), 100);
    assert.ok(await page.locator(".row").count() < 60);
    await close();
});
