// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/controlstates.h"

#include "run/elementkinds.h"
#include "run/viewcontents.h"
#include "uiabstraction/elementwalk.h"
#include "uiabstraction/uielement.h"

namespace Uicov::Runs {

using Vorsk::UIAbstraction::ElementWalk;
using Vorsk::UIAbstraction::UIElement;

namespace {

bool isShowing(const UIElement& view) {
    return view.attribute(AttributeName::showing()) == QLatin1String("true");
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
    // Views in it tell by themselves whether they show.
    const QVector<const UIElement*> controls = controlsOf(element);
    for (const UIElement* control : controls) {
        note(*control, true);
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
