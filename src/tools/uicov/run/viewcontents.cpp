// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/viewcontents.h"

#include "run/elementkinds.h"
#include "uiabstraction/uielement.h"

#include <QSet>

#include <vector>

namespace Uicov::Runs {

using Vorsk::UIAbstraction::UIElement;

bool isView(const UIElement& element) {
    return isViewType(element.standardType().name());
}

const UIElement* viewAbove(const UIElement& element) {
    // Controls lie in a view or in a few controls that do. What is deeper, or a ring, is made up,
    // and would cost time in proportion to its square.
    constexpr int deepest = 100;
    const UIElement* above = element.parent();
    for (int i = 0; i < deepest && above != nullptr && !isView(*above); ++i) {
        above = above->parent();
    }
    return above != nullptr && isView(*above) ? above : nullptr;
}

QVector<const UIElement*> controlsOf(const UIElement& view) {
    QVector<const UIElement*> controls;
    QSet<const UIElement*> passed{&view};
    std::vector<const UIElement*> open{&view};
    while (!open.empty()) {
        const QList<UIElement*> children = open.back()->children();
        open.pop_back();
        for (const UIElement* child : children) {
            if (!isView(*child) && !passed.contains(child)) {
                passed.insert(child);
                controls.append(child);
                open.push_back(child);
            }
        }
    }
    return controls;
}

} // namespace Uicov::Runs
