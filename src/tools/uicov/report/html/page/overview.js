"use strict";

/** The first page: what it comes to, window by window and run by run. */
Page.overview = (() => {
    const {el, svg, shown, plain, glyph, number, count, bar} = Page.text;
    const columnsFor = (terms) => [
        ["Window", "name", (window) => Page.model.windowName(window).toLowerCase()],
        ["Application", "application", (window) => window.application.toLowerCase()],
        [terms.Things, "number spare", (window) => -window.totals.elements],
        ["", "share", (window) => share(window)],
        ["Views seen", "number spare", ({totals}) => totals.views ? totals.seenViews / totals.views : Infinity],
        ["Missed", "number", (window) => -window.totals.missed],
        [terms.Shown, "number", (window) => -window.totals.shown],
        ["Used", "number spare", (window) => -window.totals.used],
        ["Cover", "number", (window) => share(window)]
    ];
    const trendRuns = 60;

    /** Windows with nothing that counts come after all others. */
    function share({totals}) {
        return totals.elements ? totals.used / totals.elements : Infinity;
    }

    function figure(state, value, word) {
        return el("li", {class: state}, glyph(state), " ", el("strong", {}, number(value)), ` ${word}`);
    }

    function sum() {
        const {totals, windows, runs} = Page.model.data;
        const isOfControls = Page.model.data.controls;
        return el("section", {class: "sum", "aria-label": "Totals"},
            el("p", {class: "cover"}, el("strong", {}, totals.cover), isOfControls ? " of controls used" : " used"),
            isOfControls ? el("p", {class: "cover"}, el("strong", {}, Page.model.cover(totals.seenViews, totals.views)), " of views seen") : null,
            el("div", {class: "shares"}, bar(totals),
                el("ul", {}, figure("used", totals.used, "used"), figure("shown", totals.shown, Page.model.terms.onlyShown),
                   figure("missed", totals.missed, "missed"),
                   totals.unavailable ? figure("unavailable", totals.unavailable, "never enabled, not counted") : null)),
            el("dl", {class: "facts"},
                el("div", {}, el("dt", {}, Page.model.terms.Things), el("dd", {}, number(totals.elements))),
                Page.model.data.controls
                    ? el("div", {}, el("dt", {}, "Views seen"), el("dd", {}, `${number(totals.seenViews)} of ${number(totals.views)}`))
                    : el("div", {}, el("dt", {}, "Events"), el("dd", {}, `${number(totals.covered)} of ${number(totals.events)}`)),
                el("div", {}, el("dt", {}, "Windows"), el("dd", {}, number(windows.length))),
                el("div", {}, el("dt", {}, "Runs"), el("dd", {}, number(runs.length)))));
    }

    function windowRow(window) {
        const {totals} = window;
        const link = el("a", {href: Page.main.linkTo({window: window.index})}, shown(Page.model.windowName(window)));
        const row = el("tr", {}, el("th", {scope: "row"}, link, el("span", {class: "below"}, shown(window.application))),
            Page.model.data.applications.length > 1 ? el("td", {class: "application"}, shown(window.application)) : null,
            el("td", {class: "number spare"}, number(totals.elements)), el("td", {class: "share"}, bar(totals)),
            Page.model.data.controls ? el("td", {class: "number spare"}, `${number(totals.seenViews)} of ${number(totals.views)}`) : null,
            ...["missed", "shown", "used"].map((state) =>
                el("td", {class: `number ${totals[state] ? state : "none"}${state === "used" ? " spare" : ""}`}, number(totals[state]))),
            el("td", {class: "number"}, totals.cover));
        return {window, row, link};
    }

    function windowsTable() {
        const rows = Page.model.data.windows.map(windowRow);
        const body = el("tbody", {}, rows.map(({row}) => row));
        const shownColumns = columnsFor(Page.model.terms).filter(([name]) =>
            (name !== "Application" || Page.model.data.applications.length > 1) && (name !== "Views seen" || Page.model.data.controls));
        const head = el("tr", {}, shownColumns.map(([name, kind, value]) => el("th", {scope: "col", class: kind},
            name ? el("button", {type: "button", onclick: (event) => sortBy(event.currentTarget, value, rows, body)}, name)
                 : el("span", {class: "offscreen"}, "Shares"))));
        const table = el("table", {class: "windows"}, el("caption", {class: "offscreen"}, "Windows, the one with the most missed first"),
                         el("thead", {}, head), body);
        return {table, rows, body};
    }

    function sortBy(button, value, rows, body) {
        const heading = button.closest("th");
        const isTurned = heading.getAttribute("aria-sort") === "ascending";
        for (const other of heading.parentElement.children) {
            other.removeAttribute("aria-sort");
        }
        heading.setAttribute("aria-sort", isTurned ? "descending" : "ascending");
        const sign = isTurned ? -1 : 1;
        const sorted = [...rows].sort((a, b) => {
            const [first, second] = [value(a.window), value(b.window)];
            return (first < second ? -sign : first > second ? sign : 0) || a.window.index - b.window.index;
        });
        body.replaceChildren(...sorted.map(({row}) => row));
    }

    /** One bar a run: how much it used of all that is known of the application by now. */
    function trend(application, runs) {
        const known = Page.model.data.windows.filter((window) => window.application === application)
            .reduce((elements, window) => elements + window.totals.elements, 0);
        const latest = runs.slice(-trendRuns);
        const width = latest.length > 20 ? 14 : 34;
        const height = 70;
        const bars = latest.map((run, index) => {
            const part = known ? Math.min(1, run.totals.used / known) * height : 0;
            const box = {x: index * width, width: width - 4};
            return svg("g", {}, svg("title", {}, plain(`${date(run)}: ${run.totals.used} of ${known} used, ${run.first} for the first time${run.complete ? "" : "; partial"}`)),
                svg("rect", {class: "ground", ...box, y: 0, height}),
                svg("rect", {class: run.complete ? "used" : "shown", ...box, y: height - part, height: part}),
                width > 20 ? svg("text", {x: box.x + box.width / 2, y: height + 14, "text-anchor": "middle"}, number(run.totals.used)) : null);
        });
        const [first, last] = [latest[0], latest.at(-1)].map((run) => number(run.totals.used));
        const words = `of ${count(known, Page.model.terms.thing, Page.model.terms.things)} that are known now, the first of ${runs.length > trendRuns ? `the last ${trendRuns}` : runs.length} runs used ${first}, the last ${last}`;
        return el("figure", {class: "trend"}, el("figcaption", {}, shown(application), `: ${words}`),
                  svg("svg", {viewBox: `0 0 ${latest.length * width} ${height + 18}`, width: latest.length * width, height: height + 18, role: "img",
                              "aria-label": `Bars: ${words}`}, bars));
    }

    function date(run) {
        return run.started ? run.started.replace("T", " ").replace(/(\.\d+)?Z$/, " UTC") : "unknown";
    }

    function trends() {
        const byApplication = new Map();
        for (const run of Page.model.data.runs) {
            byApplication.set(run.application, [...(byApplication.get(run.application) ?? []), run]);
        }
        return [...byApplication].filter(([, runs]) => runs.length > 1).map(([application, runs]) => trend(application, runs));
    }

    function runRow(run) {
        const labels = Object.entries(run.labels).map(([name, value]) => el("span", {class: "chip"}, shown(`${name}=${value}`)));
        const contexts = run.contexts.slice(0, 4).map((name) => Page.model.data.contexts.includes(name)
            ? el("a", {class: "chip", href: Page.main.linkTo({window: -1, filter: `c:"${name}"`})}, shown(name))
            : el("span", {class: "chip uncounted", title: "not counted"}, shown(name)));
        return el("tr", {}, el("th", {scope: "row"}, shown(date(run))), el("td", {}, shown(run.application)),
            el("td", {class: "chips"}, labels, contexts, run.contexts.length > 4 ? ` +${run.contexts.length - 4} contexts` : null),
            el("td", {}, shown([run.qt && `Qt ${run.qt}`, run.platform, run.locale].filter(Boolean).join(", "))),
            el("td", {class: run.complete ? "" : "partial"}, run.complete ? "complete" : ["partial: it ", shown(run.reason)]),
            el("td", {class: "number"}, run.totals.cover),
            el("td", {class: "number"}, `${number(run.totals.used)} of ${number(run.totals.elements)}`),
            el("td", {class: "number"}, number(run.first)));
    }

    function runsSection() {
        const {runs} = Page.model.data;
        const heads = ["Started", "Application", "Labels and contexts", "On", "Data", "Cover", "Used", "First used here"];
        return el("section", {class: "runs", "aria-labelledby": "runs-title"}, el("h2", {id: "runs-title"}, "Runs"), trends(),
            el("div", {class: "wide", tabindex: 0, role: "region", "aria-label": "Table of runs"},
                el("table", {}, el("thead", {}, el("tr", {}, heads.map((name, index) => el("th", {scope: "col", class: index > 4 ? "number" : ""}, name)))),
                   el("tbody", {}, runs.map(runRow)))));
    }

    function gates() {
        const {gates: all} = Page.model.data;
        return all.length === 0 ? null : el("section", {class: "gates", "aria-labelledby": "gates-title"},
            el("h2", {id: "gates-title"}, "Gates"),
            el("ul", {}, all.map(({name, finding, met}) => el("li", {class: met ? "met" : "unmet"},
                glyph(met ? "used" : "missed"), el("strong", {}, met ? "met" : "not met"), " ",
                el("code", {}, shown(name)), ": ", shown(finding)))));
    }

    function rules() {
        const {rules: all} = Page.model.data;
        if (!all.length) {
            return null;
        }
        const link = (rule) => rule.elements ? el("a", {href: Page.main.linkTo({window: -1, filter: "s:ignored"})}, number(rule.elements)) : "0";
        const heads = [["Rule", ""], ["Why", ""], ["Where", ""], ["Elements", "number"], ["Of them used", "number"]];
        return el("section", {"aria-labelledby": "rules-title"}, el("h2", {id: "rules-title"}, "Left out by rules"),
            el("div", {class: "wide", tabindex: 0, role: "region", "aria-label": "Table of rules"},
                el("table", {class: "rules"}, el("thead", {}, el("tr", {}, heads.map(([name, type]) => el("th", {scope: "col", class: type}, name)))),
                   el("tbody", {}, all.map((rule) => el("tr", {}, el("th", {scope: "row"}, el("code", {}, shown(rule.rule))),
                      el("td", {}, shown(rule.why)), el("td", {}, shown(rule.where)), el("td", {class: "number"}, link(rule)),
                      el("td", {class: "number"}, number(rule.used))))))));
    }

    function notes() {
        const texts = Page.model.data.notes;
        return el("section", {class: "notes", "aria-labelledby": "notes-title"}, el("h2", {id: "notes-title"}, "About these numbers"),
            el("ul", {}, el("li", {}, Page.model.terms.legend),
               texts.map((text) => el("li", {}, shown(text)))));
    }

    function create() {
        const {table, rows} = windowsTable();
        const go = (node) => Page.main.go({window: node.window, element: node.index}, true);
        const list = Page.list.create("matches", "Matching elements", {select: (node) => { list.select(node); }, open: go, hover: (node) => list.hover(node)}, true);
        list.element.addEventListener("click", (event) => {
            const row = event.target.closest(".row");
            if (row) {
                go(Page.model.data.nodes[row.dataset.node]);
            }
        });
        const cards = Page.cards.create();
        const title = el("h2", {id: "matches-title"});
        const matches = el("section", {class: "matches", hidden: true, "aria-labelledby": "matches-title"}, title, list.element);
        const windowsTitle = el("h2", {}, "Windows");
        const element = el("main", {class: "overview"},
            el("h1", {}, shown(Page.model.data.title)),
            Page.model.data.warnings.map((text) => el("p", {class: "warning", role: "note"}, shown(text))),
            sum(), gates(), matches, cards.elements,
            el("section", {}, windowsTitle, el("div", {class: "wide", tabindex: 0, role: "region", "aria-label": "Table of windows"}, table)),
            Page.timeline.section(go), rules(), runsSection(), notes());

        function update(view, matched) {
            const isFiltered = view.filter.trim() !== "";
            const perWindow = new Set(matched.map((node) => node.window));
            for (const {window, row, link} of rows) {
                row.hidden = isFiltered && !perWindow.has(window.index);
                link.setAttribute("href", Page.main.linkTo({window: window.index}));
            }
            cards.update(isFiltered ? matched : null);
            matches.hidden = !isFiltered;
            const ignored = matched.filter((node) => node.isIgnored).length;
            title.textContent = `Matches: ${count(matched.length - ignored, Page.model.terms.thing, Page.model.terms.things)}${ignored ? `, ${number(ignored)} left out by rules` : ""}`;
            windowsTitle.textContent = isFiltered ? `Windows with matches: ${perWindow.size}` : "Windows";
            list.show(isFiltered ? [{nodes: [...matched].sort(Page.list.orders[view.sort])}] : []);
        }
        return {element, update, list};
    }

    return {create};
})();
