// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QSet>

#include <vector>

namespace Vorsk {
namespace UIAbstraction {

class UIElement;

/**
 * Goes through an element and all below it, parents first, without recursion, so that depth costs
 * no stack. An element that is listed twice is met twice; one that is listed below itself is not
 * entered again on the path that led to it. A children list is taken when its element is met: what
 * is added to it later is not seen. No element may die during the walk.
 */
class ElementWalk {
public:
    /** @param root where to begin; not owned; null gives an empty walk */
    explicit ElementWalk(const UIElement* root);

    /** The next element; null at the end. */
    const UIElement* next();

    /** How far below the root the element last returned stands; 0 for the root. */
    int depth() const { return m_depth; }

    /** How many children of the element last returned the walk is going to enter. */
    int childCount() const { return m_childCount; }

private:
    struct Level {
        const UIElement* element;
        QList<UIElement*> children;
        int next;
    };

    const UIElement* enter(const UIElement* element);
    bool isOnPath(const UIElement* element) const;

    const UIElement* m_root;
    std::vector<Level> m_path;
    /** What is on the path below the levels that are looked through. */
    QSet<const UIElement*> m_deepOnPath;
    int m_depth = 0;
    int m_childCount = 0;
};

} // namespace UIAbstraction
} // namespace Vorsk
