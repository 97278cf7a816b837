"use strict";

/** A list of elements in groups. However long, only the rows in sight are in the document. */
Page.list = (() => {
    const {el, glyph, shown} = Page.text;
    const rowHeight = 50;
    const spare = 6;
    const rank = {missed: 0, shown: 1, used: 2, unavailable: 3, ignored: 4, unopened: 5};

    const byPlace = (a, b) => {
        const [x, y] = a.place ?? [Infinity, Infinity];
        const [otherX, otherY] = b.place ?? [Infinity, Infinity];
        return (y - otherY || 0) || (x - otherX || 0) || a.index - b.index;
    };
    const byText = (property) => (a, b) => {
        const [text, other] = [property(a), property(b)];
        return text < other ? -1 : text > other ? 1 : a.index - b.index;
    };
    const orders = {
        state: (a, b) => rank[Page.model.stateOf(a)] - rank[Page.model.stateOf(b)] || byPlace(a, b),
        place: byPlace,
        name: byText((node) => Page.model.name(node).toLowerCase()),
        type: byText((node) => node.kind)
    };
    const orderNames = {state: "missed first", place: "by place", name: "by name", type: "by type"};

    const wayNames = {menu: "menu", toolBar: "tool bar", shortcut: "shortcut", contextMenu: "context menu"};

    function happened(node) {
        const events = node.events ?? [];
        const covered = events.filter(([name, count]) => count > 0 && name !== "shown").map(([name]) => name);
        const never = [...events.filter(([, count, counts]) => count === 0 && counts).map(([name]) => name),
                       ...(node.state === "used" ? node.ways ?? [] : []).filter((way) => !node.usedWays.includes(way)).map((way) => `by ${wayNames[way] ?? way}`)];
        return [node.members ? `${node.usedMembers} of ${node.members} used` : "",
                node.usedWays?.length ? `by ${node.usedWays.map((way) => wayNames[way] ?? way).join(", ")}` : covered.join(", "),
                never.length ? `never ${never.join(", ")}` : "", node.disabled ? "disabled at the end" : ""]
            .filter(Boolean).join(" · ");
    }

    /** Why the rule leaves it out, or else what the rule is. */
    function why(node) {
        const rule = Page.model.data.rules[node.rule];
        return `left out: ${rule.why || rule.rule}`;
    }

    /** Of a view that nobody opened: how many there are in it, and what opens it. */
    function unopened(node) {
        const surface = node.view ? Page.model.data.surfaces[node.home] : null;
        const by = surface && Page.model.openedBy(surface);
        return by ? `never opened; ${by}` : "never opened";
    }

    /** What tells more than the name: what it is, or, where that is the name, what is written in it. */
    function beside(node, name) {
        const text = node.label || !node.text ? "" : `“${node.text}”`;
        const size = node.view ? Page.model.data.surfaces[node.home].totals.elements : 0;
        const words = node.members ? `${node.kind} ×${node.members}` : size ? `${node.kind}, ${size} ${size === 1 ? Page.model.terms.thing : Page.model.terms.things}`
            : name.startsWith(node.kind) ? text : node.kind;
        return words ? el("span", {class: "kind"}, shown(words)) : null;
    }

    function row(list, item, index) {
        const {node} = item;
        const where = [...(list.showsWindows ? [Page.model.fullWindowName(Page.model.data.windows[node.window])] : []),
                       ...Page.model.path(node, !list.showsWindows)];
        const state = Page.model.stateOf(node);
        const detail = node.unopened ? unopened(node)
            : node.unavailable ? "never enabled" : node.isIgnored ? why(node) : happened(node) || "seen";
        const name = Page.model.name(node);
        const element = el("div", {class: `row ${state}${node.disabled ? " disabled" : ""}${node.apart && Page.model.data.controls ? " off" : ""}`, role: "option", id: `${list.id}-${node.index}`,
            "aria-selected": String(list.selected === node), "aria-setsize": list.count, "aria-posinset": item.position,
            "data-node": node.index},
            node.unopened ? el("span", {class: "glyph unopened", "aria-hidden": "true"}, "▸") : glyph(state),
            node.unopened ? null : el("span", {class: "offscreen"}, `${state}: `),
            el("span", {class: "name"}, shown(name), beside(node, name)),
            el("span", {class: "detail"}, where.length ? [shown(where.join(" › ")), " — "] : null, shown(detail)));
        element.style.top = `${index * rowHeight}px`;
        return element;
    }

    function heading(item, index) {
        const element = el("div", {class: "group", role: "presentation"}, shown(item.title),
                           item.note ? el("span", {class: "reason"}, item.note) : null,
                           el("span", {class: "many"}, String(item.size)));
        element.style.top = `${index * rowHeight}px`;
        return element;
    }

    function paint(list) {
        const first = Math.max(0, Math.floor(list.element.scrollTop / rowHeight) - spare);
        const last = Math.min(list.items.length, Math.ceil((list.element.scrollTop + (list.element.clientHeight || 600)) / rowHeight) + spare);
        for (const [index, element] of list.rows) {
            if (index < first || index >= last) {
                element.remove();
                list.rows.delete(index);
            }
        }
        // Rows that stay in sight stay the same: they may be in the middle of a click.
        for (let index = first; index < last; ++index) {
            if (!list.rows.has(index)) {
                const item = list.items[index];
                const element = item.node ? row(list, item, index) : heading(item, index);
                list.rows.set(index, element);
                const next = [...list.rows.keys()].filter((other) => other > index).sort((a, b) => a - b)[0];
                list.space.insertBefore(element, list.rows.get(next) ?? null);
            }
        }
        mark(list);
    }

    function mark(list) {
        for (const element of list.space.querySelectorAll(".row")) {
            const index = Number(element.dataset.node);
            element.setAttribute("aria-selected", String(list.selected?.index === index));
            element.classList.toggle("hovered", list.hovered?.index === index);
        }
        const active = list.selected && document.getElementById(`${list.id}-${list.selected.index}`);
        if (active) {
            list.element.setAttribute("aria-activedescendant", active.id);
        } else {
            list.element.removeAttribute("aria-activedescendant");
        }
    }

    /** groups: {title, note, nodes}; a group without a title has no heading. */
    function show(list, groups) {
        const items = [];
        let position = 0;
        for (const group of groups) {
            if (group.title && group.nodes.length) {
                items.push({title: group.title, note: group.note, size: group.nodes.length});
            }
            items.push(...group.nodes.map((node) => ({node, position: ++position})));
        }
        const isSame = items.length === list.items.length && items.every((item, index) =>
            item.node === list.items[index].node && item.title === list.items[index].title);
        if (isSame && items.length) {
            return;
        }
        list.items = items;
        list.nodes = groups.flatMap((group) => group.nodes);
        list.count = list.nodes.length;
        list.rows.clear();
        list.space.replaceChildren();
        list.space.style.height = `${list.items.length * rowHeight}px`;
        list.element.classList.toggle("empty", list.count === 0);
        paint(list);
    }

    function reveal(list, node) {
        const index = list.items.findIndex((item) => item.node === node);
        if (index < 0) {
            return;
        }
        const top = index * rowHeight;
        const {scrollTop, clientHeight} = list.element;
        if (top < scrollTop) {
            list.element.scrollTop = Math.max(0, top - rowHeight);
        } else if (top + rowHeight > scrollTop + clientHeight) {
            list.element.scrollTop = top + 2 * rowHeight - clientHeight;
        }
        paint(list);
    }

    function move(list, step) {
        const index = list.nodes.indexOf(list.selected);
        const start = Math.max(0, list.nodes.findIndex(list.isStart));
        const next = index < 0 && Number.isFinite(step) ? (step > 0 ? start : list.nodes.length - 1)
            : Math.min(list.nodes.length - 1, Math.max(0, index + step));
        if (list.nodes[next]) {
            list.on.select(list.nodes[next]);
        }
    }

    function onKey(list, event) {
        const page = Math.max(1, Math.floor(list.element.clientHeight / rowHeight) - 1);
        const steps = {ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page, Home: -Infinity, End: Infinity};
        if (event.key in steps) {
            event.preventDefault();
            move(list, steps[event.key]);
        } else if (event.key === "Enter" && list.selected) {
            event.preventDefault();
            list.on.open(list.selected);
        }
    }

    /** on: select, open, hover, each with a node; hover also with null. */
    function create(id, label, on, showsWindows) {
        const space = el("div", {class: "space", role: "presentation"});
        const element = el("div", {class: "list", id, role: "listbox", tabindex: 0, "aria-label": label}, space);
        const list = {id, element, space, on, showsWindows, items: [], nodes: [], count: 0,
            /** Those in the document, by their index. */
            rows: new Map(), selected: null, hovered: null,
            /** Where the keyboard starts when nothing is selected. */
            isStart: () => true};
        const nodeAt = (event) => Page.model.data.nodes[event.target.closest(".row")?.dataset.node] ?? null;
        element.addEventListener("scroll", () => paint(list), {passive: true});
        element.addEventListener("keydown", (event) => onKey(list, event));
        element.addEventListener("pointerover", (event) => on.hover(nodeAt(event)));
        element.addEventListener("pointerleave", () => on.hover(null));
        element.addEventListener("click", (event) => nodeAt(event) && on.select(nodeAt(event)));
        element.addEventListener("dblclick", (event) => nodeAt(event) && on.open(nodeAt(event)));
        new ResizeObserver(() => paint(list)).observe(element);
        return Object.assign(list, {
            show: (groups) => show(list, groups),
            select: (node) => { list.selected = node; mark(list); if (node) { reveal(list, node); } },
            hover: (node) => { list.hovered = node; mark(list); },
            /** Scrolls to the group that begins with the first node of which that is true. */
            showGroup: (isWanted) => {
                const index = list.items.findIndex((item) => item.node && isWanted(item.node));
                if (index >= 0) {
                    list.element.scrollTop = Math.max(0, index - 1) * rowHeight;
                }
            },
            move: (step) => move(list, step)
        });
    }

    return {create, orders, orderNames, happened, wayNames};
})();
