#pragma once

#include "../elementbook.h"

#include <memory>

QT_BEGIN_NAMESPACE
class QAction;
class QEvent;
class QShortcut;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

struct TrackerServices;

/**
 * Makes one Command element of each action that can be reached, however often it is listed, and counts how it was
 * triggered. A member of the tracker; GUI thread only.
 */
class Commands {
public:
    /** All of the services outlive this object. */
    explicit Commands(const TrackerServices& services);
    ~Commands();
    Q_DISABLE_COPY(Commands)

    /**
     * The action can be reached in that way. Makes its element below the view, unless it has one already: then only the
     * way is added. To be called for every action of menus, menu bars, tool bars and other widgets; an action with a
     * shortcut gets that way by itself.
     * @return null for what is no command: separators, actions that open a sub menu, and what belongs to the context
     * menu of a text
     */
    UIElement* add(QAction* action, Way way, UIElement* view);
    /** The action is no longer listed by a widget through which it was reached in that way; how often it was added in a
     * way is counted. The element stays: without any way left, it is hidden. */
    void remove(QAction* action, Way way);

    /** The shortcut, a command of its own without an action. */
    UIElement* add(QShortcut* shortcut, UIElement* view);

    /** How what the widget lists is reached: a menu bar's, tool bar's or context menu's actions. */
    static Way wayThrough(const QWidget* lister);

    /** Every event, before its receiver gets it: ActionChanged of a lister among them. */
    void handleEvent(QObject* object, QEvent* event);

private:
    class Private;
    std::unique_ptr<Private> m_private;
};

} // namespace UIControls
} // namespace Vorsk
