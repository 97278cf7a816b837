"use strict";

/** A window or menu as it looked, with its elements outlined in place. */
Page.picture = (() => {
    const {svg, plain} = Page.text;
    const badge = 15;
    /** On a small picture more says nothing. */
    const patches = 80;
    const sight = new IntersectionObserver((entries) => {
        for (const {isIntersecting, target} of entries) {
            if (isIntersecting) {
                sight.unobserve(target);
                target.fill();
            }
        }
    }, {rootMargin: "600px"});

    /** The picture of that number over the rectangle [x, y, width, height]. */
    function drawing(index, [x, y, width, height]) {
        const {files, pictures} = Page.model.data;
        if (files) {
            return svg("image", {href: files[index], x, y, width, height, preserveAspectRatio: "none"});
        }
        const scale = `scale(${width / pictures[index].width} ${height / pictures[index].height})`;
        return svg("use", {href: `#picture-${index}`, transform: `translate(${x} ${y}) ${scale}`});
    }

    function frame(bounds, attributes, ...children) {
        return svg("svg", {viewBox: bounds.join(" "), width: bounds[2], height: bounds[3], ...attributes}, children);
    }

    /** The element alone: its own picture, or the part of its window's; null when there is neither. */
    function ofElement(node) {
        const {pictures, surfaces} = Page.model.data;
        const attributes = {class: "own", role: "img", "aria-label": `Picture of ${plain(Page.model.name(node))}`};
        if (node.picture !== undefined) {
            const {width, height} = pictures[node.picture];
            return frame([0, 0, width, height], attributes, drawing(node.picture, [0, 0, width, height]));
        }
        const surface = surfaces[node.surface];
        return surface && surface.picture >= 0
            ? frame(node.place, attributes, drawing(surface.picture, surface.bounds)) : null;
    }

    /** Whether other things lie on it: a menu bar, a tool bar, a group. Operating those does not operate it. */
    function isContainer(node) {
        const first = Page.model.data.nodes[node.index + 1];
        return !Page.model.data.controls && first?.above === node.index && first.surface === node.surface;
    }

    /** Each thing to outline: a control, or each member of a group that is on the surface. */
    function marksOf(node, surfaces) {
        const members = (node.group ?? []).filter(([, , surface]) => surfaces.has(surface));
        return members.length ? members.map(([caption, isUsed, , place]) => ({node, place, caption, state: isUsed ? "used" : node.state === "used" ? "shown" : Page.model.stateOf(node)}))
            : [{node, place: node.place, caption: Page.model.stepName(node), state: Page.model.stateOf(node)}];
    }

    function outline({node, place, caption, state}, isWhole) {
        const [x, y, width, height] = place;
        const box = {x, y, width, height};
        const classes = [state, isWhole && "whole", node.disabled && "disabled"].filter(Boolean).join(" ");
        return svg("g", {class: `outline ${classes}`, "data-node": node.index},
                   svg("title", {}, plain(`${caption || Page.model.stepName(node)}: ${state}${node.disabled ? ", disabled" : ""}`)),
                   svg("rect", {class: "area", ...box,
                                fill: state === "missed" && !isContainer(node) && !node.disabled ? "url(#hatch)" : "transparent"}),
                   svg("rect", {class: "ring", ...box}), svg("rect", {class: "halo", ...box}), svg("rect", {class: "line", ...box}));
    }

    /** The sign of the state; above all outlines, so that no neighbour covers it. */
    function sign({node, place, state}) {
        const use = svg("use", {class: `badge${node.disabled ? " disabled" : ""}`, "data-node": node.index, href: `#badge-${state}`, width: badge, height: badge});
        use.place = place;
        return use;
    }

    /** What a surface without a picture looks like: names where the elements lay. */
    function label(node) {
        const [x, y, width, height] = node.place;
        const clip = svg("svg", {x, y, width, height},
                         svg("text", {x: 6, y: Math.min(height / 2, 20), "dominant-baseline": "middle"},
                             plain(Page.model.name(node))));
        return clip;
    }

    /** Badges keep their size on the screen, whatever the picture is scaled to. */
    function fitBadges(picture, surface) {
        const scale = picture.clientWidth / surface.bounds[2];
        if (!scale) {
            return;
        }
        for (const use of picture.querySelectorAll(".badge")) {
            const [x, y, width, height] = use.place;
            const [left, top, all] = surface.bounds;
            const isSmall = Math.min(width, height) * scale < 2 * badge;
            const factor = (isSmall ? 0.75 : 1) / scale;
            const size = badge * factor;
            const inset = size * (isSmall ? 0.4 : 0.75);
            use.setAttribute("transform",
                `translate(${Math.min(x + width - inset, left + all - size)} ${Math.max(y - size + inset, top)}) scale(${factor})`);
        }
    }

    /**
     * @param nodes what is on the surface, those around others first
     * @param on functions: enter, leave, select, open, each with a node
     */
    function ofSurface(surface, nodes, on) {
        const surfaces = new Set(nodes.map((node) => node.surface));
        const marks = nodes.flatMap((node) => marksOf(node, surfaces));
        const parts = marks.map((mark) => outline(mark, mark.node.index === surface.node));
        const isSketch = surface.picture < 0;
        const picture = frame(surface.bounds, {
            class: `picture${isSketch ? " sketch" : ""}`, role: "img",
            "aria-label": `${isSketch ? "Places" : "Picture"} of ${plain(Page.model.stepName(Page.model.data.nodes[surface.node]))} with ${Page.text.count(nodes.length, "outlined element", "outlined elements")}; the list has the same elements`
        }, isSketch ? nodes.filter((node) => node.index !== surface.node).map(label)
                    : drawing(surface.picture, surface.bounds), parts,
        svg("g", {class: "badges"}, marks.filter(({node}) => node.index !== surface.node && !isContainer(node)).map(sign)));
        const nodeAt = (event) => {
            const group = event.target.closest(".outline");
            return group ? Page.model.data.nodes[group.dataset.node] : null;
        };
        picture.addEventListener("pointerover", (event) => on.hover(nodeAt(event)));
        picture.addEventListener("pointerleave", () => on.hover(null));
        picture.addEventListener("click", (event) => on.select(nodeAt(event)));
        picture.addEventListener("dblclick", (event) => on.open(nodeAt(event)));
        new ResizeObserver(() => fitBadges(picture, surface)).observe(picture);
        return picture;
    }

    /**
     * The surface as a small picture, with what was missed and used as patches of colour. Never larger than it was;
     * what it shows is drawn when it comes into sight.
     */
    function small(surface, width, height) {
        const [left, top, across, down] = surface.bounds;
        const scale = Math.min(1, width / Math.max(1, across), height / Math.max(1, down));
        const box = [left - (width / scale - across) / 2, top, width / scale, height / scale];
        const picture = svg("svg", {class: "small", viewBox: box.join(" "), width, height, "aria-hidden": "true"});
        if (across > 0 && down > 0) {
            picture.fill = () => {
                const nodes = Page.model.nodesOn(surface).filter((node) => node.index !== surface.node && !isContainer(node));
                const surfaces = new Set(nodes.map((node) => node.surface));
                picture.append(...[
                    svg("rect", {class: surface.picture < 0 ? "sheet" : "white", x: left, y: top, width: across, height: down}),
                    ...(surface.picture < 0 ? [] : [drawing(surface.picture, surface.bounds)]),
                    ...nodes.slice(0, patches).flatMap((node) => marksOf(node, surfaces)).map(({place: [x, y, w, h], state}) =>
                        svg("rect", {class: `patch ${state}`, x, y, width: w, height: h}))]);
            };
            sight.observe(picture);
        }
        return picture;
    }

    return {drawing, ofElement, ofSurface, small};
})();
