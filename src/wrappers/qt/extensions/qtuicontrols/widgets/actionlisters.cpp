// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/actionlisters.h"

#include "qtuicontrols/widgets/commands.h"

#include <QAction>
#include <QMenu>

#include <algorithm>

namespace Vorsk {
namespace UIControls {

ActionListers::ActionListers(Commands& commands)
    : m_commands(commands) {}

void ActionListers::update(QWidget* lister, const QList<QAction*>& actions, Way way,
                           UIElement* view) {
    const auto known = m_listers.find(lister);
    if (known == m_listers.end() && actions.isEmpty()) {
        return;
    }
    if (m_listers.size() >= m_sizeToClean) {
        forgetDead();
        m_sizeToClean = std::max(m_sizeToClean, 2 * m_listers.size());
    }
    Lister& list = m_listers[lister];
    if (list.widget.isNull()) {
        remove(list);
        list.actions.clear();
        list.widget = lister;
    }
    const bool isMenu = qobject_cast<const QMenu*>(lister) != nullptr;
    // In a menu, also one of a tool button, an action with a sub menu does nothing but open it.
    const auto wayOf = [&](const QAction* action) {
        return isMenu && action->menu() != nullptr ? Way::Menu : way;
    };
    // What is no longer listed goes, and so does what is reached in another way now.
    const auto isGone = [&](const Listed& listed) {
        return listed.living.isNull() || !actions.contains(listed.action) ||
               listed.way != wayOf(listed.living);
    };
    for (const Listed& listed : list.actions) {
        if (isGone(listed) && !listed.living.isNull()) {
            m_commands.remove(listed.living, listed.way);
        }
    }
    list.actions.erase(std::remove_if(list.actions.begin(), list.actions.end(), isGone),
                       list.actions.end());
    for (QAction* action : actions) {
        const bool isListed =
            std::any_of(list.actions.cbegin(), list.actions.cend(),
                        [action](const Listed& listed) { return listed.action == action; });
        if (!isListed) {
            // Noted also where it is no command, so that it is asked for once.
            const Way reached = wayOf(action);
            m_commands.add(action, reached, view);
            list.actions.push_back({action, action, reached});
        }
    }
}

void ActionListers::remove(const Lister& lister) {
    for (const Listed& listed : lister.actions) {
        if (!listed.living.isNull()) {
            m_commands.remove(listed.living, listed.way);
        }
    }
}

void ActionListers::forgetDead() {
    for (auto at = m_listers.begin(); at != m_listers.end();) {
        if (at->widget.isNull()) {
            remove(*at);
            at = m_listers.erase(at);
        } else {
            ++at;
        }
    }
}

} // namespace UIControls
} // namespace Vorsk
