// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/elementsearch.h"

#include "coverage/pattern.h"

#include <functional>

namespace Uicov::Coverage {

ElementSearch::ElementSearch(const CoverageTree& tree) {
    const QList<WindowId> windows = tree.windows();
    for (const WindowId window : windows) {
        for (const NodeId node : tree.nodesOf(window)) {
            const CoverageTree::ElementKey key = tree.keyOf(node);
            m_entries.push_back({node, tree.isInNumbers(node), key.toKey(), key.toString()});
        }
    }
}

QVector<NodeId> ElementSearch::find(const QString& text) const {
    const Pattern pattern(text);
    using Test = std::function<bool(const QString&)>;
    struct Way {
        Test isMeant;
        bool hasToBeOne;
    };
    const Way ways[] = {{[&](const QString& other) { return other == text; }, false},
                        {[&](const QString& other) { return other.startsWith(text); }, true},
                        {[&](const QString& other) { return pattern.matches(other); }, false},
                        {[&](const QString& other) { return other.contains(text); }, false}};
    for (const bool wantsNumbers : {true, false}) {
        for (const Way& way : ways) {
            QVector<NodeId> found;
            for (const Entry& entry : m_entries) {
                if (entry.isInNumbers == wantsNumbers &&
                    (way.isMeant(entry.key) || way.isMeant(entry.name))) {
                    found.append(entry.node);
                }
            }
            if (way.hasToBeOne ? found.size() == 1 : !found.isEmpty()) {
                return found;
            }
        }
    }
    return {};
}

NodeId ElementSearch::findByPrefix(const QString& text) const {
    QVector<NodeId> found;
    for (const Entry& entry : m_entries) {
        if (!entry.isInNumbers) {
            continue;
        }
        if (entry.key == text || entry.name == text) {
            return entry.node;
        }
        if (entry.key.startsWith(text) || entry.name.startsWith(text)) {
            found.append(entry.node);
        }
    }
    return found.size() == 1 ? found.first() : NodeId::None;
}

} // namespace Uicov::Coverage
