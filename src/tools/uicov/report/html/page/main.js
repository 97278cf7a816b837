"use strict";

/** Holds what is looked at, and brings the page in step with it. */
Page.main = (() => {
    const {el, glyph, number} = Page.text;
    const themes = ["light", "dark"];
    let view = null;
    let current = null;
    let shownWindow = null;
    let input = null;
    let status = null;
    let live = null;
    let themeButton = null;
    let neverUsed = null;
    let facets = null;
    const toggles = {};
    const unused = ["missed", "shown"];

    function say(text) {
        live.textContent = "";
        live.textContent = text;
        live.classList.add("visible");
        clearTimeout(say.timer);
        say.timer = setTimeout(() => live.classList.remove("visible"), 1500);
    }

    function linkTo(changes) {
        return Page.address.toHash({...view, element: -1, surface: -1, ...changes});
    }

    /** @param isStep whether the browser's back button leads back from there */
    function go(changes, isStep) {
        const windowChanges = changes.window !== undefined && changes.window !== view.window;
        view = {...view, surface: -1, ...(windowChanges ? {element: -1} : {}), ...changes};
        const hash = Page.address.toHash(view);
        if (hash !== location.hash) {
            history[isStep || windowChanges ? "pushState" : "replaceState"](null, "", hash);
        }
        render();
    }

    function matchedNodes() {
        const {terms, problems} = Page.filter.parse(view.filter);
        const matches = Page.filter.matcher(terms);
        return {all: Page.model.data.nodes.filter((node) => node.isListed && matches(node)), problems};
    }

    function render() {
        const {all, problems} = matchedNodes();
        if (view.window !== shownWindow) {
            shownWindow = view.window;
            current = view.window < 0 ? Page.overview.create() : Page.window.create(Page.model.data.windows[view.window]);
            document.querySelector("main")?.remove();
            document.getElementById("app").append(current.element);
            document.title = view.window < 0 ? Page.model.data.title
                : `${Page.text.plain(Page.model.windowName(Page.model.data.windows[view.window]))} – ${Page.model.data.title}`;
            scrollTo(0, 0);
        }
        const counted = all.filter((node) => node.counts).length;
        const ignored = all.filter((node) => node.isIgnored).length;
        current.update(view, view.window < 0 ? all.filter((node) => node.counts || node.isIgnored) : new Set(all));
        if (input.value !== view.filter) {
            input.value = view.filter;
        }
        updateToggles();
        input.setAttribute("aria-invalid", String(problems.length > 0));
        status.textContent = problems.length ? problems[0]
            : view.filter.trim() ? `${number(counted)} of ${number(Page.model.data.elements.length)}${ignored ? `, ${number(ignored)} left out` : ""}` : "";
        status.classList.toggle("problem", problems.length > 0);
    }

    function updateToggles() {
        const totals = view.window < 0 ? Page.model.data.totals : Page.model.data.windows[view.window].totals;
        const states = Page.filter.states(view.filter);
        for (const state of Page.model.states) {
            toggles[state].setAttribute("aria-pressed", String(states.includes(state)));
            toggles[state].querySelector(".many").textContent = number(totals[state]);
        }
        neverUsed.setAttribute("aria-pressed", String(isOnlyUnused()));
        neverUsed.querySelector(".many").textContent = number(totals.elements - totals.used);
        facets?.update(view.filter);
    }

    function isOnlyUnused() {
        return Page.filter.states(view.filter).join() === unused.join();
    }

    /** What nobody ever used, in one click; the next one shows all again. */
    function turnNeverUsed() {
        go({filter: Page.filter.withStates(view.filter, isOnlyUnused() ? [] : unused)});
    }

    function toggleState(state) {
        const states = Page.filter.states(view.filter);
        const wanted = Page.model.states.filter((other) => (other === state) !== states.includes(other));
        go({filter: Page.filter.withStates(view.filter, wanted)});
    }

    function theme() {
        return document.documentElement.dataset.theme ??
            (matchMedia("(prefers-color-scheme: dark)").matches ? "dark" : "light");
    }

    function turnTheme() {
        setTheme(themes.find((other) => other !== theme()));
        try {
            localStorage.setItem("uicov-theme", theme());
        } catch {
            // A page from a disk may have nowhere to keep it.
        }
    }

    function setTheme(name) {
        document.documentElement.dataset.theme = name;
        themeButton.setAttribute("aria-pressed", String(name === "dark"));
    }

    function loadTheme() {
        let kept = null;
        try {
            kept = localStorage.getItem("uicov-theme");
        } catch {
            // See above.
        }
        if (themes.includes(kept)) {
            setTheme(kept);
        } else {
            themeButton.setAttribute("aria-pressed", String(theme() === "dark"));
        }
    }

    /** The next element that was not used, in the order of the list, then of the windows. */
    function gap(step) {
        const {windows, nodes} = Page.model.data;
        const isGap = (node) => node.counts && node.state !== "used";
        if (view.window >= 0) {
            const {list} = current;
            const from = list.nodes.indexOf(nodes[view.element]);
            const rest = from < 0 ? (step > 0 ? list.nodes : [...list.nodes].reverse())
                : step > 0 ? list.nodes.slice(from + 1) : list.nodes.slice(0, from).reverse();
            const next = rest.find(isGap);
            if (next) {
                go({element: next.index});
                return;
            }
        }
        const matches = new Set(matchedNodes().all.filter(isGap).map((node) => node.window));
        const origin = view.window < 0 && step < 0 ? windows.length : view.window;
        for (let i = origin + step; i >= 0 && i < windows.length; i += step) {
            if (matches.has(i)) {
                go({window: i}, true);
                gap(step);
                return;
            }
        }
        say(step > 0 ? "No further gap" : "No earlier gap");
    }

    function neighbour(step) {
        if (Page.model.data.windows[view.window + step]) {
            go({window: view.window + step}, true);
        }
    }

    function back() {
        if (view.window >= 0 && !current.up() && view.element >= 0) {
            go({element: -1});
        }
    }

    function openSelected() {
        const node = Page.model.data.nodes[view.element];
        if (node && current.open) {
            current.open(node);
        }
    }

    function copyKey() {
        const node = Page.model.data.nodes[view.element];
        if (node) {
            Page.text.copy(Page.model.key(node));
        }
    }

    function buildBar() {
        input = el("input", {id: "filter", type: "search", autocomplete: "off", spellcheck: "false",
            placeholder: "Filter, such as s:missed t:button w:\"Settings*\"", "aria-describedby": "filter-status",
            oninput: () => go({filter: input.value})});
        status = el("span", {id: "filter-status", role: "status"});
        live = el("div", {class: "toast", role: "status"});
        themeButton = el("button", {type: "button", class: "icon", title: "Dark or light (d)", "aria-label": "Dark", onclick: turnTheme}, "◐");
        for (const state of Page.model.states) {
            toggles[state] = el("button", {type: "button", class: `toggle ${state}`, onclick: () => toggleState(state)},
                glyph(state), el("span", {class: "word"}, state === "shown" ? Page.model.terms.shown : state), el("span", {class: "many"}));
        }
        neverUsed = el("button", {type: "button", class: "never-used", onclick: turnNeverUsed},
            el("span", {class: "word"}, "Never used"), el("span", {class: "many"}));
        neverUsed.title = `Only ${Page.model.terms.things} that nobody ever used (u)`;
        facets = Page.facets.create({filter: () => view.filter, change: (text) => go({filter: text})});
        return el("header", {class: "bar-top"},
            el("a", {class: "home", href: "#", title: "Overview"}, "uicov"),
            el("div", {class: "find", role: "search"}, el("label", {for: "filter", class: "offscreen"}, "Filter"), input, status), facets?.element, neverUsed,
            el("div", {class: "toggles", role: "group", "aria-label": "States to show"}, Object.values(toggles)),
            themeButton,
            el("button", {type: "button", class: "icon", title: "Keys and filter (?)", "aria-label": "Help", onclick: Page.shortcuts.help}, "?"),
            live);
    }

    /** Paper gets the whole report: what browsers without scripts show. */
    function beforePrint() {
        const source = document.querySelector("noscript");
        const whole = new DOMParser().parseFromString(source.textContent, "text/html").querySelector(".static");
        const print = el("div", {id: "print"});
        print.append(document.adoptNode(whole));
        document.body.append(print);
        document.documentElement.classList.add("printing");
    }

    function afterPrint() {
        document.getElementById("print")?.remove();
        document.documentElement.classList.remove("printing");
    }

    function readAddress() {
        view = Page.address.fromHash(location.hash);
        render();
    }

    function start() {
        Page.model.load(globalThis.uicovData ?? JSON.parse(document.getElementById("data").textContent));
        view = Page.address.fromHash(location.hash);
        document.getElementById("app").append(buildBar());
        loadTheme();
        render();
        addEventListener("hashchange", readAddress);
        addEventListener("keydown", Page.shortcuts.onKey);
        addEventListener("beforeprint", beforePrint);
        addEventListener("afterprint", afterPrint);
    }

    return {start, go, say, turnNeverUsed, linkTo, gap, neighbour, back, openSelected, copyKey, turnTheme, toggleState,
            focusFilter: () => { input.focus(); input.select(); }, current: () => current, get view() { return view; }};
})();

if (typeof document !== "undefined") {
    Page.main.start();
}
