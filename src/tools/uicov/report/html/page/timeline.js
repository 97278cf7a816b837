"use strict";

/** What was used when, in one run: a row for each view, a mark for each thing at the time of its first use. */
Page.timeline = (() => {
    const {el, svg, shown, plain} = Page.text;
    const rowHeight = 22;
    const width = 1000;
    /** More rows nobody reads as one picture. */
    const mostRows = 24;
    const ticks = 6;

    function clock(milliseconds) {
        const seconds = milliseconds / 1000;
        return `${Math.floor(seconds / 60)}:${(seconds % 60).toFixed(seconds < 600 ? 1 : 0).padStart(seconds < 600 ? 4 : 2, "0")}`;
    }

    /** {node, first, last} of what has times in the run. */
    function usesIn(run) {
        return Page.model.data.nodes.flatMap((node) => Page.model.usesOf(node)
            .filter((use) => use.run === run && use.first >= 0).map(({first, last}) => ({node, first, last})));
    }

    function timedRuns() {
        const runs = new Set();
        for (const node of Page.model.data.nodes) {
            Page.model.usesOf(node).filter(({first}) => first >= 0).forEach(({run}) => runs.add(run));
        }
        return [...runs].sort((a, b) => a - b);
    }

    function rowsOf(uses) {
        const rows = new Map();
        for (const use of [...uses].sort((a, b) => a.first - b.first)) {
            const home = use.node.home ?? -1;
            rows.set(home, [...(rows.get(home) ?? []), use]);
        }
        return [...rows];
    }

    /** Of the contexts that things were used in: from the first to the last of these. */
    function contextsOf(uses) {
        const spans = new Map();
        for (const {node, first, last} of uses) {
            const hits = (node.events ?? []).flatMap(([, , , numbers]) => numbers.filter((_, index) => index % 2 === 0));
            const own = [...new Set(hits)];
            if (own.length === 1 && Page.model.data.contexts[own[0]]) {
                const span = spans.get(own[0]) ?? [Infinity, 0];
                spans.set(own[0], [Math.min(span[0], first), Math.max(span[1], last)]);
            }
        }
        return [...spans].sort(([, a], [, b]) => a[0] - b[0]);
    }

    function strip(run, go) {
        const uses = usesIn(run);
        const rows = rowsOf(uses);
        const end = Math.max(1, ...uses.map(({last}) => last));
        const x = (time) => width * time / end;
        const contexts = contextsOf(uses);
        const head = contexts.length ? rowHeight : 4;
        const visible = rows.slice(0, mostRows);
        const height = head + visible.length * rowHeight;
        const marks = visible.flatMap(([, row], index) => row.map(({node, first, last}) =>
            svg("g", {class: node.view ? "seen" : "use", "data-node": node.index},
                svg("title", {}, plain(`${clock(first)} ${Page.model.stepName(node)}${node.view ? " seen" : ""}`)),
                !node.view && last > first ? svg("rect", {class: "span", x: x(first), y: head + index * rowHeight + 9, width: Math.max(1, x(last) - x(first)), height: 4}) : null,
                svg("rect", {class: "mark", x: Math.min(width - 4, x(first)), y: head + index * rowHeight + (node.view ? 2 : 5), width: node.view ? 2 : 4, height: node.view ? 18 : 12}))));
        const picture = svg("svg", {class: "strip", viewBox: `0 0 ${width} ${height}`, height, preserveAspectRatio: "none", role: "img",
                                    "aria-label": `${uses.length} first uses in ${clock(end)} minutes; the lists have the same`},
            ...visible.map((_, index) => svg("rect", {class: index % 2 ? "lane odd" : "lane", x: 0, y: head + index * rowHeight, width, height: rowHeight})),
            ...contexts.map(([context, [first, last]], index) => svg("g", {class: `context${index % 2 ? " odd" : ""}`},
                svg("title", {}, plain(Page.model.data.contexts[context])),
                svg("rect", {x: x(first), y: 3, width: Math.max(3, x(last) - x(first)), height: 12}))),
            ...marks);
        picture.addEventListener("click", (event) => {
            const mark = event.target.closest("[data-node]");
            if (mark) {
                go(Page.model.data.nodes[mark.dataset.node]);
            }
        });
        const names = el("ul", {class: "lanes"}, head > 4 ? el("li", {class: "head"}, "Contexts") : null, visible.map(([home]) => el("li", {},
            shown(home < 0 ? "" : laneName(Page.model.data.surfaces[home])))));
        const scale = el("ol", {class: "clock", "aria-hidden": "true"}, Array.from({length: ticks}, (_, index) => el("li", {}, clock(end * index / (ticks - 1)))));
        return el("div", {class: "timeline"}, names, el("div", {class: "lanes-picture"}, picture, scale),
            rows.length > mostRows ? el("p", {class: "none"}, `and ${rows.length - mostRows} more views`) : null);
    }

    function laneName(surface) {
        const window = Page.model.data.windows[surface.window];
        return surface.above < 0 ? Page.model.windowName(window)
            : Page.model.data.windows.length > 1 ? `${Page.model.viewName(surface)} · ${Page.model.name(Page.model.data.nodes[window.node])}` : Page.model.viewName(surface);
    }

    /** Null where no run tells times. @param go shows a node */
    function section(go) {
        const runs = timedRuns();
        if (!runs.length) {
            return null;
        }
        const place = el("div", {}, strip(runs.at(-1), go));
        const choice = runs.length < 2 ? null : el("label", {class: "choice"}, "Run ",
            el("select", {onchange: (event) => place.replaceChildren(strip(Number(event.target.value), go))},
               [...runs].reverse().map((run) => el("option", {value: run}, `${run + 1}: ${Page.model.data.runs[run]?.started ?? ""}`))));
        return el("section", {class: "when", "aria-labelledby": "when-title"},
            el("div", {class: "section-head"}, el("h2", {id: "when-title"}, "When"), choice), place);
    }

    return {section, clock};
})();
