// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QString>

namespace Vorsk::UIAbstraction {
class UIElement;
}

namespace Uicov::Runs {

/**
 * Follows, record by record, which controls of a run a person could have operated: whether each was
 * ever enabled, and whether its view was ever showing while it was there, enabled and not hidden.
 * What a run ends with does not tell. To be told of each change after the model has it.
 */
class ControlStates {
public:
    using UIElement = Vorsk::UIAbstraction::UIElement;

    /** The element with all below it is there. */
    void announced(const UIElement& element);
    /** An attribute of the element has changed, or the element has got its parent. */
    void changed(const UIElement& element);

    bool wasEnabled(const UIElement* element) const { return m_states.value(element).wasEnabled; }
    bool wasSeen(const UIElement* element) const { return m_states.value(element).wasSeen; }

private:
    struct State {
        bool wasEnabled = false;
        bool wasSeen = false;
    };

    void note(const UIElement& control, bool isShowing);

    QHash<const UIElement*, State> m_states;
};

} // namespace Uicov::Runs
