// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"

#include <vector>

namespace Uicov::Report {

/**
 * The window and all below it, each before what is below it, as people read them: below each first
 * the controls, then the views, both in the natural order of what is written on them. Of classic
 * runs in the order of the tree.
 */
std::vector<Coverage::NodeId> elementsInOrder(const Coverage::CoverageTree& tree,
                                              Coverage::WindowId window);

} // namespace Uicov::Report
