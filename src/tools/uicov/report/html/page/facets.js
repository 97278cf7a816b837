"use strict";

/** Choices that write filters, for those who do not know its words. */
Page.facets = (() => {
    const {el, plain} = Page.text;
    const most = 200;

    /** [field, what it is called, [[value, words]]], where there is something to choose from. */
    function facets() {
        const {data} = Page.model;
        const words = (values) => [...new Set(values)].filter(Boolean).slice(0, most).map((value) => [value, value]);
        return [
            ["v", "View", data.controls ? words(data.surfaces.filter(({older}) => !older).map(({node}) => Page.model.name(data.nodes[node]))) : []],
            ["w", "Window", data.windows.length > 1 ? words(data.windows.map(({node}) => data.nodes[node].label ?? "")) : []],
            ["c", "Context", words(data.contexts)],
            ["r", "Run", data.runs.length > 1 ? data.runs.map((run, index) => [String(index + 1), `${index + 1}: ${run.started} ${run.application}`]).reverse().slice(0, most) : []],
            ["l", "Label", words(data.runs.flatMap(({labels}) => Object.entries(labels).map(([name, value]) => `${name}=${value}`)))],
            ["way", "Used by", words(data.nodes.flatMap((node) => node.usedWays ?? []))],
            ["never", "Never by", words(data.nodes.flatMap((node) => (node.ways ?? []).filter((way) => !node.usedWays.includes(way))))],
            ["g", "Group", words(data.nodes.filter((node) => node.members).map(Page.model.name))]
        ].filter(([, , values]) => values.length > 0);
    }

    /** on.filter() and on.change(text) read and write the filter's text. Null when there is nothing to choose. */
    function create(on) {
        const fields = facets();
        if (!fields.length) {
            return null;
        }
        const selects = fields.map(([field, name, values]) => {
            const select = el("select", {id: `facet-${field}`, onchange: (event) => on.change(Page.filter.withTerm(on.filter(), field, event.target.value))},
                el("option", {value: ""}, "any"), values.map(([value, words]) =>
                    el("option", {value}, field === "way" || field === "never" ? Page.list.wayNames[value] ?? value : plain(words))));
            return {field, select, label: el("label", {}, el("span", {}, name), select)};
        });
        const details = el("details", {class: "facets"}, el("summary", {class: "toggle"}, "Choose…"), el("div", {class: "facet-list"}, selects.map(({label}) => label)));
        document.addEventListener("pointerdown", (event) => {
            if (!details.contains(event.target)) {
                details.open = false;
            }
        });
        return {element: details,
                /** Shows what the text of the filter says. */
                update: (text) => {
                    const {terms} = Page.filter.parse(text);
                    for (const {field, select} of selects) {
                        select.value = terms.find((term) => term.field === field && !term.isNegated)?.raw ?? "";
                        select.value ||= "";
                    }
                }};
    }

    return {create};
})();
