// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/elementorder.h"

#include "base/naturalorder.h"

#include <algorithm>

namespace Uicov::Report {

using Coverage::CoverageTree;
using Coverage::NodeId;

namespace {

const QString& nameOf(const Runs::ElementKey::Step& step) {
    return step.caption.isEmpty() ? step.label : step.caption;
}

bool isBefore(const CoverageTree::Node& a, const CoverageTree::Node& b) {
    const bool isView = a.role == CoverageTree::Node::Role::View;
    if (isView != (b.role == CoverageTree::Node::Role::View)) {
        return !isView;
    }
    if (a.step.kind != b.step.kind) {
        return a.step.kind < b.step.kind;
    }
    const int order = Base::compareNaturally(nameOf(a.step), nameOf(b.step));
    return order != 0 ? order < 0 : a.step < b.step;
}

} // namespace

std::vector<NodeId> elementsInOrder(const CoverageTree& tree, Coverage::WindowId window) {
    if (!tree.isOfControls()) {
        return tree.nodesOf(window);
    }
    std::vector<NodeId> result;
    std::vector<NodeId> open{window};
    while (!open.empty()) {
        const NodeId node = open.back();
        open.pop_back();
        result.push_back(node);
        QList<NodeId> children = tree.node(node).children.values();
        // Taken from the back, so that the first one comes next.
        std::sort(children.begin(), children.end(),
                  [&](NodeId a, NodeId b) { return isBefore(tree.node(b), tree.node(a)); });
        std::copy(children.cbegin(), children.cend(), std::back_inserter(open));
    }
    return result;
}

} // namespace Uicov::Report
