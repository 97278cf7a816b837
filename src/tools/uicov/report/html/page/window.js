"use strict";

/** One window: its picture with the elements outlined, its list, and the selected element. */
Page.window = (() => {
    const {el, shown, bar, count} = Page.text;
    /** Windows over this one, before they are folded. */
    const openedShown = 8;
    /** Views that nobody opened, before they are folded: they have no pictures. */
    const unseenShown = 6;
    const smallWidth = 112;
    const smallHeight = 70;

    function create(window) {
        const {data} = Page.model;
        const all = Page.model.elementsOf(window);
        const state = {window, all, surface: -1, picture: null, selected: null, drawn: new Set()};
        const on = {
            select: (node) => Page.main.go({element: node ? node.index : -1, surface: node && !state.drawn.has(node) ? -1 : state.surface}),
            hover: (node) => hover(state, node),
            open: (node) => open(state, node),
            countOn: (surface) => all.filter((node) => node.home === surface.index && node.index !== surface.node && (data.controls || node.surface === surface.index)).length
        };
        state.on = on;
        state.list = Page.list.create("elements", Page.model.terms.Things, on, false);
        state.stage = Page.stage.create();
        state.caption = el("h2", {class: "caption"});
        state.crumbs = el("nav", {class: "surfaces", "aria-label": "Window, its views, and windows over it"});
        state.panel = el("div", {class: "detail-column", tabindex: 0, role: "region", "aria-label": "Selected"});
        state.order = el("select", {id: "order", onchange: (event) => Page.main.go({sort: event.target.value})},
            Object.entries(Page.list.orderNames).map(([name, words]) => el("option", {value: name}, words)));
        state.status = el("p", {class: "status"});
        state.work = el("div", {class: "work"},
            el("section", {class: "look", "aria-label": "View"},
               el("div", {class: "tools"}, state.caption, state.stage.tools), state.stage.element, state.crumbs),
            el("section", {class: "choose", "aria-label": Page.model.terms.Things},
               el("div", {class: "tools"}, state.status, el("label", {for: "order", class: "offscreen"}, "Order"), state.order), state.list.element),
            state.panel);
        state.element = el("main", {class: "window"}, header(window), state.work);
        drawCrumbs(state);
        return {element: state.element, list: state.list, data, update: (view, matched) => update(state, view, matched),
                up: () => up(state), open: (node) => open(state, node), stage: state.stage};
    }

    function header(window) {
        const {totals} = window;
        const neighbour = (step, label, glyph) => {
            const other = Page.model.data.windows[window.index + step];
            return other ? el("a", {class: "step", "data-window": other.index, "aria-label": label, title: label}, glyph) : null;
        };
        return el("div", {class: "title"},
            el("a", {class: "back", "data-window": -1}, "‹ Overview"),
            el("h1", {}, shown(Page.model.windowName(window))),
            Page.model.data.applications.length > 1 ? el("span", {class: "application"}, shown(window.application)) : null,
            el("span", {class: "cover"}, el("strong", {}, totals.cover), " of ", count(totals.elements, Page.model.terms.thing, Page.model.terms.things), " used",
               Page.model.data.controls ? `, ${totals.seenViews} of ${count(totals.views, "view", "views")} seen` : ""),
            bar(totals),
            window.over >= 0 ? el("a", {class: "over", "data-window": window.over}, "over ", shown(Page.model.windowName(Page.model.data.windows[window.over]))) : null,
            el("span", {class: "steps"}, neighbour(-1, "Previous window", "↑"), neighbour(1, "Next window", "↓")));
    }

    function surfaceTitle(surface) {
        return `${Page.model.viewName(surface)}${surface.older ? ", earlier" : ""}`;
    }

    /** The groups of the list: what belongs to each view, then what no number has. */
    function groups(state, nodes, order) {
        const {surfaces} = Page.model.data;
        const sorted = [...nodes].sort(order);
        const plain = sorted.filter((node) => !node.isIgnored && !node.unopened && !node.unavailable);
        // Of controls it is rare, and the panel says why.
        const apart = Page.model.data.controls ? {} : {unplaced: "place never told", elsewhere: "not there when pictured",
            empty: "no size", outside: "outside of the picture", hidden: "hidden in the picture"};
        const result = state.window.surfaces.map((index) => surfaces[index]).filter((surface) => !surface.older).map((surface) => ({
            title: surfaceTitle(surface), note: surface.unseen ? "never opened" : surface.picture < 0 ? "no picture" : null,
            nodes: plain.filter((node) => (node.apart && !Page.model.data.controls ? null : node.home) === surface.index)}));
        for (const [reason, words] of Object.entries(apart)) {
            result.push({title: "Not outlined", note: words, nodes: plain.filter((node) => node.apart === reason)});
        }
        result.push({title: "Never enabled", note: "not counted", nodes: sorted.filter((node) => node.unavailable)});
        result.push({title: "Left out by rules", nodes: sorted.filter((node) => node.isIgnored)});
        result.push({title: "Never opened", note: Page.model.data.controls ? null : "contents unknown", nodes: sorted.filter((node) => node.unopened)});
        const isOneGroup = result.filter((group) => group.nodes.length).length === 1 && result[0].nodes.length && !result[0].note;
        return isOneGroup ? [{nodes: result[0].nodes}] : result;
    }

    function mainSurface(state) {
        return state.window.surfaces[0];
    }

    function notesOf(surface, hasPicture) {
        const reduced = surface.picture >= 0 && Page.model.data.pictures[surface.picture].reduced;
        const opener = Page.model.data.nodes[surface.opener];
        const note = (...words) => el("p", {class: "note"}, words);
        return [
            surface.unseen ? note("Nobody ever opened this view. ", opener
                ? [el("a", {href: Page.main.linkTo({window: opener.window, element: opener.index})}, shown(Page.model.stepName(opener))), " opens it."]
                : "What opens it is not known.") : null,
            surface.older ? note("An earlier picture of the same view: the newest does not show these.") : null,
            !surface.unseen && surface.picture < 0 && hasPicture ? note("No picture was recorded, so this is drawn from the places alone. Record with --screenshots to see the real one.") : null,
            reduced ? note("This picture is smaller than it was recorded, to bound the size of the page. ", el("code", {}, "uicov html --split DIR"), " keeps full ones.") : null,
            surface.unseen || hasPicture ? null : note("Neither a picture nor a place of this view was recorded.")
        ].filter(Boolean);
    }

    function showSurface(state, index) {
        if (state.surface === index) {
            return;
        }
        state.surface = index;
        const surface = Page.model.data.surfaces[index];
        state.list.isStart = (node) => node.home === index;
        const isEmpty = surface.bounds[2] <= 0 || surface.bounds[3] <= 0 || surface.unseen;
        const nodes = isEmpty ? [] : Page.model.nodesOn(surface);
        state.drawn = new Set(nodes);
        state.picture = isEmpty ? null : Page.picture.ofSurface(surface, nodes, state.on);
        state.stage.show(state.picture, surface.bounds, notesOf(surface, Boolean(state.picture)));
        const {totals} = surface;
        state.caption.replaceChildren(shown(surfaceTitle(surface)), totals.elements && !surface.older
            ? el("span", {class: "many"}, ` ${totals.used} of ${totals.elements} used`) : "");
        for (const button of state.crumbs.querySelectorAll("button[data-surface]")) {
            const isShown = Number(button.dataset.surface) === index;
            button.setAttribute("aria-pressed", String(isShown));
            if (isShown) {
                button.scrollIntoView?.({block: "nearest", inline: "nearest"});
            }
        }
    }

    /** A small picture of each view of the window, the window itself first. */
    function drawCrumbs(state) {
        const {surfaces} = Page.model.data;
        const {opened} = state.window;
        if (state.window.surfaces.length === 1 && !opened.length) {
            state.crumbs.hidden = true;
            return;
        }
        const links = opened.map((window) => el("a", {"data-window": window.index}, shown(Page.model.windowName(window)), " ↗"));
        const all = state.window.surfaces.map((index) => surfaces[index]);
        const unseen = all.filter((surface) => surface.unseen && surface.totals.elements > 0);
        const fold = (items, words, isOpen) => items.length ? [el("details", {open: isOpen}, el("summary", {}, words), items)] : [];
        state.crumbs.replaceChildren(...all.filter((surface) => !surface.unseen || surface.above < 0).map(crumb),
            ...(unseen.length > unseenShown ? fold(unseen.map(crumb), `${unseen.length} never opened`, false) : unseen.map(crumb)),
            ...links.slice(0, openedShown),
            ...fold(links.slice(openedShown), `${links.length - openedShown} more`, false));
    }

    function crumb(surface) {
        const {totals} = surface;
        const figures = surface.older ? "" : surface.unseen ? "never opened" : totals.elements ? `${totals.used} of ${totals.elements}` : "";
        return el("button", {type: "button", "aria-pressed": "false", "data-surface": surface.index, class: surface.unseen ? "unopened" : null,
                             onclick: () => { Page.main.go({element: -1, surface: surface.index}); }},
                  surface.unseen ? null : Page.picture.small(surface, smallWidth, smallHeight),
                  el("span", {class: "caption"}, shown(surfaceTitle(surface))), el("span", {class: "figures"}, figures));
    }

    function hover(state, node) {
        state.list.hover(node);
        for (const group of state.picture?.querySelectorAll(".outline.hovered") ?? []) {
            group.classList.remove("hovered");
        }
        for (const group of node ? state.picture?.querySelectorAll(`.outline[data-node="${node.index}"]`) ?? [] : []) {
            group.classList.add("hovered");
        }
    }

    /** What opens a view shows it in place of the window. */
    function open(state, node) {
        if (node && node.opens !== undefined) {
            const {window} = Page.model.data.surfaces[node.opens];
            Page.main.go({window, element: -1, surface: node.opens}, window !== state.window.index);
        } else if (node?.view) {
            Page.main.go({element: -1, surface: node.home});
        } else if (node) {
            Page.main.go({element: node.index});
        }
    }

    /** One step back towards the window; false when it is shown already. */
    function up(state) {
        const surface = Page.model.data.surfaces[state.surface];
        if (!surface || state.surface === mainSurface(state)) {
            return false;
        }
        const opener = Page.model.data.nodes[surface.opener];
        const isHere = opener && opener.window === state.window.index;
        Page.main.go({element: isHere && opener.counts ? opener.index : -1,
                      surface: isHere && opener.counts ? -1 : surface.above >= 0 ? surface.above : mainSurface(state)});
        return true;
    }

    function statusText(state, inWindow) {
        const counted = inWindow.filter((node) => node.counts).length;
        const ignored = inWindow.filter((node) => node.isIgnored).length;
        const total = state.window.totals.elements;
        return `${counted === total ? "" : `${counted} of `}${count(total, Page.model.terms.thing, Page.model.terms.things)}${ignored ? `, ${ignored} left out` : ""}`;
    }

    function update(state, view, matched) {
        const {nodes} = Page.model.data;
        const inWindow = state.all.filter((node) => matched.has(node));
        const selected = view.element >= 0 ? nodes[view.element] : null;
        const isDrawn = selected && state.drawn.has(selected) && view.surface < 0;
        const target = view.surface >= 0 ? view.surface
            : isDrawn ? state.surface
                : selected ? selected.surface ?? selected.home ?? mainSurface(state)
                    : state.surface >= 0 ? state.surface : mainSurface(state);
        const isNew = state.surface >= 0 && state.surface !== target;
        showSurface(state, target);
        state.order.value = view.sort;
        for (const link of state.element.querySelectorAll("[data-window]")) {
            link.setAttribute("href", Page.main.linkTo({window: Number(link.dataset.window)}));
        }
        state.status.textContent = statusText(state, inWindow);
        state.list.show(groups(state, inWindow, Page.list.orders[view.sort]));
        for (const group of state.picture?.querySelectorAll("[data-node]") ?? []) {
            const node = nodes[group.dataset.node];
            group.classList.toggle("faded", !matched.has(node));
            group.classList.toggle("selected", node === selected);
        }
        state.work.classList.toggle("selected", selected !== null);
        if (state.selected !== selected || !state.panel.firstChild) {
            state.selected = selected;
            state.panel.replaceChildren(Page.panel.of(selected, state.on));
        }
        state.list.select(selected);
        if (isNew && !selected) {
            state.list.showGroup(state.list.isStart);
        }
    }

    return {create};
})();
