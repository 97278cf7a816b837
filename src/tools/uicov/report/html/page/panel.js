"use strict";

/** All that is known of one element. */
Page.panel = (() => {
    const {el, shown, glyph, copy} = Page.text;
    const reasons = {
        unplaced: "Not outlined: its place was never told.",
        elsewhere: "Not outlined: it was not there when the newest picture was taken.",
        empty: "Not outlined: it had no size.",
        outside: "Not outlined: it lay outside of the picture.",
        hidden: "Not outlined: the picture shows something else at its place, such as another page of a tab widget."
    };
    /** Controls are outlined on any picture of their view that shows them. */
    function whyApart(node) {
        const surface = Page.model.data.surfaces[node.home];
        if (!Page.model.data.controls || !surface) {
            return reasons[node.apart];
        }
        return surface.unseen ? "Not outlined: its view was never opened."
            : surface.picture < 0 ? "Not outlined: there is no picture of its view."
                : "Not outlined: it was hidden or out of sight whenever its view was pictured.";
    }

    const words = () => ({used: Page.model.terms.used, shown: Page.model.terms.seen, missed: Page.model.terms.missed});
    const contextsShown = 6;

    /** What the state means, also where certain events are asked for. */
    function verdict(node) {
        const asked = askedOf(node);
        if (!asked.length) {
            return words()[node.state];
        }
        const all = asked.join(", ");
        return {used: `Used: all that is asked of a ${node.kind} happened (${all}).`,
                shown: `Only shown: something happened, but not all that is asked of a ${node.kind} (${all}).`,
                missed: Page.model.terms.missed}[node.state];
    }

    /** The events that the configuration asks for, as far as the element has them. */
    function askedOf(node) {
        const criteria = Page.model.data.criteria;
        const names = Object.hasOwn(criteria, node.kind) ? criteria[node.kind] : [];
        return names.filter((name) => node.events.some(([event, , counts]) => event === name && counts));
    }

    /** Of an element that a rule leaves out of every number. */
    function leftOut(node) {
        const rule = Page.model.data.rules[node.rule];
        return [el("p", {class: "verdict ignored"}, glyph("ignored"), "Left out of every number by a rule."),
                el("dl", {}, fact("Rule", el("code", {}, shown(rule.rule))),
                   fact("Why", rule.why ? shown(rule.why) : "the rule does not say"),
                   fact("Where", shown(rule.where)), fact("Without it", node.otherwise))];
    }

    /** The key as a pattern that only it fits, in the form of the configuration file. */
    function ignoreRule(node) {
        const pattern = Page.model.key(node).replace(/[*?[]/g, "[$&]");
        const quoted = pattern.replace(/[\\"]/g, "\\$&");
        return `[[ignore]]\nkey = "${quoted}"\nwhy = ""\n`;
    }

    function contexts(hits) {
        const names = [];
        for (let i = 0; i < hits.length; i += 2) {
            const name = Page.model.data.contexts[hits[i]];
            if (name) {
                names.push([name, hits[i + 1]]);
            }
        }
        const items = names.slice(0, contextsShown).map(([name, count]) =>
            el("li", {}, shown(name), el("span", {class: "many"}, String(count))));
        if (names.length > contextsShown) {
            const rest = names.slice(contextsShown);
            items.push(el("li", {}, el("details", {}, el("summary", {}, `${rest.length} more`),
                el("ul", {}, rest.map(([name, count]) => el("li", {}, shown(name), el("span", {class: "many"}, String(count))))))));
        }
        return items.length ? el("ul", {class: "contexts"}, items) : null;
    }

    function eventRow([name, count, counts, hits], asked) {
        const state = count > 0 ? "happened" : counts ? "never" : "uncounted";
        const texts = {happened: `${count}×`, never: "never", uncounted: "not counted by this version"};
        const where = contexts(hits);
        return [el("tr", {class: `${state}${where ? " has-where" : ""}`},
                   el("th", {scope: "row"}, shown(name), asked.includes(name) ? el("span", {class: "asked"}, "asked for") : null),
                   el("td", {}, texts[state])),
                where ? el("tr", {class: "where"}, el("td", {colspan: 2}, where)) : null];
    }

    function fact(name, value) {
        return value ? [el("dt", {}, name), el("dd", {}, value)] : null;
    }

    function button(label, action, keyName) {
        return el("button", {type: "button", class: "action", onclick: action}, label,
                  keyName ? el("kbd", {"aria-hidden": "true"}, keyName) : null);
    }

    function actions(node, on) {
        const {surfaces} = Page.model.data;
        return el("div", {class: "actions"},
            node.opens !== undefined
                ? button(`Show ${Page.model.data.controls ? Page.model.viewName(surfaces[node.opens]) : "its menu"} (${on.countOn(surfaces[node.opens])})`, () => on.open(node), "Enter") : null,
            button("Copy key", () => copy(Page.model.key(node)), "c"),
            node.isIgnored ? null : button("Copy ignore rule", () => copy(ignoreRule(node))),
            button("Copy link", () => copy(location.href)));
    }

    /** A view that nobody brought up, of whose contents something is known all the same. */
    function unseenView(node) {
        const surface = Page.model.data.surfaces[node.home];
        const opener = Page.model.data.nodes[surface.opener];
        const {elements} = surface.totals;
        return [el("h2", {id: "panel-title"}, shown(Page.model.viewName(surface))),
                el("p", {}, `Never opened${elements ? `: ${Page.text.count(elements, "control", "controls")} in it` : ""}.`),
                el("dl", {}, fact("Opened by", opener
                    ? el("a", {href: Page.main.linkTo({window: opener.window, element: opener.index})},
                         shown(Page.model.openedBy(surface).slice(3))) : "not known"),
                   fact("Key", el("code", {}, shown(Page.model.key(node)))))];
    }

    function unopened(node) {
        if (node.view) {
            return unseenView(node);
        }
        return [el("h2", {id: "panel-title"}, "Menu"),
                el("p", {}, "This menu was never opened: what is in it is unknown, and not counted."),
                el("dl", {}, fact("Key", el("code", {}, shown(Page.model.key(node)))))];
    }

    /** The members of a group, as the newest run has them. */
    function members(node) {
        if (!node.members) {
            return null;
        }
        const rest = node.members - node.group.length;
        return el("details", {class: "members"}, el("summary", {}, `${node.members} of them, ${node.usedMembers} used`),
            el("ul", {}, node.group.map(([name, isUsed]) => el("li", {class: isUsed ? "used" : "none"},
                glyph(isUsed ? "used" : node.state === "missed" ? "missed" : "shown"), " ", name ? shown(name) : node.kind)),
               rest > 0 ? el("li", {class: "none"}, `and ${rest} more`) : null));
    }

    function ways(node) {
        return node.ways ? el("ul", {class: "ways"}, node.ways.map((way) => el("li", {class: node.usedWays.includes(way) ? "" : "missed"},
            `${Page.list.wayNames[way] ?? way}: ${node.usedWays.includes(way) ? "used" : "never"}`))) : null;
    }

    /** First and last use, where the recording tells. */
    function times(node) {
        const {runs} = Page.model.data;
        const uses = Page.model.usesOf(node);
        if (!uses.length) {
            return null;
        }
        const last = uses.at(-1);
        const clock = Page.timeline.clock;
        const when = last.first < 0 ? "" : last.first === last.last ? ` at ${clock(last.first)}` : ` from ${clock(last.first)} to ${clock(last.last)}`;
        return runs.length > 1 ? `${uses.length} of ${runs.length} runs, last in run ${last.run + 1}${when}` : when.trim() || null;
    }

    function counted(node, on) {
        const picture = Page.picture.ofElement(node);
        const place = node.place ? `${node.place[2]} × ${node.place[3]} at ${node.place[0]}, ${node.place[1]}` : null;
        return [
            el("h2", {id: "panel-title"}, shown(Page.model.name(node))),
            node.isIgnored ? leftOut(node)
                : node.unavailable ? el("p", {class: "verdict unavailable"}, glyph("unavailable"), "Never enabled in any run, and so in none of the numbers.")
                : el("p", {class: `verdict ${node.state}`}, glyph(node.state), verdict(node)),
            node.apart ? el("p", {class: "apart"}, whyApart(node)) : null,
            picture ? el("div", {class: "portrait"}, picture) : null,
            node.disabled && !node.unavailable ? el("p", {class: "apart"}, "Disabled at the end of the last run.") : null,
            actions(node, on), members(node),
            el("table", {class: "events"}, el("caption", {}, "Events"), el("tbody", {}, node.events.map((event) => eventRow(event, askedOf(node))))),
            el("dl", {},
                fact("Ways", ways(node)), fact("Used in", times(node)),
                fact("Type", shown(node.kind)), fact("Class", shown(node.class)),
                fact("Text", node.text && node.text !== node.label ? shown(node.text) : null),
                fact("Place", place),
                fact("Key", el("code", {}, shown(Page.model.key(node)))))];
    }

    /** on: open(node), countOn(surface) */
    function of(node, on) {
        if (!node) {
            return el("section", {class: "panel empty", "aria-label": "Selected element"},
                      el("p", {}, `Select one of the ${Page.model.terms.things}, in the picture or in the list, to see all that is known of it. `,
                         el("kbd", {}, "n"), " goes to the next gap."));
        }
        return el("section", {class: "panel", "aria-labelledby": "panel-title"},
                  node.unopened ? unopened(node) : counted(node, on));
    }

    return {of, ignoreRule};
})();
