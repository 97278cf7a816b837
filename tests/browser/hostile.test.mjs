// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Names that would like to be something else than names.
import assert from "node:assert/strict";
import {readFileSync} from "node:fs";
import {join} from "node:path";
import test, {after, before} from "node:test";
import {launch, makeFolder, makePage, makeRecording, open, removeFolder, uicov, violations} from "./support.mjs";

let browser;
let folder;
let url;
let names;

before(async () => {
    browser = await launch();
    folder = makeFolder();
    const file = join(folder, "hostile.uirec");
    names = JSON.parse(makeRecording("hostile", file));
    url = makePage([file], join(folder, "page.html"), "--title", "<b>title</b> & \"more\"");
    uicov("html", "-q", "--split", join(folder, "split"), file);
});

after(async () => {
    await browser.close();
    removeFolder(folder);
});

const unseen = /[\p{Cc}\p{Cf}\p{Co}\p{Cn}\p{Cs}\p{Zl}\p{Zp}]/u;

async function assertHarmless(page) {
    assert.equal(await page.evaluate(() => globalThis.hacked), undefined);
    assert.equal(await page.locator("img, iframe, object, embed, b").count(), 0);
    assert.equal(await page.locator("script").count(), 2);
    assert.deepEqual(await page.$$eval("*", (all) => all.flatMap((element) =>
        [...element.attributes].filter(({name, value}) => name.startsWith("on") || /^javascript:/i.test(value)).map(({name}) => name))), []);
}

test("names are shown as they are, and do nothing", async () => {
    const {page, close} = await open(browser, url);
    await assertHarmless(page);
    assert.equal(await page.locator("h1").innerText(), "<b>title</b> & \"more\"");
    assert.equal(await page.title(), "<b>title</b> & \"more\"");
    assert.ok((await page.locator(".windows").innerText()).includes(names[0]));
    assert.ok((await page.locator(".runs").innerText()).includes(names[1]));
    await page.keyboard.press("]");
    await assertHarmless(page);
    const rows = page.locator("#elements .row");
    const shown = [];
    await page.focus("#elements");
    await page.keyboard.press("Home");
    for (let i = 0; i <= names.length; ++i) {
        shown.push(await page.locator("#panel-title").evaluate((title) => title.textContent));
        await page.keyboard.press("ArrowDown");
    }
    assert.ok(await rows.count() > 3);
    for (const name of names.filter((text) => text.length < 100 && !unseen.test(text) && !text.includes("\\"))) {
        assert.ok(shown.includes(name.replace(/\s+/g, " ").trim()), `${name} among ${shown.join("\n")}`);
    }
    await assertHarmless(page);
    await close();
});

test("what cannot be seen is made visible, and turns nothing around", async () => {
    const {page, close} = await open(browser, url);
    await page.keyboard.press("]");
    await page.fill("#filter", "txt.exe");
    await page.locator("#elements .row").first().click();
    const title = page.locator("#panel-title");
    assert.equal(await title.innerText(), "evil \\u202e txt.exe");
    assert.equal(await title.locator("bdi .unseen").innerText(), "\\u202e");
    const texts = await page.evaluate(() => {
        const found = [];
        const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
        while (walker.nextNode()) {
            if (!walker.currentNode.parentElement.closest("script, noscript, style")) {
                found.push(walker.currentNode.data);
            }
        }
        return found;
    });
    assert.deepEqual(texts.filter((text) => /[\u202a-\u202e\u2066-\u2069\u200b]/.test(text)), []);
    await page.fill("#filter", "half");
    await page.locator("#elements .row").first().click();
    assert.equal(await title.innerText(), "\ufffdhalf", "no encoding can hold half a character");
    await close();
});

test("texts that run from right to left are kept apart", async () => {
    const {page, close} = await open(browser, url);
    await page.keyboard.press("]");
    await page.fill("#filter", "שלום");
    const name = page.locator("#elements .row .name bdi").first();
    assert.equal(await name.textContent(), "שלום עולם");
    // The kind stands behind the name, where it stands for every other row.
    const [box, kind] = await Promise.all([name.boundingBox(), page.locator("#elements .row .kind").first().boundingBox()]);
    assert.ok(kind.x >= box.x + box.width - 1);
    await close();
});

test("names of any length neither widen the page nor fill it", async () => {
    for (const width of [360, 1280]) {
        const {page, close} = await open(browser, url, {viewport: {width, height: 800}});
        assert.ok(await page.evaluate(() => document.scrollingElement.scrollWidth <= innerWidth));
        await page.keyboard.press("]");
        await page.fill("#filter", "xxxxx");
        await page.locator("#elements .row").first().click();
        assert.ok(await page.evaluate(() => document.scrollingElement.scrollWidth <= innerWidth));
        assert.match(await page.locator("#panel-title").innerText(), /5000 characters/);
        assert.ok((await page.locator("#elements .row").first().boundingBox()).height <= 50);
        await close();
    }
});

test("without scripts they are as harmless", async () => {
    const {page, close} = await open(browser, url, {javaScriptEnabled: false});
    const text = await page.locator(".static").innerText();
    for (const name of names.filter((one) => one.length < 100 && !unseen.test(one) && !one.includes("\\"))) {
        assert.ok(text.replace(/\s+/g, " ").includes(name.replace(/\s+/g, " ").trim()), name);
    }
    assert.ok(text.includes("evil \\u202e txt.exe"));
    assert.equal(await page.locator("img, b, iframe").count(), 0);
    assert.doesNotMatch(text, /[\u202a-\u202e\u2066-\u2069]/);
    await close();
});

test("keys with such names are found by their links", async () => {
    const {page, close} = await open(browser, url);
    await page.keyboard.press("]");
    await page.fill("#filter", "<script>");
    await page.locator("#elements .row").filter({hasText: "Button"}).first().click();
    const address = page.url();
    const title = await page.locator("#panel-title").innerText();
    await close();
    const again = await open(browser, address);
    assert.equal(await again.page.locator("#panel-title").innerText(), title);
    await assertHarmless(again.page);
    await again.close();
});

test("an ignore rule fits the one key and no other, whatever is in it", async () => {
    const {page, context, close} = await open(browser, url);
    await context.grantPermissions(["clipboard-read", "clipboard-write"]);
    await page.keyboard.press("]");
    await page.fill("#filter", "\"* ? [a-z] key\"");
    await page.fill("#filter", "[a-z]");
    await page.locator("#elements .row").first().click();
    await page.click("text=Copy ignore rule");
    await page.waitForFunction(async () => (await navigator.clipboard.readText()).startsWith("[[ignore]]"));
    const rule = await page.evaluate(() => navigator.clipboard.readText());
    assert.match(rule, /Button \\"\[\*\] \[\?\] \[\[\]a-z\] key\\""\nwhy = ""\n$/);
    await close();
});

test("the data in the page holds no markup", () => {
    const html = readFileSync(join(folder, "page.html"), "utf8");
    const data = /<script type="application\/json" id="data">([\s\S]*?)<\/script>/.exec(html)[1];
    assert.doesNotMatch(data, /[<>\u2028\u2029]/);
    assert.equal(JSON.parse(data).title, "<b>title</b> & \"more\"");
    const script = readFileSync(join(folder, "split", "data.js"), "utf8");
    assert.doesNotMatch(script, /[<>\u2028\u2029]/);
});

test("hostile pages are as readable for screen readers", async () => {
    const {page, close} = await open(browser, url);
    assert.deepEqual(await violations(page), []);
    await page.keyboard.press("]");
    await page.keyboard.press("n");
    assert.deepEqual(await violations(page), []);
    await close();
});
