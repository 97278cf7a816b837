// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// The page's scripts share one object; the tests are modules.
export default [
    {
        rules: {
            "constructor-super": "error", "curly": "error", "eqeqeq": "error", "no-const-assign": "error",
            "no-dupe-keys": "error", "no-eval": "error", "no-implied-eval": "error", "no-redeclare": "error",
            "no-shadow": "error", "no-undef": "error", "no-unreachable": "error", "no-unused-vars": "error",
            "no-use-before-define": ["error", {functions: false}], "no-var": "error", "prefer-const": "error",
            "no-restricted-properties": ["error",
                {property: "innerHTML", message: "Texts are data: make nodes."},
                {property: "outerHTML", message: "Texts are data: make nodes."},
                {property: "insertAdjacentHTML", message: "Texts are data: make nodes."},
                {object: "document", property: "write", message: "Texts are data: make nodes."}]
        }
    },
    {
        files: ["**/*.js"],
        languageOptions: {sourceType: "script", globals: Object.fromEntries([
            "addEventListener", "clearTimeout", "document", "DOMParser", "getComputedStyle", "globalThis", "history",
            "IntersectionObserver", "localStorage", "location", "matchMedia", "navigator", "Page", "ResizeObserver", "scrollTo", "setTimeout",
            "URLSearchParams"].map((name) => [name, "readonly"]))}
    },
    {
        files: ["**/namespace.js"],
        rules: {"no-unused-vars": "off", "no-redeclare": "off"}
    },
    {
        files: ["**/*.mjs"],
        languageOptions: {globals: Object.fromEntries([
            "console", "createImageBitmap", "CustomEvent", "dispatchEvent", "document", "Event", "fetch",
            "getComputedStyle", "globalThis", "innerWidth", "location", "MessageChannel", "navigator", "NodeFilter",
            "OffscreenCanvas", "performance", "PerformanceObserver", "process", "requestAnimationFrame", "URL",
            "URLSearchParams"].map((name) => [name, "readonly"]))}
    }
];
