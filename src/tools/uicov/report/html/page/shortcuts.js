"use strict";

/** The keyboard, and the panel that explains it. */
Page.shortcuts = (() => {
    const {el} = Page.text;
    const keys = [
        [["/"], "find: put the cursor into the filter"],
        [["n", "p"], "next, previous gap: missed or only shown"],
        [["j", "k"], "next, previous element of the list"],
        [["Enter"], "open the menu of the selected element"],
        [["Esc"], "leave the filter; back from a menu; deselect"],
        [["1", "2", "3"], "missed, shown, used: show or hide"],
        [["u"], "only what nobody ever used"],
        [["+", "-", "0"], "picture larger, smaller, as it fits"],
        [["[", "]"], "previous, next window"],
        [["o"], "overview"],
        [["c"], "copy the key of the selected element"],
        [["d"], "dark or light"],
        [["?"], "this help"]
    ];
    const examples = [
        ["reset", "reset in the label, text, type or class"],
        ["s:missed", "missed; s:missed,shown for both; s:ignored: left out by a rule; s:unavailable: never enabled"],
        ["t:button", "a type or class"],
        ["w:\"Settings*\"", "in a window; * and ? stand for anything, then for the whole text"],
        ["e:clicked", "an event that happened"],
        ["never:checked", "an event that can happen and never did"],
        ["v:Advanced", "in a view"],
        ["c:test_login", "touched in a context"],
        ["r:3", "used in the third run, or by the time of its start"],
        ["l:branch=main", "used in runs with a label"],
        ["way:shortcut", "a command reached that way; never:menu for one that was not"],
        ["g:delegate", "a group"],
        ["k:\"*MenuBar > *\"", "a part of the key"],
        ["!t:menuitem", "not"]
    ];
    let dialog = null;

    function build() {
        const row = ([names, words]) => el("tr", {}, el("th", {scope: "row"}, names.map((name) => el("kbd", {}, name))), el("td", {}, words));
        const example = ([text, words]) => el("tr", {}, el("th", {scope: "row"}, el("code", {}, text)), el("td", {}, words));
        dialog = el("dialog", {class: "help", "aria-labelledby": "help-title"},
            el("div", {class: "help-head"}, el("h2", {id: "help-title"}, "Help"),
               el("button", {type: "button", class: "action", onclick: () => dialog.close()}, "Close")),
            el("div", {class: "help-body"},
               el("section", {}, el("h3", {}, "Keys"), el("table", {}, el("tbody", {}, keys.map(row)))),
               el("section", {}, el("h3", {}, "Filter"), el("table", {}, el("tbody", {}, examples.map(example))),
                  el("p", {}, "All words must fit. The filter stands in the address: copy it to send what you see."))));
        document.body.append(dialog);
    }

    function help() {
        if (!dialog) {
            build();
        }
        if (dialog.open) {
            dialog.close();
        } else {
            dialog.showModal();
        }
    }

    const actions = {
        "/": () => Page.main.focusFilter(),
        "?": help,
        n: () => Page.main.gap(1),
        p: () => Page.main.gap(-1),
        j: () => Page.main.current().list.move(1),
        k: () => Page.main.current().list.move(-1),
        o: () => Page.main.go({window: -1, element: -1}, true),
        "[": () => Page.main.neighbour(-1),
        "]": () => Page.main.neighbour(1),
        d: () => Page.main.turnTheme(),
        1: () => Page.main.toggleState("missed"),
        2: () => Page.main.toggleState("shown"),
        3: () => Page.main.toggleState("used"),
        u: () => Page.main.turnNeverUsed(),
        "+": () => Page.main.current().stage?.step(1),
        "-": () => Page.main.current().stage?.step(-1),
        0: () => Page.main.current().stage?.fitAll(),
        c: () => Page.main.copyKey(),
        Enter: () => Page.main.openSelected(),
        Escape: () => Page.main.back()
    };

    function onKey(event) {
        const isTyping = event.target.closest("input, textarea, select");
        if (event.key === "Escape" && isTyping) {
            event.target.blur();
            return;
        }
        const hasModifier = event.ctrlKey || event.metaKey || event.altKey;
        const isPressed = event.key === "Enter" && event.target.closest("a, button, summary, [role=listbox]");
        if (isTyping || hasModifier || isPressed || dialog?.open || !Object.hasOwn(actions, event.key)) {
            return;
        }
        event.preventDefault();
        actions[event.key]();
    }

    return {onKey, help};
})();
