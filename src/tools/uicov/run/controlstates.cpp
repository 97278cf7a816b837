// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/controlstates.h"

#include "run/elementkinds.h"
#include "uiabstraction/elementwalk.h"
#include "uiabstraction/uielement.h"

#include <QSet>

#include <vector>

namespace Uicov::Runs {

using Vorsk::UIAbstraction::ElementWalk;
using Vorsk::UIAbstraction::UIElement;

namespace {

bool isView(const UIElement& element) {
    return isViewType(element.standardType().name());
}

bool isShowing(const UIElement& view) {
    return view.attribute(AttributeName::showing()) == QLatin1String("true");
}

/** The nearest view above; null when there is none. Elements may stand below themselves. */
const UIElement* viewAbove(const UIElement& element) {
    QSet<const UIElement*> passed;
    const UIElement* above = element.parent();
    while (above != nullptr && !isView(*above) && !passed.contains(above)) {
        passed.insert(above);
        above = above->parent();
    }
    return above != nullptr && isView(*above) ? above : nullptr;
}

} // namespace

void ControlStates::announced(const UIElement& element) {
    ElementWalk walk(&element);
    while (const UIElement* next = walk.next()) {
        changed(*next);
    }
}

void ControlStates::changed(const UIElement& element) {
    if (!isView(element)) {
        const UIElement* const view = viewAbove(element);
        note(element, view != nullptr && isShowing(*view));
        return;
    }
    if (!isShowing(element)) {
        return;
    }
    // Down to the views in it, each of which tells by itself whether it shows.
    QSet<const UIElement*> passed{&element};
    std::vector<const UIElement*> open{&element};
    while (!open.empty()) {
        const QList<UIElement*> children = open.back()->children();
        open.pop_back();
        for (const UIElement* child : children) {
            if (!isView(*child) && !passed.contains(child)) {
                passed.insert(child);
                note(*child, true);
                open.push_back(child);
            }
        }
    }
}

void ControlStates::note(const UIElement& control, bool isShowing) {
    State& state = m_states[&control];
    const bool isEnabled = control.attribute(AttributeName::enabled()) != QLatin1String("false");
    const bool isHidden = control.attribute(AttributeName::hidden()) == QLatin1String("true");
    state.wasEnabled = state.wasEnabled || isEnabled;
    state.wasSeen = state.wasSeen || (isShowing && isEnabled && !isHidden);
}

} // namespace Uicov::Runs
