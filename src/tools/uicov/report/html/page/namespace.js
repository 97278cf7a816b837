"use strict";

/** Everything of the page's scripts; each file adds one member. */
const Page = {};
