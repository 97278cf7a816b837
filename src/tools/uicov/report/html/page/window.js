"use strict";

/** One window: its picture with the elements outlined, its list, and the selected element. */
Page.window = (() => {
    const {el, shown, bar, count} = Page.text;
    /** Windows over this one, before they are folded. */
    const openedShown = 8;

    function create(window) {
        const {data} = Page.model;
        const all = Page.model.elementsOf(window);
        const state = {window, all, surface: -1, picture: null, selected: null};
        const on = {
            select: (node) => Page.main.go({element: node ? node.index : -1}),
            hover: (node) => hover(state, node),
            open: (node) => open(state, node),
            countOn: (surface) => all.filter((node) => node.surface === surface.index && node.index !== surface.node).length
        };
        state.on = on;
        state.list = Page.list.create("elements", "Elements", on, false);
        state.stage = el("div", {class: "stage"});
        state.crumbs = el("nav", {class: "surfaces", "aria-label": "Window, menus, and windows over it"});
        state.panel = el("div", {class: "detail-column", tabindex: 0, role: "region", "aria-label": "Selected"});
        state.order = el("select", {id: "order", onchange: (event) => Page.main.go({sort: event.target.value})},
            Object.entries(Page.list.orderNames).map(([name, words]) => el("option", {value: name}, words)));
        state.status = el("p", {class: "status"});
        state.element = el("main", {class: "window"}, header(window),
            el("div", {class: "work"},
                el("section", {class: "look", tabindex: 0, "aria-label": "Picture"}, state.crumbs, state.stage),
                el("section", {class: "choose", "aria-label": "Elements"},
                   el("div", {class: "tools"}, state.status, el("label", {for: "order", class: "offscreen"}, "Order"), state.order), state.list.element),
                state.panel));
        return {element: state.element, list: state.list, data, update: (view, matched) => update(state, view, matched),
                up: () => up(state), open: (node) => open(state, node)};
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
            el("span", {class: "cover"}, el("strong", {}, totals.cover), " of ", count(totals.elements, Page.model.terms.thing, Page.model.terms.things), " used"),
            bar(totals),
            window.over >= 0 ? el("a", {class: "over", "data-window": window.over}, "over ", shown(Page.model.windowName(Page.model.data.windows[window.over]))) : null,
            el("span", {class: "steps"}, neighbour(-1, "Previous window", "↑"), neighbour(1, "Next window", "↓")));
    }

    function surfaceTitle(surface) {
        const path = Page.model.menuPath(surface);
        return path.length ? `Menu ${path.join(" › ")}` : "Window";
    }

    /** The groups of the list: what lies on each picture, then what lies on none. */
    function groups(state, nodes, order) {
        const {surfaces} = Page.model.data;
        const sorted = [...nodes].sort(order);
        const result = state.window.surfaces.map((index) => {
            const surface = surfaces[index];
            return {title: surfaceTitle(surface), note: surface.picture < 0 ? "no picture" : null,
                    nodes: sorted.filter((node) => node.surface === index && !node.isIgnored)};
        });
        const apart = {unplaced: "place never told", elsewhere: "not there when pictured", empty: "no size",
                       outside: "outside of the picture", hidden: "hidden in the picture"};
        for (const [reason, words] of Object.entries(apart)) {
            result.push({title: "Not outlined", note: words, nodes: sorted.filter((node) => node.apart === reason && !node.isIgnored)});
        }
        result.push({title: "Left out by rules", nodes: sorted.filter((node) => node.isIgnored)});
        result.push({title: "Never opened", note: "contents unknown", nodes: sorted.filter((node) => node.unopened)});
        const isOneGroup = result.filter((group) => group.nodes.length).length === 1 && result[0].nodes.length && !result[0].note;
        return isOneGroup ? [{nodes: result[0].nodes}] : result;
    }

    function mainSurface(state) {
        return state.window.surfaces[0];
    }

    function showSurface(state, index) {
        if (state.surface === index) {
            return;
        }
        state.surface = index;
        state.list.isStart = (node) => node.surface === index;
        const surface = Page.model.data.surfaces[index];
        const isEmpty = surface.bounds[2] <= 0 || surface.bounds[3] <= 0;
        const nodes = state.all.filter((node) => node.surface === index);
        state.picture = isEmpty ? null : Page.picture.ofSurface(surface, nodes, state.on);
        const reduced = surface.picture >= 0 && Page.model.data.pictures[surface.picture].reduced;
        state.stage.replaceChildren(...[
            surface.picture < 0 && state.picture ? el("p", {class: "note"}, "No picture was recorded, so this is drawn from the places alone. Record with --screenshots to see the real one.") : null,
            reduced ? el("p", {class: "note"}, "This picture is smaller than it was recorded, to bound the size of the page. ", el("code", {}, "uicov html --split DIR"), " keeps full ones.") : null,
            state.picture ?? el("p", {class: "note"}, "Neither a picture nor a place of this window was recorded.")
        ].filter(Boolean));
        drawCrumbs(state);
    }

    function drawCrumbs(state) {
        const {surfaces} = Page.model.data;
        const {opened} = state.window;
        if (state.window.surfaces.length === 1 && !opened.length) {
            state.crumbs.hidden = true;
            return;
        }
        const links = opened.map((window) => el("a", {"data-window": window.index}, shown(Page.model.windowName(window)), " ↗"));
        state.crumbs.replaceChildren(...state.window.surfaces.map((index) =>
            el("button", {type: "button", "aria-pressed": String(index === state.surface),
                          onclick: () => { Page.main.go({element: -1, surface: index}); }},
               shown(surfaceTitle(surfaces[index])))),
            ...links.slice(0, openedShown),
            ...(links.length > openedShown ? [el("details", {}, el("summary", {}, `${links.length - openedShown} more`), links.slice(openedShown))] : []));
    }

    function hover(state, node) {
        state.list.hover(node);
        for (const group of state.picture?.querySelectorAll(".outline.hovered") ?? []) {
            group.classList.remove("hovered");
        }
        if (node && node.surface === state.surface) {
            state.picture?.querySelector(`.outline[data-node="${node.index}"]`)?.classList.add("hovered");
        }
    }

    /** What opens a menu shows it in place of the window. */
    function open(state, node) {
        if (node && node.opens !== undefined) {
            Page.main.go({element: -1, surface: node.opens});
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
        Page.main.go({element: opener?.counts ? opener.index : -1, surface: opener ? -1 : mainSurface(state)});
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
        const target = selected ? (selected.surface ?? (state.surface >= 0 ? state.surface : mainSurface(state)))
            : view.surface >= 0 ? view.surface : state.surface >= 0 ? state.surface : mainSurface(state);
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
        if (state.selected !== selected || !state.panel.firstChild) {
            state.selected = selected;
            state.panel.replaceChildren(Page.panel.of(selected, state.on));
        }
        state.list.select(selected);
    }

    return {create};
})();
