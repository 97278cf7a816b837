"use strict";

/** The page's data, and what follows from it. */
Page.model = (() => {
    const states = ["missed", "shown", "used"];
    let data = null;

    /** What things and states are called, which depends on the extension that recorded them. */
    const classicTerms = {
        thing: "element", things: "elements", Things: "Elements", shown: "shown", Shown: "Shown", onlyShown: "only shown",
        legend: "Used: operated, or seen where there is nothing to operate. Only shown: seen, and no more. Missed: neither.",
        used: "Used: operated, or seen where there is nothing to operate.",
        seen: "Only shown: it was seen, and nothing else happened to it.",
        missed: "Missed: nothing that can happen to it did."
    };
    const controlTerms = {
        thing: "control", things: "controls", Things: "Controls", shown: "seen", Shown: "Seen", onlyShown: "only seen",
        legend: "Used: a person operated it. Only seen: its view was seen, but it was not used. Missed: its view was never seen.",
        used: "Used: a person operated it.",
        seen: "Only seen: its view was seen while it was enabled, but nobody used it.",
        missed: "Missed: its view was never seen."
    };

    function load(source) {
        data = source;
        data.nodes.forEach((node, index) => {
            node.index = index;
            node.counts = node.state !== undefined;
            node.isIgnored = node.rule !== undefined;
            node.isListed = node.counts || node.isIgnored || Boolean(node.unopened);
        });
        data.windows.forEach((window, index) => {
            window.index = index;
            window.opened = [];
            for (let i = window.node; i <= window.last; ++i) {
                data.nodes[i].window = index;
            }
        });
        for (const window of data.windows) {
            data.windows[window.over]?.opened.push(window);
        }
        data.surfaces.forEach((surface, index) => { surface.index = index; });
        data.elements = data.nodes.filter((node) => node.counts);
        data.applications = [...new Set(data.windows.map((window) => window.application))];
        return data;
    }

    /** The steps that lead to the node, its window first. */
    function steps(node) {
        const found = [];
        for (let step = node; step; step = data.nodes[step.above]) {
            found.unshift(step);
        }
        return found;
    }

    function key(node) {
        return steps(node).map((step) => step.step).join(" > ");
    }

    /** One step for people, as the command prints it. */
    function stepName(node) {
        return [node.kind, node.label && `"${node.label}"`, node.of && `(${node.of})`,
                node.ordinal && `#${node.ordinal}`].filter(Boolean).join(" ");
    }

    /** What people call the element: its label, else what it is. */
    function name(node) {
        if (!node.label) {
            return node.above < 0 || !node.ordinal ? node.of ?? node.kind : `${node.kind} ${node.ordinal}`;
        }
        return node.ordinal ? `${node.label} (${node.ordinal})` : node.label;
    }

    /** What stands between the window and the element; deep paths lose their middle. */
    function path(node) {
        const names = steps(node).slice(1, -1).filter((step) => step.kind !== "Menu").map(name);
        return names.length > 8 ? [...names.slice(0, 4), "…", ...names.slice(-3)] : names;
    }

    /** The menu that the surface shows, as the names of what has to be opened; empty for the window. */
    function menuPath(surface) {
        return surface.opener < 0
            ? (surface.node === data.windows[surface.window].node ? [] : ["Menu"])
            : steps(data.nodes[surface.opener]).slice(1)
                .filter((step) => step.kind !== "Menu" && step.kind !== "MenuBar").map(name);
    }

    function elementsOf(window) {
        const found = [];
        for (let i = window.node; i <= window.last; ++i) {
            if (data.nodes[i].isListed) {
                found.push(data.nodes[i]);
            }
        }
        return found;
    }

    function windowName(window) {
        return stepName(data.nodes[window.node]);
    }

    /** With the application, where there are several. */
    function fullWindowName(window) {
        return `${data.applications.length > 1 ? `${window.application}: ` : ""}${windowName(window)}`;
    }

    /** What people call the state: those of elements that count, and of the others. */
    function stateOf(node) {
        return node.state ?? (node.isIgnored ? "ignored" : "unopened");
    }

    return {states, load, steps, key, stepName, name, path, menuPath, elementsOf, windowName, fullWindowName, stateOf,
            get data() { return data; }, get terms() { return data.controls ? controlTerms : classicTerms; }};
})();
