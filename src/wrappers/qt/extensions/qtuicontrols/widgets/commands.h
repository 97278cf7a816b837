// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/widgets/commandelements.h"

#include <QObject>
#include <QPointer>

#include <vector>

QT_BEGIN_NAMESPACE
class QAction;
class QEvent;
class QShortcut;
class QToolButton;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class Attribution;
struct TrackerServices;

/**
 * Makes one Command element of each action that can be reached, however often it is listed, and
 * counts how it was triggered. A member of the tracker; GUI thread only.
 *
 * The application's own slots hear of a trigger first, and may open a dialog in there or delete the
 * action. So the input says what it is about to trigger, and that counts at once where nothing else
 * can come of it: before a window shows, and when the action has died.
 */
class Commands : public QObject {
    Q_OBJECT

public:
    /** All of the services outlive this object. */
    explicit Commands(const TrackerServices& services);

    /**
     * The action can be reached in that way. Makes its element below the view, unless it has one
     * already: then only the way is added. To be called for every action of menus, menu bars, tool
     * bars and other widgets; an action with a shortcut gets that way by itself.
     * @return null for what is no command: separators, actions that open a sub menu, those that
     * stand for a widget, and what belongs to the context menu of a text
     */
    UIElement* add(QAction* action, Way way, UIElement* view);
    /** The action is no longer listed by a widget through which it was reached in that way; how
     * often it was added in a way is counted. The element stays: without any way it is hidden. */
    void remove(QAction* action, Way way);

    /** A shortcut without an action is a command of its own. */
    UIElement* add(QShortcut* shortcut, UIElement* view);

    /** How an action that the widget lists is reached through it; Shortcut when the widget has it
     * only for its shortcut. */
    static Way wayThrough(const QWidget* lister) { return UIControls::wayThrough(lister); }

    /** Every event, before its receiver gets it: input, and changes of actions that are known. */
    void handleEvent(QObject* object, QEvent* event);

    /** Has all commands watched from now on: an accessibility client triggers them without input.
     */
    void watchAll();

private Q_SLOTS:
    void triggered();
    void menuShows();

private:
    /** What the input that goes on is about to trigger. */
    struct Expected {
        QPointer<QObject> action;
        UIElement* element = nullptr;
        Way way = Way::Menu;
        /** No further input has come since. */
        bool isImminent = true;
    };

    void handleInput(QObject* object, QEvent* event);
    void handleShortcut(QObject* object, QEvent* event);
    void handlePointer(QObject* object, QEvent* event);
    void expect(QAction* action, Way way);
    void expectButton(QToolButton* button, QEvent* event);
    void expectMenuOf(QToolButton* button);
    void countImminent();
    void countDead();
    bool isMeant(const QAction* action) const;
    void watch(const QAction* action);

    Attribution& m_attribution;
    CommandElements m_elements;
    std::vector<Expected> m_expected;
    /** The menu that a button of the mouse was last seen down on; an address. */
    const QObject* m_pressedMenu = nullptr;
    bool m_watchesAll = false;
};

} // namespace UIControls
} // namespace Vorsk
