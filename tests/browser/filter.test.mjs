// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// The filter's language by itself, without a browser.
import assert from "node:assert/strict";
import {readFileSync} from "node:fs";
import test from "node:test";
import vm from "node:vm";

const sources = new URL("../../src/tools/uicov/report/html/page/", import.meta.url);

/** The scripts as the page has them, but for those that need a document. */
function load(data) {
    const scripts = ["namespace.js", "model.js", "filter.js"]
        .map((name) => readFileSync(new URL(name, sources), "utf8")).join("\n");
    const page = vm.runInNewContext(`${scripts}; Page`, {});
    page.model.load(data);
    return page;
}

const node = (values) => ({above: 0, kind: "Button", step: "s", class: "QPushButton", events: [], ...values});
const page = load({
    contexts: ["", "test_login", "test_logout"],
    windows: [{application: "a", node: 0, last: 5}, {application: "a", node: 6, last: 6}],
    surfaces: [],
    nodes: [
        {above: -1, kind: "Window", label: "Settings of user", step: "Window \"Settings of user\""},
        node({label: "Reset", state: "missed", events: [["clicked", 0, true, []]]}),
        node({label: "Apply", state: "used", events: [["clicked", 2, true, [1, 2]], ["shown", 1, true, [0, 1]]]}),
        node({kind: "CheckBox", class: "QCheckBox", label: "Night", state: "shown",
              events: [["checked", 0, true, []], ["shown", 1, true, [2, 1]], ["unchecked", 0, false, []]]}),
        node({label: "a+b (c)", state: "missed", text: "http://host"}),
        node({kind: "TextInput", class: "QLineEdit", text: "Kitchen", state: "used", events: [["textEdited", 7, true, [1, 7]]]}),
        {above: -1, kind: "Dialog", label: "About", step: "Dialog \"About\"", state: "missed", class: "QDialog", events: []}
    ]
});

function matches(text) {
    const {terms, problems} = page.filter.parse(text);
    assert.equal(problems.length, 0, `${text}: ${problems}`);
    return page.model.data.elements.filter(page.filter.matcher(terms))
        .map((element) => element.label ?? element.kind).join(" ");
}

const ofControls = load({
    controls: true,
    contexts: [""],
    runs: [{started: "2024-05-01T08:00:00Z", labels: {branch: "main"}}, {started: "2024-05-02T08:00:00Z", labels: {}}],
    windows: [{application: "a", node: 0, last: 4}],
    surfaces: [{window: 0, node: 0, above: -1, own: [3, 2, 1, 0, 1]}, {window: 0, node: 3, above: 0, own: [1, 0, 1, 0, 0]}],
    nodes: [
        {above: -1, kind: "Window", label: "Panel", step: "Window \"Panel\"", home: 0, view: true, events: []},
        node({kind: "Command", label: "Save", state: "used", home: 0, ways: ["menu", "shortcut"], usedWays: ["shortcut"], uses: [0, 5, 9, 1, -1, -1]}),
        node({label: "Row", groupName: "List/Row", members: 3, usedMembers: 1, group: [], state: "used", home: 0, uses: [1, 7, 7]}),
        {above: 0, kind: "Page", label: "Advanced", step: "Page \"Advanced\"", home: 1, view: true, events: []},
        node({above: 3, label: "Deep", state: "shown", home: 1})
    ]
});

const all = "Reset Apply Night a+b (c) TextInput About";
const cases = {
    "": all,
    "   ": all,
    "reset": "Reset",
    "RESET": "Reset",
    "kitchen": "TextInput",
    "s:missed": "Reset a+b (c) About",
    "s:m": "Reset a+b (c) About",
    "s:missed,shown": "Reset Night a+b (c) About",
    "!s:used": "Reset Night a+b (c) About",
    "s:missed s:used": "",
    "t:button": "Reset Apply a+b (c)",
    "t:QCheckBox": "Night",
    "!t:button": "Night TextInput About",
    "w:About": "About",
    "w:\"Settings*\"": "Reset Apply Night a+b (c) TextInput",
    "w:Sett?ngs*": "Reset Apply Night a+b (c) TextInput",
    "w:\"Settings\"": "Reset Apply Night a+b (c) TextInput",
    "w:S*r": "Reset Apply Night a+b (c) TextInput",
    "w:S*f": "",
    "e:clicked": "Apply",
    "!e:clicked": "Reset Night a+b (c) TextInput About",
    "e:click*": "Apply",
    "never:clicked": "Reset",
    "never:unchecked": "",
    "never:checked": "Night",
    "c:test_login": "Apply TextInput",
    "c:test_*": "Apply Night TextInput",
    "k:Settings": "Reset Apply Night a+b (c) TextInput",
    "s:missed t:button reset": "Reset",
    "s:missed !reset": "a+b (c) About",
    "\"a+b (c)\"": "a+b (c)",
    "a+b": "a+b (c)",
    "\"http://host\"": "a+b (c)",
    "\"unclosed": "",
    "re*": "Reset",
    "*e*": "Reset Night TextInput"
};

for (const [text, expected] of Object.entries(cases)) {
    test(`filter "${text}"`, () => {
        assert.equal(matches(text), expected);
    });
}

const casesOfControls = {
    "way:shortcut": "Save",
    "way:menu": "",
    "never:menu": "Save",
    "g:row": "Row",
    "g:*": "Row",
    "r:1": "Save",
    "r:2": "Save Row",
    "r:3": "",
    "r:2024-05-01*": "Save",
    "l:branch=main": "Save",
    "l:branch": "Save",
    "!l:branch=main": "Row Deep",
    "v:Advanced": "Deep",
    "v:\"Window*\"": "Save Row",
    "s:used r:2 !way:shortcut": "Row"
};

for (const [text, expected] of Object.entries(casesOfControls)) {
    test(`filter of controls "${text}"`, () => {
        const {terms, problems} = ofControls.filter.parse(text);
        assert.equal(problems.length, 0);
        assert.equal(ofControls.model.data.elements.filter(ofControls.filter.matcher(terms))
            .map((element) => element.label).join(" "), expected);
    });
}

test("a choice writes its term, and takes it away", () => {
    const {withTerm} = ofControls.filter;
    assert.equal(withTerm("", "r", "2"), "r:2");
    assert.equal(withTerm("s:used r:1", "r", "2"), "s:used r:2");
    assert.equal(withTerm("r:1 ok", "r", ""), "ok");
    assert.equal(withTerm("", "v", "My page"), "v:\"My page\"");
    assert.equal(withTerm("v:\"My page\" x", "v", "Other"), "x v:Other");
});

test("shares are rounded so that only none is 0 and only all is 100", () => {
    const {cover} = ofControls.model;
    ofControls.model.data.precision = 0;
    assert.deepEqual([[0, 0], [0, 9], [1, 900], [899, 900], [900, 900], [1, 3]].map(([used, known]) => cover(used, known)),
                     ["-", "0%", "1%", "99%", "100%", "33%"]);
});

test("a view that nobody saw says what opens it", () => {
    const {data, openedBy, viewName} = ofControls.model;
    assert.equal(openedBy(data.surfaces[1]), null);
    data.surfaces[1].opener = 1;
    assert.equal(openedBy(data.surfaces[1]), "by Command \"Save\" in Window \"Panel\"");
    assert.equal(viewName(data.surfaces[1]), "Page Advanced");
    assert.equal(viewName(data.surfaces[0]), "Window");
});

test("what cannot be understood is told, and the rest is used", () => {
    const {terms, problems} = page.filter.parse("x:foo reset");
    assert.equal(terms.length, 1);
    assert.match(problems[0], /there is no x:/);
    assert.match(page.filter.parse("s:misssed").problems[0], /missed, shown, used/);
    assert.match(page.filter.parse("t: reset").problems[0], /t: has nothing behind it/);
    assert.equal(page.filter.parse("t: reset").terms.length, 1);
});

test("the toggles and the text say the same", () => {
    const {states, withStates} = page.filter;
    const every = ["missed", "shown", "used"];
    assert.deepEqual([...states("t:button")], every);
    assert.deepEqual([...states("s:missed t:button")], ["missed"]);
    assert.deepEqual([...states("!s:used")], ["missed", "shown"]);
    assert.equal(withStates("t:button", ["missed"]), "s:missed t:button");
    assert.equal(withStates("t:button s:used !x", ["missed", "shown"]), "s:missed,shown t:button !x");
    assert.equal(withStates("s:missed t:button", every), "t:button");
    assert.equal(withStates("s:missed", []), "", "nothing at all is not what anybody wants to see");
});
