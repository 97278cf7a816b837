"use strict";

/** The views as small pictures, the worst first. */
Page.cards = (() => {
    const {el, shown, bar, number} = Page.text;
    const few = 12;
    const width = 240;
    const height = 150;

    function share({totals}) {
        return totals.elements ? totals.used / totals.elements : 1;
    }

    /** Views with nothing to use in them say nothing here. */
    function views() {
        return Page.model.data.surfaces.filter((surface) => !surface.older && surface.totals.elements > 0)
            .sort((a, b) => share(a) - share(b) || b.totals.elements - b.totals.used - (a.totals.elements - a.totals.used) || a.index - b.index);
    }

    function nameOf(surface) {
        return surface.above < 0 ? Page.model.windowName(Page.model.data.windows[surface.window]) : Page.model.viewName(surface);
    }

    function card(surface) {
        const {data} = Page.model;
        const {totals} = surface;
        const window = data.windows[surface.window];
        const where = [surface.above < 0 ? null : `in ${Page.model.windowName(window)}`, data.applications.length > 1 ? window.application : null].filter(Boolean).join(", ");
        const hasPicture = surface.picture >= 0 || Page.model.nodesOn(surface).length > 0;
        return el("a", {class: "card", "data-surface": surface.index},
            el("span", {class: "frame"}, hasPicture ? Page.picture.small(surface, width, height) : el("span", {class: "blank"}, "no picture")),
            el("strong", {}, shown(nameOf(surface))), where ? el("span", {class: "where"}, shown(where)) : null, bar(totals),
            el("span", {class: "figures"}, `${number(totals.used)} of ${number(totals.elements)} used`, el("span", {class: "cover"}, totals.cover)));
    }

    /** What nobody ever brought up has no picture: a line for each, the one with the most in it first. */
    function unopened() {
        const all = views().filter(({unseen}) => unseen).sort((a, b) => b.totals.elements - a.totals.elements || a.index - b.index)
            .map((surface) => ({surface, element: line(surface)}));
        if (!all.length) {
            return null;
        }
        const controls = all.reduce((sum, {surface}) => sum + surface.totals.elements, 0);
        const list = el("ul", {class: "unopened-views"});
        const {terms} = Page.model;
        const section = el("section", {"aria-labelledby": "unopened-title"},
            el("h2", {id: "unopened-title"}, "Never opened", el("span", {class: "many"},
                ` ${Page.text.count(all.length, "view", "views")} with ${Page.text.count(controls, terms.thing, terms.things)}`)), list);
        return {element: section, ...limited(all, list, section, 9)};
    }

    function line(surface) {
        const window = Page.model.data.windows[surface.window];
        const by = Page.model.openedBy(surface);
        const {terms} = Page.model;
        return el("li", {}, el("a", {"data-surface": surface.index}, shown(nameOf(surface))),
            el("span", {class: "figures"}, Page.text.count(surface.totals.elements, terms.thing, terms.things)),
            el("span", {class: "where"}, shown(by ?? (surface.above < 0 ? "" : `in ${Page.model.windowName(window)}`))));
    }

    /** Shows the first of what fits the filter, and all on demand. */
    function limited(all, list, section, first) {
        let limit = first;
        const more = el("button", {type: "button", class: "action", onclick: () => { limit = Infinity; draw(); }});
        let wanted = null;
        section.append(more);
        function draw() {
            const fitting = all.filter(({surface}) => !wanted || wanted.has(surface.index));
            const visible = fitting.slice(0, limit);
            for (const entry of visible) {
                entry.element ??= card(entry.surface);
                const {window, node} = entry.surface;
                const isWindow = Page.model.data.windows[window].node === node;
                const link = entry.element.querySelector("a") ?? entry.element;
                link.setAttribute("href", Page.main.linkTo({window, surface: isWindow ? -1 : entry.surface.index}));
            }
            list.replaceChildren(...visible.map(({element}) => element));
            more.hidden = fitting.length <= limit;
            more.textContent = `Show all ${number(fitting.length)}`;
            section.hidden = fitting.length === 0;
        }
        /** Those with something in it that fits the filter; null for all. */
        return {update: (nodes) => { wanted = nodes && new Set(nodes.map((node) => node.home)); draw(); }};
    }

    function create() {
        const all = views().filter(({unseen}) => !unseen).map((surface) => ({surface, element: null}));
        const grid = el("div", {class: "grid"});
        const section = el("section", {class: "views", "aria-labelledby": "views-title"},
            el("h2", {id: "views-title"}, Page.model.data.controls ? "Views" : "Windows and menus", el("span", {class: "many"}, " the least used first")), grid);
        const parts = [{element: section, ...limited(all, grid, section, few)}, unopened()].filter(Boolean);
        return {elements: parts.map(({element}) => element), update: (nodes) => parts.forEach((part) => part.update(nodes))};
    }

    return {create};
})();
