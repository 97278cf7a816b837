"use strict";

/** What is being looked at, and its form in the address, so that it can be sent as a link. */
Page.address = (() => {
    const empty = {filter: "", window: -1, element: -1, surface: -1, sort: "state"};
    let windows = null;

    function windowId(window) {
        const key = Page.model.key(Page.model.data.nodes[window.node]);
        return Page.model.data.applications.length > 1 ? `${window.application}: ${key}` : key;
    }

    function windowOf(id) {
        windows ??= new Map(Page.model.data.windows.map((window) => [windowId(window), window.index]));
        return windows.get(id) ?? -1;
    }

    function nodeOf(window, key) {
        for (let i = window.node; i <= window.last; ++i) {
            const node = Page.model.data.nodes[i];
            // Cheap first: only few have the same last step.
            if (key.endsWith(node.step) && Page.model.key(node) === key) {
                return i;
            }
        }
        return -1;
    }

    function toHash(view) {
        const values = new URLSearchParams();
        if (view.filter) {
            values.set("f", view.filter);
        }
        if (view.window >= 0) {
            values.set("w", windowId(Page.model.data.windows[view.window]));
        }
        if (view.element >= 0) {
            values.set("e", Page.model.key(Page.model.data.nodes[view.element]));
        }
        const surface = Page.model.data.surfaces[view.surface];
        if (surface && surface.node !== Page.model.data.windows[surface.window].node && view.element < 0) {
            values.set("v", Page.model.key(Page.model.data.nodes[surface.node]));
        }
        if (view.sort !== empty.sort) {
            values.set("sort", view.sort);
        }
        return `#${values}`;
    }

    /** What an address does not say, or says wrongly, is as at the beginning. */
    function fromHash(hash) {
        const values = new URLSearchParams(hash.replace(/^#/, ""));
        const view = {...empty, filter: values.get("f") ?? ""};
        view.window = windowOf(values.get("w"));
        const window = Page.model.data.windows[view.window];
        if (window && values.get("e")) {
            view.element = nodeOf(window, values.get("e"));
        }
        if (window && values.get("v")) {
            const node = nodeOf(window, values.get("v"));
            view.surface = Page.model.data.surfaces.findIndex((surface) => surface.node === node);
        }
        if (Object.hasOwn(Page.list.orders, values.get("sort") ?? "")) {
            view.sort = values.get("sort");
        }
        return view;
    }

    return {empty, toHash, fromHash};
})();
