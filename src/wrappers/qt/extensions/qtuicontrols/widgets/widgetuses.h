// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <memory>

QT_BEGIN_NAMESPACE
class QEvent;
class QObject;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class Commands;
class PartElements;
struct TrackerServices;

/**
 * Counts the uses of all widgets that are controls. Signals are connected when input first goes to
 * a control, so that a control that nobody operates costs nothing, and again when the application
 * has cut the connections since. A member of the tracker; GUI thread only.
 */
class WidgetUses {
public:
    /** All of them outlive this object. */
    WidgetUses(const TrackerServices& services, PartElements& parts, Commands& commands);
    ~WidgetUses();
    Q_DISABLE_COPY(WidgetUses)

    /** What a control of that type announces: the uses to put into its description. */
    static Uses usesOf(const QWidget* widget, ElementType type);

    /** The widget has become a control. To be called once for each, after its element was added. */
    void watch(QWidget* widget, ElementType type, UIElement* element);

    /**
     * The anchors of a QLabel or QTextBrowser become Link elements of that view, up to 50 of them.
     * To be called when the widget is found and again when its text may have changed; those that
     * are known already are not made again. Other widgets are ignored.
     */
    void findLinks(QWidget* widget, UIElement* view);

    /** Every event, before its receiver gets it. */
    void handleEvent(QObject* object, QEvent* event);

private:
    class Hubs;

    void handleInput(QWidget* receiver, QEvent* event);
    void connectTo(QWidget* control, ElementType type);
    void connectToAll();

    std::unique_ptr<Hubs> m_hubs;
    Commands& m_commands;
    /** An accessibility client operates controls without input. */
    bool m_connectsAll = false;
};

} // namespace UIControls
} // namespace Vorsk
