"use strict";

/** Makes parts of the page. Texts of applications only ever become text nodes. */
Page.text = (() => {
    const svgNamespace = "http://www.w3.org/2000/svg";
    const unseen = /[\p{Cc}\p{Cf}\p{Co}\p{Cn}\p{Cs}\p{Zl}\p{Zp}]/gu;
    const shortForms = {"\n": "\\n", "\r": "\\r", "\t": "\\t"};

    function fill(element, attributes, children) {
        for (const [name, value] of Object.entries(attributes ?? {})) {
            if (name.startsWith("on")) {
                element.addEventListener(name.slice(2), value);
            } else if (value === true) {
                element.setAttribute(name, "");
            } else if (value !== false && value !== null && value !== undefined) {
                element.setAttribute(name, value);
            }
        }
        element.append(...children.flat(Infinity).filter((child) => child !== null && child !== undefined && child !== false));
        return element;
    }

    function el(tag, attributes, ...children) {
        return fill(document.createElement(tag), attributes, children);
    }

    function svg(tag, attributes, ...children) {
        return fill(document.createElementNS(svgNamespace, tag), attributes, children);
    }

    function escape(character) {
        const code = character.codePointAt(0);
        return shortForms[character] ??
            (code < 0x100 ? `\\x${code.toString(16).padStart(2, "0")}` : `\\u${code.toString(16).padStart(4, "0")}`);
    }

    /** As one line of plain text, for attributes and the clipboard. */
    function plain(text) {
        return text.replace(unseen, escape);
    }

    /** For the page: in its own writing direction, with all that cannot be seen made visible. */
    function shown(text) {
        const isolated = el("bdi");
        let end = 0;
        for (const match of text.matchAll(unseen)) {
            isolated.append(text.slice(end, match.index),
                            el("span", {class: "unseen"}, escape(match[0])));
            end = match.index + match[0].length;
        }
        isolated.append(text.slice(end));
        return isolated;
    }

    function glyph(state) {
        return svg("svg", {class: `glyph ${state}`, "aria-hidden": "true"}, svg("use", {href: `#glyph-${state}`}));
    }

    function number(value) {
        return value.toLocaleString("en");
    }

    function count(value, one, several) {
        return `${number(value)} ${value === 1 ? one : several}`;
    }

    /** The three shares as one bar; the words stand beside it. */
    function bar(totals) {
        const widths = [["used", totals.used], ["shown", totals.shown], ["missed", totals.missed]];
        let x = 0;
        const parts = widths.filter(([, part]) => part > 0).map(([state, part]) => {
            const width = 100 * part / totals.elements;
            const rect = svg("rect", {class: state, x, y: 0, width, height: 10});
            x += width;
            return rect;
        });
        return svg("svg", {class: "bar", viewBox: "0 0 100 10", preserveAspectRatio: "none", role: "img",
                           "aria-label": `${totals.used} used, ${totals.shown} ${Page.model.terms.onlyShown}, ${totals.missed} missed`},
                   parts);
    }

    async function copy(text) {
        try {
            await navigator.clipboard.writeText(text);
        } catch {
            // Pages opened from a disk may be refused that; the old way works everywhere.
            const area = el("textarea", {class: "offscreen"});
            area.value = text;
            document.body.append(area);
            area.select();
            document.execCommand("copy");
            area.remove();
        }
        Page.main.say("Copied");
    }

    return {el, svg, plain, shown, glyph, number, count, bar, copy};
})();
