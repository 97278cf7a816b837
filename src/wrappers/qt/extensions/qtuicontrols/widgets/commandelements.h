// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"
#include "qtuicontrols/widgets/commandways.h"

#include <QHash>
#include <QPointer>

#include <array>

QT_BEGIN_NAMESPACE
class QAction;
class QShortcut;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * The Command elements: one for each action that can be reached and each shortcut without an
 * action, with the ways in which it can be reached. A member of Commands; GUI thread only.
 */
class CommandElements {
public:
    explicit CommandElements(ElementBook& book);

    /** As in Commands. */
    UIElement* add(QAction* action, Way way, UIElement* view);
    UIElement* add(QShortcut* shortcut, UIElement* view);
    void remove(QAction* action, Way way);

    /** The element of an action or shortcut; null when it has none. */
    UIElement* elementOf(const QObject* command) const { return m_book.elementOf(command); }
    /** That of an action; made below the view of what lists it when it has none yet. Null for what
     * is no command. */
    UIElement* findOrAdd(QAction* action, Way way);
    UIElement* findOrAdd(QShortcut* shortcut);

    /** Brings what is told of the action to what it is now; others than commands are ignored. */
    void refresh(const QAction* action);

    /** Counts that the command was triggered in that way. */
    void count(UIElement* element, Way way);

    /** Calls the function with each action that is a command and lives. */
    template <class Function>
    void forEachAction(const Function& function) const {
        for (const Known& known : m_known) {
            if (auto* const action = qobject_cast<QAction*>(known.object.data())) {
                function(action);
            }
        }
    }

private:
    struct Known {
        QPointer<QObject> object;
        UIElement* element = nullptr;
        /** As the action has it, with its mnemonic. */
        QString text;
        /** How often it is listed in each way. */
        std::array<int, 4> listed{};
    };

    Known* knownOf(const QObject* command);
    Known& learn(QObject* command, UIElement* element);
    UIElement* viewAround(const QWidget* widget) const;
    UIElement* viewOf(const QAction* action) const;
    static WaySet waysOf(const Known& known, const QAction* action);

    ElementBook& m_book;
    QHash<const QObject*, Known> m_known;
};

} // namespace UIControls
} // namespace Vorsk
