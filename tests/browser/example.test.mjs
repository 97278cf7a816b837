// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// The page of a program that nobody here wrote: one of Debian's Qt examples, ended as a desktop ends it.
import assert from "node:assert/strict";
import {spawn} from "node:child_process";
import {once} from "node:events";
import {existsSync, statSync} from "node:fs";
import {join} from "node:path";
import test, {after, before} from "node:test";
import {setTimeout as pause} from "node:timers/promises";
import {launch, makeFolder, makePage, open, outlinesOf, removeFolder, reportedElements, uicov, violations} from "./support.mjs";

let browser;
let folder;
let url;
let recording;

/** Until the window is there, which is told last, with its picture. */
async function recordExample(program, file) {
    const run = spawn(process.env.UICOV_PROGRAM, ["run", "--screenshots", "-o", `${file}.uicov`, "--recording", file, "--", program], {stdio: "ignore"});
    const ended = once(run, "exit");
    const isShown = () => {
        const messages = existsSync(file) && statSync(file).size > 0 ? uicov("dump", file) : "";
        const window = /elementAdded (#\d+) class="Window"/.exec(messages)?.[1];
        return window && messages.includes(`imageChanged ${window} `);
    };
    while (!isShown()) {
        assert.equal(run.exitCode, null, "it ended by itself");
        await pause(100);
    }
    run.kill("SIGTERM");
    await ended;
}

before(async () => {
    browser = await launch();
    folder = makeFolder();
    recording = join(folder, "example.uirec");
    await recordExample(join(process.env.UICOV_EXAMPLES, "widgets/widgets/groupbox/groupbox"), recording);
    url = makePage([recording], join(folder, "page.html"));
});

after(async () => {
    await browser.close();
    removeFolder(folder);
});

test("its buttons are outlined where it said that they are", async () => {
    const {page, close} = await open(browser, url);
    await page.keyboard.press("]");
    assert.equal(await page.locator(".stage .picture:not(.sketch)").count(), 1);
    const reported = reportedElements(recording).filter(({place, text}) => place && text);
    const outlines = (await outlinesOf(page)).filter(({name}) => /^(Button|CheckBox) "/.test(name));
    assert.ok(outlines.length >= 8, String(outlines.length));
    for (const {name, place} of outlines) {
        const [, type, label] = /^(\w+) "(.*?)"/.exec(name);
        const places = reported.filter((element) => element.type === type && element.text === label).map((element) => element.place.join());
        assert.ok(places.includes(place.join()), `${name}: ${place} among ${places}`);
    }
    await close();
});

test("a run that was cut short says so at the top", async () => {
    const {page, close} = await open(browser, url);
    const warning = page.locator(".warning");
    assert.match(await warning.innerText(), /^The run is partial: it /);
    const [first, totals] = await Promise.all([warning.boundingBox(), page.locator(".sum").boundingBox()]);
    assert.ok(first.y < totals.y);
    assert.match(await page.locator(".runs").innerText(), /partial: it /);
    assert.deepEqual(await violations(page), []);
    await close();
});
