"use strict";

/** Where a picture is looked at: as large as fits, or as large as was asked for. */
Page.stage = (() => {
    const {el} = Page.text;
    const steps = [0.25, 0.5, 0.75, 1, 1.5, 2, 3, 4];
    /** Smaller views are shown twice as large where there is room. */
    const tiny = 240;
    const margin = 2;
    const narrow = matchMedia("(max-width: 900px)");

    function fitting(stage, [, , width, height]) {
        const style = getComputedStyle(stage.element);
        const across = stage.element.clientWidth - parseFloat(style.paddingLeft) - parseFloat(style.paddingRight) - margin;
        const down = stage.element.clientHeight - parseFloat(style.paddingTop) - parseFloat(style.paddingBottom) - margin;
        const largest = Math.max(width, height) < tiny ? 2 : 1;
        // On a narrow page, and on paper, the stage is as high as the picture.
        const room = narrow.matches || down < 80 ? across / width : Math.min(across / width, down / height);
        return Math.max(0.05, Math.min(largest, room));
    }

    function apply(stage) {
        const {picture} = stage;
        if (!picture || !stage.element.isConnected) {
            return;
        }
        const [, , width, height] = stage.bounds;
        stage.scale = stage.zoom ?? fitting(stage, stage.bounds);
        picture.setAttribute("width", Math.max(1, width * stage.scale));
        picture.setAttribute("height", Math.max(1, height * stage.scale));
        stage.percent.textContent = `${Math.round(100 * stage.scale)}%`;
        stage.percent.setAttribute("aria-label", `${stage.percent.textContent}, as large as it was`);
        stage.fit.setAttribute("aria-pressed", String(stage.zoom === null));
    }

    /** The middle of what is in sight stays where it is. */
    function zoomTo(stage, zoom) {
        const {element} = stage;
        const x = (element.scrollLeft + element.clientWidth / 2) / stage.scale;
        const y = (element.scrollTop + element.clientHeight / 2) / stage.scale;
        stage.zoom = zoom;
        apply(stage);
        element.scrollLeft = x * stage.scale - element.clientWidth / 2;
        element.scrollTop = y * stage.scale - element.clientHeight / 2;
    }

    function step(stage, direction) {
        const next = direction > 0 ? steps.find((one) => one > stage.scale + 0.01) : steps.findLast((one) => one < stage.scale - 0.01);
        if (next) {
            zoomTo(stage, next);
        }
    }

    function create() {
        const stage = {zoom: null, scale: 1, picture: null, bounds: [0, 0, 1, 1]};
        const button = (label, words, action) => el("button", {type: "button", "aria-label": label, title: label, onclick: action}, words);
        stage.element = el("div", {class: "stage", tabindex: 0, role: "region", "aria-label": "Picture"});
        stage.percent = button("As large as it was (1:1)", "100%", () => zoomTo(stage, 1));
        stage.fit = button("Fit (0)", "Fit", () => zoomTo(stage, null));
        stage.tools = el("div", {class: "zoom", role: "group", "aria-label": "Size of the picture"},
            button("Smaller (-)", "−", () => step(stage, -1)), stage.percent, button("Larger (+)", "+", () => step(stage, 1)), stage.fit);
        stage.element.addEventListener("wheel", (event) => {
            if (event.ctrlKey && stage.picture) {
                event.preventDefault();
                step(stage, -event.deltaY);
            }
        }, {passive: false});
        new ResizeObserver(() => apply(stage)).observe(stage.element);
        return Object.assign(stage, {
            /** @param bounds [x, y, width, height] of the picture; it may be null */
            show: (picture, bounds, notes) => {
                Object.assign(stage, {picture, bounds, zoom: null});
                stage.element.replaceChildren(...notes, ...(picture ? [picture] : []));
                stage.tools.hidden = !picture;
                apply(stage);
            },
            step: (direction) => step(stage, direction),
            fitAll: () => zoomTo(stage, null)
        });
    }

    return {create};
})();
