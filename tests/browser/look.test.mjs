// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Outlines lie on the right things: in this recording each element is a patch of the colour it is called by.
import assert from "node:assert/strict";
import {join} from "node:path";
import test, {after, before} from "node:test";
import {launch, makeFolder, makePage, makeRecording, open, outlinesOf, removeFolder, windowHash} from "./support.mjs";

let browser;
let folder;
let url;

before(async () => {
    browser = await launch();
    folder = makeFolder();
    makeRecording("colours", join(folder, "colours.uirec"));
    url = makePage([join(folder, "colours.uirec")], join(folder, "page.html"));
});

after(async () => {
    await browser.close();
    removeFolder(folder);
});

/** The colours of the screen at those points, with nothing drawn over the picture. */
async function coloursAt(page, points) {
    await page.evaluate(() => {
        for (const group of document.querySelectorAll(".outline, .badge")) {
            group.style.visibility = "hidden";
        }
    });
    const png = (await page.screenshot()).toString("base64");
    const blank = await page.context().newPage();
    const colours = await blank.evaluate(async ([encoded, wanted]) => {
        const blob = await (await fetch(`data:image/png;base64,${encoded}`)).blob();
        const canvas = new OffscreenCanvas(1, 1);
        const bitmap = await createImageBitmap(blob);
        canvas.width = bitmap.width;
        canvas.height = bitmap.height;
        const context = canvas.getContext("2d");
        context.drawImage(bitmap, 0, 0);
        return wanted.map(([x, y]) => {
            const pixel = context.getImageData(x, y, 1, 1).data;
            return `#${[...pixel.slice(0, 3)].map((part) => part.toString(16).padStart(2, "0")).join("")}`;
        });
    }, [png, points]);
    await blank.close();
    return colours;
}

/** The middle and the corners, two pixels inside, as far as they are on the picture. */
function probes({x, y, width, height}, frame) {
    const inset = 3;
    return [[x + width / 2, y + height / 2], [x + inset, y + inset], [x + width - inset, y + inset],
            [x + inset, y + height - inset], [x + width - inset, y + height - inset]]
        .map(([left, top]) => [Math.floor(left), Math.floor(top)])
        .filter(([left, top]) => left < frame.x + frame.width - 1 && top < frame.y + frame.height - 1);
}

async function assertOnPatches(page, expectedPatches) {
    const frame = await page.$eval(".stage .picture", (picture) => picture.getBoundingClientRect().toJSON());
    const patches = (await outlinesOf(page)).filter(({name}) => name.includes("#"));
    assert.equal(patches.length, expectedPatches);
    const wanted = patches.flatMap(({name, screen}) =>
        probes(screen, frame).map((point) => ({point, colour: /#[0-9a-f]{6}/.exec(name)[0]})));
    assert.ok(wanted.length >= 3 * expectedPatches);
    const found = await coloursAt(page, wanted.map(({point}) => point));
    assert.deepEqual(found, wanted.map(({colour}) => colour));
}

const views = [
    ["a window with a menu bar, and something half outside", "Window \"Palette\"", null, 10, 1280],
    ["the same, made smaller by a narrow page", "Window \"Palette\"", null, 10, 340],
    ["a menu", "Window \"Palette\"", ".surfaces button:nth-child(2)", 2, 1280],
    ["a popup that has the coordinates of its scene", "Dialog \"Popup\"", null, 2, 1280],
    ["a picture with two pixels a point", "Window \"Sharp\"", null, 2, 1280]
];
for (const [name, key, click, patches, width] of views) {
    test(`outlines lie on what they are called by: ${name}`, async () => {
        const {page, close} = await open(browser, url + windowHash(key), {viewport: {width, height: 900}});
        if (click) {
            await page.click(click);
        }
        await assertOnPatches(page, patches);
        await close();
    });
}

test("states differ by line, fill and sign, not by colour alone", async () => {
    const {page, close} = await open(browser, url + windowHash("Window \"Palette\""));
    const looks = await page.$$eval(".outline", (groups) => Object.fromEntries(groups.map((group) => {
        const line = getComputedStyle(group.querySelector(".line"));
        const state = ["missed", "shown", "used"].find((name) => group.classList.contains(name));
        return [state, {dashes: line.strokeDasharray, width: line.strokeWidth,
                        sign: document.querySelector(`.badge[data-node="${group.dataset.node}"]`)?.getAttribute("href"),
                        fill: group.querySelector(".area").getAttribute("fill")}];
    })));
    assert.equal(new Set(Object.values(looks).map(({sign}) => sign)).size, 3);
    assert.notEqual(looks.shown.dashes, "none");
    assert.equal(looks.used.dashes, "none");
    assert.ok(parseFloat(looks.missed.width) > parseFloat(looks.used.width));
    assert.match(looks.missed.fill, /hatch/);
    await close();
});

test("signs are on the picture and keep their size when it shrinks", async () => {
    for (const width of [1280, 340]) {
        const {page, close} = await open(browser, url + windowHash("Window \"Palette\""), {viewport: {width, height: 900}});
        const frame = await page.$eval(".stage .picture", (picture) => picture.getBoundingClientRect().toJSON());
        const badges = await page.$$eval(".badge", (all) => all.map((badge) => badge.getBoundingClientRect().toJSON()));
        assert.ok(badges.length > 5);
        for (const badge of badges) {
            assert.ok(badge.width > 9 && badge.width < 18, `${badge.width} at ${width}`);
            assert.ok(badge.right <= frame.right + 1 && badge.top >= frame.top - 1);
        }
        await close();
    }
});

test("what cannot be outlined is listed apart, with the reason", async () => {
    const {page, close} = await open(browser, url + windowHash("Window \"Palette\"", {f: "s:missed t:button"}));
    const list = page.locator("#elements");
    for (const [name, reason] of [["without place", "place never told"], ["outside", "outside of the picture"],
                                  ["empty", "no size"], ["hidden", "hidden in the picture"]]) {
        await page.fill("#filter", `"${name}"`);
        await list.locator(".row").filter({hasText: name}).click();
        assert.match(await list.locator(".group").innerText(), new RegExp(reason));
        assert.match(await page.locator(".panel .apart").innerText(), /^Not outlined/);
        assert.equal(await page.locator(".outline.selected").count(), 0);
    }
    // It has a picture of its own, which the window's does not show.
    assert.equal(await page.locator(".panel .own").count(), 1);
    await close();
});

test("a window without a picture is drawn from its places", async () => {
    const {page, close} = await open(browser, url + windowHash("Window \"Blind\""));
    assert.equal(await page.locator(".picture.sketch").count(), 1);
    assert.match(await page.locator(".stage .note").innerText(), /--screenshots/);
    const patch = (await outlinesOf(page)).find(({name}) => name.includes("#"));
    assert.deepEqual(patch.place, [10, 10, 100, 40]);
    await close();
});

test("an element's own part of the picture is shown alone", async () => {
    const {page, close} = await open(browser, url + windowHash("Window \"Palette\""));
    await page.locator("#elements .row.used").filter({hasText: "#"}).first().click();
    const name = await page.locator("#panel-title").innerText();
    const portrait = await page.locator(".portrait .own").boundingBox();
    const middle = [Math.floor(portrait.x + portrait.width / 2), Math.floor(portrait.y + portrait.height / 2)];
    assert.deepEqual(await coloursAt(page, [middle]), [name]);
    await close();
});
