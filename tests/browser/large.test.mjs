// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// A page with 200 windows and 5,000 elements: what keeps it fluid, apart from time.
import assert from "node:assert/strict";
import {statSync} from "node:fs";
import {join} from "node:path";
import test, {after, before} from "node:test";
import {launch, makeFolder, makePage, makeRecording, open, removeFolder} from "./support.mjs";

let browser;
let folder;
let url;

before(async () => {
    browser = await launch();
    folder = makeFolder();
    makeRecording("large", join(folder, "large.uirec"));
    url = makePage([join(folder, "large.uirec")], join(folder, "page.html"));
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
