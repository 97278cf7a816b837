"use strict";

/** A window or menu as it looked, with its elements outlined in place. */
Page.picture = (() => {
    const {svg, plain} = Page.text;
    const badge = 15;

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

    function outline(node, isWhole) {
        const [x, y, width, height] = node.place;
        const box = {x, y, width, height};
        const state = Page.model.stateOf(node);
        const first = Page.model.data.nodes[node.index + 1];
        const isContainer = first?.above === node.index && first.surface === node.surface;
        return svg("g", {class: `outline ${state}${isWhole ? " whole" : ""}`, "data-node": node.index},
                   svg("title", {}, plain(`${Page.model.stepName(node)}: ${state}`)),
                   svg("rect", {class: "area", ...box,
                                fill: state === "missed" && !isContainer ? "url(#hatch)" : "transparent"}),
                   svg("rect", {class: "ring", ...box}), svg("rect", {class: "halo", ...box}), svg("rect", {class: "line", ...box}));
    }

    /** The sign of the state; above all outlines, so that no neighbour covers it. */
    function sign(node) {
        return svg("use", {class: "badge", "data-node": node.index, href: `#badge-${Page.model.stateOf(node)}`, width: badge, height: badge});
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
            const [x, y, width, height] = Page.model.data.nodes[use.dataset.node].place;
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
        const parts = nodes.map((node) => outline(node, node.index === surface.node));
        const isSketch = surface.picture < 0;
        const picture = frame(surface.bounds, {
            class: `picture${isSketch ? " sketch" : ""}`, role: "img",
            "aria-label": `${isSketch ? "Places" : "Picture"} of ${plain(Page.model.stepName(Page.model.data.nodes[surface.node]))} with ${Page.text.count(nodes.length, "outlined element", "outlined elements")}; the list has the same elements`
        }, isSketch ? nodes.filter((node) => node.index !== surface.node).map(label)
                    : drawing(surface.picture, surface.bounds), parts,
        svg("g", {class: "badges"}, nodes.filter((node) => node.index !== surface.node).map(sign)));
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

    return {drawing, ofElement, ofSurface};
})();
