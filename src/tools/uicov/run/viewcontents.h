// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QVector>

namespace Vorsk::UIAbstraction {
class UIElement;
}

namespace Uicov::Runs {

// Which view of a run of the controls extension an element belongs to, in the element model.

bool isView(const Vorsk::UIAbstraction::UIElement& element);

/** The nearest view above; null when there is none within a hundred steps. Elements may stand below
 * themselves. */
const Vorsk::UIAbstraction::UIElement* viewAbove(const Vorsk::UIAbstraction::UIElement& element);

/** All below the view that belongs to no view in it, each element once. */
QVector<const Vorsk::UIAbstraction::UIElement*>
controlsOf(const Vorsk::UIAbstraction::UIElement& view);

} // namespace Uicov::Runs
