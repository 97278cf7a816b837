// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// How fluid the page of a large report is: 200 windows with pictures, 5,000 elements.
// node benchmarks/page.mjs [BUILD FOLDER]
import {execFileSync} from "node:child_process";
import {mkdtempSync, rmSync, statSync, writeFileSync} from "node:fs";
import {createRequire} from "node:module";
import {tmpdir} from "node:os";
import {join} from "node:path";
import {pathToFileURL} from "node:url";

const {chromium} = createRequire(new URL("../tests/browser/", import.meta.url))("playwright-core");
const build = process.argv[2] ?? "build/release";
const rounds = 9;
const filters = ["a", "s:missed", "t:button s:shown", "w:\"Window 1*\" action", "never:clicked", "!e:clicked 19", "k:\"*Action 7*\"", ""];

const median = (numbers) => [...numbers].sort((a, b) => a - b)[Math.floor(numbers.length / 2)];
const folder = mkdtempSync(join(tmpdir(), "uicov-page-"));
const recording = join(folder, "large.uirec");
const file = join(folder, "page.html");
execFileSync(join(build, "tests/makerecording"), ["large", recording]);
const before = process.hrtime.bigint();
execFileSync(join(build, "bin/uicov"), ["html", "-q", "-o", file, recording]);
const making = Number(process.hrtime.bigint() - before) / 1e6;

const browser = await chromium.launch({executablePath: process.env.UICOV_CHROMIUM ?? "/usr/bin/chromium",
    args: ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
           "--disable-background-networking", "--disable-component-update", "--disable-sync"]});

/** Until the totals and the first windows are painted. */
async function paint() {
    const page = await browser.newPage({viewport: {width: 1280, height: 900}});
    await page.goto(pathToFileURL(file).href, {waitUntil: "load"});
    const time = await page.evaluate(() => performance.getEntriesByName("first-contentful-paint")[0].startTime);
    const rows = await page.locator(".windows tbody tr").count();
    await page.close();
    if (rows !== 200) {
        throw new Error(`the page has ${rows} windows`);
    }
    return time;
}

/** From the key that was typed to the next frame with all that follows from it. */
function type(page, text) {
    return page.evaluate((value) => new Promise((resolve) => {
        const input = document.getElementById("filter");
        const start = performance.now();
        input.value = value;
        input.dispatchEvent(new Event("input"));
        document.body.getBoundingClientRect();
        requestAnimationFrame(() => {
            const channel = new MessageChannel();
            channel.port1.onmessage = () => resolve(performance.now() - start);
            channel.port2.postMessage(null);
        });
    }), text);
}

async function typing(hash) {
    const page = await browser.newPage({viewport: {width: 1280, height: 900}});
    await page.goto(pathToFileURL(file).href + hash);
    const times = {};
    for (let round = 0; round < rounds; ++round) {
        for (const text of filters) {
            (times[text] ??= []).push(await type(page, text));
        }
    }
    await page.close();
    return times;
}

const paints = [];
for (let round = 0; round < rounds; ++round) {
    paints.push(await paint());
}
const result = {
    "page, bytes": statSync(file).size,
    "making it, ms": Math.round(making),
    "first useful paint, ms: median": Math.round(median(paints)),
    "first useful paint, ms: worst": Math.round(Math.max(...paints))
};
for (const [place, hash] of [["overview", ""], ["window", "#w=Window+%22Window+7%22"]]) {
    const times = Object.values(await typing(hash));
    result[`filter in ${place}, ms: median`] = Math.round(median(times.flat()));
    result[`filter in ${place}, ms: slowest filter's median`] = Math.round(Math.max(...times.map(median)));
    result[`filter in ${place}, ms: worst`] = Math.round(Math.max(...times.flat()));
}
await browser.close();
rmSync(folder, {recursive: true});
for (const [name, value] of Object.entries(result)) {
    console.log(`${name.padEnd(52)} ${String(value).padStart(10)}`);
}
writeFileSync(join(build, "bench-page.json"), `${JSON.stringify(result, null, 4)}\n`);
