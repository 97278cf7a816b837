// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/comparedelements.h"

namespace Uicov::Coverage {

Entries entriesOf(const CoverageTree& tree) {
    Entries entries;
    const QList<WindowId> windows = tree.windows();
    for (const WindowId window : windows) {
        for (const NodeId node : tree.nodesOf(window)) {
            if (!tree.counts(node)) {
                continue;
            }
            const CoverageTree::Node& element = tree.node(node);
            const QString above =
                element.parent == NodeId::None ? QString() : tree.keyOf(element.parent).toKey();
            entries.insert(qMakePair(tree.node(window).application, tree.keyOf(node).toKey()),
                           {tree.stateOf(node), element.structureKey, element.type, above,
                            element.step.label, node});
        }
    }
    return entries;
}

} // namespace Uicov::Coverage
