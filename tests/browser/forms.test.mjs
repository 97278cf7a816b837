// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// The page without scripts, on paper, as a folder, dark, narrow and wide.
import assert from "node:assert/strict";
import {createServer} from "node:http";
import {existsSync, readFileSync, readdirSync} from "node:fs";
import {extname, join} from "node:path";
import {pathToFileURL} from "node:url";
import test, {after, before} from "node:test";
import {dataOf, launch, makeFolder, makePage, makeRecording, open, outlinesOf, recordDemo, removeFolder, uicov,
        violations, windowHash} from "./support.mjs";

let browser;
let folder;
let url;
const inFolder = (name) => join(folder, name);
const palette = "palette: Window \"Palette\"";

before(async () => {
    browser = await launch();
    folder = makeFolder();
    makeRecording("colours", inFolder("colours.uirec"));
    recordDemo("panel-widgets", inFolder("panel.uirec"));
    url = makePage([inFolder("colours.uirec"), inFolder("panel.uirec")], inFolder("page.html"));
    uicov("html", "-q", "--split", inFolder("split"), inFolder("colours.uirec"), inFolder("panel.uirec"));
});

after(async () => {
    await browser.close();
    removeFolder(folder);
});

/** That the whole report is there as it stands: every element with its state, every picture outlined. */
async function assertWhole(page, root, data) {
    const elements = data.nodes.filter(({state}) => state);
    const text = await page.locator(root).innerText();
    assert.equal(await page.locator(`${root} section`).count(), data.windows.length);
    assert.equal(await page.locator(`${root} section td.state`).count(), elements.length);
    for (const {label} of elements.filter((element) => element.label)) {
        assert.ok(text.includes(label), label);
    }
    const outlined = elements.filter((node) => node.place && data.surfaces[node.surface].node !== data.nodes.indexOf(node));
    assert.equal(await page.locator(`${root} .outline`).count(), outlined.length);
    assert.match(text, /not outlined: it lay outside of the picture/);
    assert.match(text, /unopened/);
    const drawn = data.surfaces.filter(({picture}) => picture >= 0).length;
    const pictures = await page.$$eval(`${root} .picture`, (all) => all.filter((picture) => {
        const image = picture.querySelector("image, use:not([href^='#badge'])");
        return image && image.getBoundingClientRect().width > 0;
    }).length);
    assert.equal(pictures, drawn);
}

async function knownData() {
    const {page, close} = await open(browser, url);
    const data = await dataOf(page);
    await close();
    return data;
}

test("without scripts the whole report is there", async () => {
    const data = await knownData();
    const {page, close} = await open(browser, url, {javaScriptEnabled: false});
    await assertWhole(page, ".static", data);
    await page.click(".static a >> nth=0");
    assert.match(page.url(), /#window-0$/);
    await close();
});

test("on paper the whole report is there, and nothing of it stays on the screen", async () => {
    const data = await knownData();
    const {page, close} = await open(browser, url, {colorScheme: "dark"});
    await page.evaluate(() => dispatchEvent(new Event("beforeprint")));
    await page.emulateMedia({media: "print"});
    await assertWhole(page, "#print .static", data);
    assert.equal(await page.locator("#app").isVisible(), false);
    assert.equal(await page.evaluate(() => getComputedStyle(document.body).color), "rgb(0, 0, 0)");
    await page.evaluate(() => dispatchEvent(new Event("afterprint")));
    await page.emulateMedia({media: "screen"});
    assert.equal(await page.locator("#print").count(), 0);
    assert.equal(await page.locator(".overview").isVisible(), true);
    const a4 = 720; // pixels between margins of 1 cm
    await page.setViewportSize({width: a4, height: 1000});
    await page.evaluate(() => dispatchEvent(new Event("beforeprint")));
    await page.emulateMedia({media: "print"});
    const cut = await page.$$eval("#print *", (all, width) => all.filter((element) => element.getBoundingClientRect().right > width + 1)
        .map((element) => `${element.tagName} ${element.className} ${element.textContent.slice(0, 60)}`), a4);
    assert.deepEqual(cut, []);
    await page.evaluate(() => dispatchEvent(new Event("afterprint")));
    await page.emulateMedia({media: "screen"});
    const paper = await page.pdf({format: "A4"});
    const sheets = paper.toString("latin1").match(/\/Type\s*\/Page\b/g).length;
    assert.ok(sheets >= data.windows.length, `${sheets} sheets`);
    await close();
});

test("printed, it has nothing that a screen reader stumbles over", async () => {
    const {page, close} = await open(browser, url);
    await page.evaluate(() => dispatchEvent(new Event("beforeprint")));
    await page.emulateMedia({media: "print"});
    assert.deepEqual(await violations(page), []);
    await close();
});

/** A server with a policy of its own that allows nothing inline. */
async function serve(root) {
    const types = {".html": "text/html", ".css": "text/css", ".js": "text/javascript", ".png": "image/png"};
    const asked = [];
    const server = createServer((request, response) => {
        const path = request.url === "/" ? "/index.html" : request.url;
        asked.push(path);
        const file = join(root, path);
        if (path.includes("..") || !existsSync(file)) {
            response.writeHead(path === "/favicon.ico" ? 204 : 404).end();
            return;
        }
        response.writeHead(200, {"content-type": types[extname(file)],
            "content-security-policy": "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'"});
        response.end(readFileSync(file));
    });
    await new Promise((resolve) => { server.listen(0, "127.0.0.1", resolve); });
    return {server, asked, address: `http://127.0.0.1:${server.address().port}/`};
}

test("a folder works on a server with a strict policy, with and without scripts", async () => {
    const {server, asked, address} = await serve(inFolder("split"));
    for (const javaScriptEnabled of [true, false]) {
        const {page, close} = await open(browser, address, {javaScriptEnabled});
        if (javaScriptEnabled) {
            await page.goto(address + windowHash(palette));
            assert.ok((await outlinesOf(page)).length > 8);
            await page.waitForFunction(() => document.querySelector(".stage image").getBoundingClientRect().width > 0);
        } else {
            await assertWhole(page, ".static", await knownData());
        }
        await close();
    }
    assert.ok(asked.some((path) => path.startsWith("/pictures/")));
    assert.deepEqual(asked.filter((path) => !existsSync(join(inFolder("split"), path)) && path !== "/favicon.ico"), []);
    server.close();
});

test("a folder opens from the disk too", async () => {
    const root = `${pathToFileURL(inFolder("split")).href}/`;
    const {page, close} = await open(browser, `${root}index.html${windowHash(palette)}`, {allowed: [root]});
    assert.ok((await outlinesOf(page)).length > 8);
    await close();
});

test("a folder has nothing inline", () => {
    const html = readFileSync(inFolder("split/index.html"), "utf8");
    assert.doesNotMatch(html, /<style|<script>|<script type|\sstyle="|\son\w+="|data:/);
    assert.match(html, /script-src 'self'; style-src 'self'; img-src 'self'/);
    assert.ok(readdirSync(inFolder("split/pictures")).length >= 4);
});

test("a page has each picture once, and its policy forbids all that it does not need", () => {
    const html = readFileSync(inFolder("page.html"), "utf8");
    const pictures = [...html.matchAll(/data:image\/png;base64,([^"]+)"/g)].map(([, base64]) => base64);
    assert.ok(pictures.length >= 8);
    assert.equal(new Set(pictures).size, pictures.length);
    const policy = /Content-Security-Policy" content="([^"]+)"/.exec(html)[1];
    assert.match(policy, /^default-src 'none'; script-src 'sha256-[^']+'; style-src 'sha256-[^']+'; img-src data:; /);
    assert.doesNotMatch(policy, /unsafe|\*|https?:/);
    assert.doesNotMatch(html.replace(/<script[\s\S]*?<\/script>|<style>[\s\S]*?<\/style>/g, ""), /\sstyle="|\son\w+="/);
});

const ground = (page) => page.evaluate(() => getComputedStyle(document.documentElement).backgroundColor.match(/\d+/g).map(Number)[0]);
const keptTheme = (page) => page.evaluate(() => globalThis.localStorage.getItem("uicov-theme"));

test("dark follows the system, and the switch and the key turn it", async () => {
    for (const scheme of ["dark", "light"]) {
        const {page, close} = await open(browser, url, {colorScheme: scheme});
        const isDark = async () => await ground(page) < 60;
        assert.equal(await isDark(), scheme === "dark");
        await page.click("button[aria-label=Dark]");
        assert.equal(await isDark(), scheme !== "dark");
        assert.equal(await page.getAttribute("button[aria-label=Dark]", "aria-pressed"), String(scheme !== "dark"));
        assert.equal(await keptTheme(page), scheme === "dark" ? "light" : "dark");
        await page.keyboard.press("d");
        assert.equal(await isDark(), scheme === "dark");
        assert.equal(await keptTheme(page), scheme);
        await close();
    }
});

// Chromium itself loses the first thing stored in a new profile now and then, so this does not reload.
test("a theme that was chosen before is taken, whatever the system has", async () => {
    for (const [scheme, kept, expected] of [["dark", "light", "light"], ["light", "dark", "dark"], ["dark", "pink", "dark"]]) {
        const context = await browser.newContext({colorScheme: scheme});
        await context.addInitScript((theme) => globalThis.localStorage.setItem("uicov-theme", theme), kept);
        const page = await context.newPage();
        await page.goto(url);
        assert.equal(await ground(page) < 60, expected === "dark", `${kept} kept, the system ${scheme}`);
        assert.equal(await page.getAttribute("button[aria-label=Dark]", "aria-pressed"), String(expected === "dark"));
        await context.close();
    }
});

for (const width of [360, 768, 1280, 1920]) {
    test(`nothing is cut off at ${width} pixels`, async () => {
        for (const hash of ["", windowHash(palette), windowHash("panel-widgets: Window \"Heating panel\"", {e: "Window \"Heating panel\" > Button \"Reset\""})]) {
            const {page, close} = await open(browser, url + hash, {viewport: {width, height: 800}});
            const over = await page.evaluate(() => document.scrollingElement.scrollWidth - innerWidth);
            assert.ok(over <= 0, `${hash}: ${over} pixels too wide`);
            for (const control of ["#filter", ".toggle.missed", "button[aria-label=Help]"]) {
                const box = await page.locator(control).boundingBox();
                assert.ok(box.x >= 0 && box.x + box.width <= width && box.height >= 24, `${control} ${JSON.stringify(box)}`);
            }
            if (hash) {
                const picture = await page.locator(".stage .picture").boundingBox();
                assert.ok(picture.width > Math.min(width * 0.8, 300), `picture ${picture.width}`);
            }
            await close();
        }
    });
}

test("pictures become smaller when the page would be too large, and the page says so", async () => {
    const small = inFolder("small.html");
    uicov("html", "-q", "-o", small, "--max-size", "0.2", inFolder("panel.uirec"));
    assert.ok(readFileSync(small).length <= 200000);
    const full = readFileSync(inFolder("page.html"), "utf8");
    assert.doesNotMatch(full, /"reduced":true/);
    const {page, close} = await open(browser, pathToFileURL(small).href, {viewport: {width: 1920, height: 1000}});
    assert.match(await page.locator(".notes").innerText(), /smaller than they were recorded/);
    await page.goto(pathToFileURL(small).href + windowHash("Window \"Heating panel\""));
    assert.match(await page.locator(".stage").innerText(), /--split DIR/);
    const frame = await page.locator(".stage .picture").boundingBox();
    assert.equal(Math.round(frame.width), 760, "it is shown as large as ever");
    await close();
});
