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
            node.isListed = node.counts || node.isIgnored || Boolean(node.unopened) || Boolean(node.unavailable);
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
        data.surfaces.forEach((surface, index) => {
            surface.index = index;
            const [elements, used, shown, missed, unavailable] = surface.own ?? [0, 0, 0, 0, 0];
            surface.totals = {elements, used, shown, missed, unavailable, cover: cover(used, elements)};
        });
        data.elements = data.nodes.filter((node) => node.counts);
        data.applications = [...new Set(data.windows.map((window) => window.application))];
        return data;
    }

    /** In percent: 0 only for none and 100 only for all; with as many digits as the page has elsewhere. */
    function cover(used, elements) {
        if (!elements) {
            return "-";
        }
        const exact = 100 * used / elements;
        const step = 10 ** -data.precision;
        const rounded = exact > 0 && exact < 100 ? Math.min(100 - step, Math.max(step, exact)) : exact;
        return `${rounded.toFixed(data.precision)}%`;
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

    /** What people call the element: its label, else what it is; a group by what it is made of. */
    function name(node) {
        if (node.members && node.groupName) {
            return node.groupName;
        }
        if (!node.label) {
            return node.above < 0 || !node.ordinal ? node.of ?? node.kind : `${node.kind} ${node.ordinal}`;
        }
        return node.ordinal ? `${node.label} (${node.ordinal})` : node.label;
    }

    /** What stands between the window and the element; deep paths lose their middle. */
    function path(node, isBelowItsView) {
        const names = steps(node).slice(1, -1).filter((step) => data.controls ? !(step.view && isBelowItsView) : step.kind !== "Menu").map(name);
        return names.length > 8 ? [...names.slice(0, 4), "…", ...names.slice(-3)] : names;
    }

    /** The menu that the surface shows, as the names of what has to be opened; empty for the window. */
    function menuPath(surface) {
        return surface.opener < 0
            ? (surface.node === data.windows[surface.window].node ? [] : ["Menu"])
            : steps(data.nodes[surface.opener]).slice(1)
                .filter((step) => step.kind !== "Menu" && step.kind !== "MenuBar").map(name);
    }

    /** The views around the node, the nearest first, without the window; it comes first when it is one itself. */
    function viewsAround(node) {
        const found = [];
        for (let surface = data.surfaces[node.home]; surface && surface.above >= 0; surface = data.surfaces[surface.above]) {
            found.push(surface);
        }
        return found;
    }

    /** What people call the view of the surface, with the views of the same kind around it. */
    function viewName(surface) {
        const node = data.nodes[surface.node];
        if (!data.controls) {
            const opened = menuPath(surface);
            return opened.length ? `Menu ${opened.join(" › ")}` : "Window";
        }
        if (surface.above < 0) {
            return node.kind;
        }
        const names = viewsAround(node).map((view) => data.nodes[view.node]).filter((view) => view.kind === node.kind)
            .map(name).reverse();
        return `${names[0].startsWith(node.kind) ? "" : `${node.kind} `}${names.join(" › ")}`;
    }

    /** What brings the view up, as a sentence's end; null where nobody knows. */
    function openedBy(surface) {
        const opener = data.nodes[surface.opener];
        if (!opener) {
            return null;
        }
        const around = data.surfaces[opener.home];
        return `by ${stepName(opener)}${around ? ` in ${stepName(data.nodes[around.node])}` : ""}`;
    }

    /** Those that the picture of the surface shows, with those of pages that it shows. */
    function nodesOn(surface) {
        const shown = new Set([surface.index]);
        for (const index of shown) {
            (data.surfaces[index].shows ?? []).forEach((inner) => shown.add(inner));
        }
        return data.nodes.slice(data.windows[surface.window].node, data.windows[surface.window].last + 1)
            .filter((node) => node.isListed && shown.has(node.surface));
    }

    /** [{run, first, last}]: when it was used, in milliseconds since the beginning of the run; below 0 where nobody knows. */
    function usesOf(node) {
        const uses = [];
        for (let i = 0; i < (node.uses ?? []).length; i += 3) {
            uses.push({run: node.uses[i], first: node.uses[i + 1], last: node.uses[i + 2]});
        }
        return uses;
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
        return node.state ?? (node.isIgnored ? "ignored" : node.unavailable ? "unavailable" : "unopened");
    }

    return {states, load, cover, viewsAround, viewName, openedBy, nodesOn, usesOf, steps, key, stepName, name, path, menuPath, elementsOf, windowName, fullWindowName, stateOf,
            get data() { return data; }, get terms() { return data.controls ? controlTerms : classicTerms; }};
})();
