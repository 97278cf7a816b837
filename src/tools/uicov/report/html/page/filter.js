"use strict";

/** The filter's little language: words that must occur, FIELD:VALUE, and "!" for the opposite. */
Page.filter = (() => {
    const fields = {s: "state", t: "type or class", w: "window", v: "view", e: "event that happened",
                    never: "event or way that never happened", c: "context", r: "run", l: "label of a run", way: "way", g: "group",
                    k: "key"};
    const known = [...Page.model.states, "ignored", "unavailable"];
    const token = /!?(?<open>[a-z]+):(?=\s|$)|(?<not>!?)(?:(?<field>[a-z]+):)?(?:"(?<quoted>[^"]*)"?|(?<word>\S+))/gi;

    /** {terms, problems}; a term is {field, values, isNegated}. */
    function parse(text) {
        const terms = [];
        const problems = [];
        for (const {groups} of text.matchAll(token)) {
            const name = (groups.field ?? "").toLowerCase();
            const raw = groups.quoted ?? groups.word ?? "";
            if (groups.open) {
                problems.push(`${groups.open}: has nothing behind it yet`);
            } else if (name && !(name in fields)) {
                problems.push(`there is no ${name}: (only ${Object.keys(fields).join(": ")}:); put quotes around text with a colon`);
            } else if (name === "s") {
                addStates(raw, Boolean(groups.not), terms, problems);
            } else if (raw) {
                terms.push({field: name || "text", values: [pattern(raw, name)], raw, isNegated: Boolean(groups.not)});
            }
        }
        return {terms, problems};
    }

    function addStates(raw, isNegated, terms, problems) {
        const values = raw.toLowerCase().split(",").filter(Boolean);
        const meant = values.map((value) => known.find((state) => state.startsWith(value)));
        if (meant.includes(undefined)) {
            problems.push(`s: takes ${known.join(", ")}`);
        } else {
            terms.push({field: "s", values: meant, isNegated});
        }
    }

    /** With * or ? it is the whole text that must fit, else a part of it; case never matters. */
    function pattern(raw) {
        if (!/[*?]/.test(raw)) {
            const part = raw.toLowerCase();
            return (text) => text.toLowerCase().includes(part);
        }
        const source = raw.replace(/[.+^${}()|[\]\\]/g, "\\$&").replace(/\*/g, ".*").replace(/\?/g, ".");
        const expression = new RegExp(`^${source}$`, "isu");
        return (text) => expression.test(text);
    }

    function eventMatches(node, matches, happened) {
        return (node.events ?? []).some(([name, count, counts]) =>
            matches(name) && (happened ? count > 0 : count === 0 && counts));
    }

    function neverReached(node, matches) {
        return (node.ways ?? []).some((way) => matches(way) && !node.usedWays.includes(way));
    }

    /** Runs have no names: it is their number, as the table of runs has it, or when they started. */
    function runMatches(node, matches, raw) {
        return Page.model.usesOf(node).some(({run}) => raw === String(run + 1) ||
            (!/^\d+$/.test(raw) && matches(Page.model.data.runs[run]?.started ?? "")));
    }

    function labelMatches(node, matches) {
        return Page.model.usesOf(node).some(({run}) =>
            Object.entries(Page.model.data.runs[run]?.labels ?? {}).some(([name, value]) => matches(`${name}=${value}`)));
    }

    function viewMatches(node, matches) {
        const {nodes, surfaces} = Page.model.data;
        const view = nodes[surfaces[node.home]?.node];
        return Boolean(view) && (matches(Page.model.name(view)) || matches(Page.model.stepName(view)));
    }

    function contextMatches(node, matches) {
        const contexts = Page.model.data.contexts;
        return (node.events ?? []).some(([, , , hits]) =>
            hits.some((number, index) => index % 2 === 0 && matches(contexts[number])));
    }

    const tests = {
        s: (node, state) => Page.model.stateOf(node) === state,
        t: (node, matches) => matches(node.kind) || matches(node.class ?? ""),
        w: (node, matches) => {
            const window = Page.model.data.nodes[Page.model.data.windows[node.window].node];
            return matches(window.label ?? "") || matches(Page.model.stepName(window));
        },
        e: (node, matches) => eventMatches(node, matches, true),
        never: (node, matches) => eventMatches(node, matches, false) || neverReached(node, matches),
        c: contextMatches,
        r: runMatches,
        l: labelMatches,
        v: viewMatches,
        way: (node, matches) => (node.usedWays ?? []).some(matches),
        g: (node, matches) => Boolean(node.members) && matches(node.groupName ?? Page.model.name(node)),
        k: (node, matches) => matches(Page.model.key(node)),
        text: (node, matches) => matches(Page.model.name(node)) || matches(node.text ?? "") ||
            matches(node.kind) || matches(node.class ?? "")
    };

    /** What the terms let through, as a function of a node. */
    function matcher(terms) {
        return (node) => terms.every(({field, values, raw, isNegated}) =>
            values.some((value) => tests[field](node, value, raw)) !== isNegated);
    }

    /** The states that the text lets through. */
    function states(text) {
        const own = parse(text).terms.filter((term) => term.field === "s");
        return Page.model.states.filter((state) =>
            own.every((term) => term.values.includes(state) !== term.isNegated));
    }

    /** The same text, but for those states. */
    function withStates(text, wanted) {
        const rest = text.replace(/(^|\s)!?s:("[^"]*"?|\S*)/gi, " ").replace(/\s+/g, " ").trim();
        const isAll = wanted.length === Page.model.states.length || wanted.length === 0;
        return isAll ? rest : `s:${wanted.join(",")}${rest ? ` ${rest}` : ""}`;
    }

    /** The same text with that one term of the field, or without any. */
    function withTerm(text, field, value) {
        const rest = text.replace(new RegExp(`(^|\\s)!?${field}:("[^"]*"?|\\S*)`, "gi"), " ").replace(/\s+/g, " ").trim();
        const quoted = /[\s"]/.test(value) ? `"${value.replace(/"/g, "?")}"` : value;
        return value ? `${rest ? `${rest} ` : ""}${field}:${quoted}` : rest;
    }

    return {fields, parse, matcher, states, withStates, withTerm};
})();
