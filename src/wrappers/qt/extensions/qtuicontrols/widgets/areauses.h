// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QEvent>
#include <QHash>
#include <QPointer>

QT_BEGIN_NAMESPACE
class QEvent;
class QGraphicsItem;
class QGraphicsScene;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class UseCounter;

/**
 * Finds what takes a press and is no other control: widgets of the application's own classes and
 * graphics items. Whether a press was taken shows when the next input comes: what ignores a press
 * passes it on to its parent. GUI thread only.
 */
class AreaUses {
public:
    explicit AreaUses(UseCounter& counter);

    /** An input event is about to go to the widget.
     * @param isOfControl whether a control owns the widget */
    void expect(QWidget* receiver, bool isOfControl, QEvent* event);
    /** An input event is about to go to the scene. */
    void expect(QGraphicsScene* scene, QEvent* event);

private:
    void press(QWidget* receiver, bool isOfControl, QEvent* event);
    void settle();
    void take(QWidget* widget);
    void take(QGraphicsItem* item);
    void hold(UIElement* area, QWidget* widget);
    void drag();
    UIElement* areaOf(QWidget* widget, UIElement* asView);
    UIElement* areaOf(QGraphicsItem* item, const QWidget* graphicsView);
    UIElement* viewOf(const QWidget* widget, const QWidget** viewWidget);

    UseCounter& m_counter;
    /** That has got the press last; whether it has kept it is not known yet. */
    QPointer<QWidget> m_pressed;
    /** The kind of that press. */
    QEvent::Type m_pressedBy = QEvent::None;
    /** The graphics view through which a scene got the press. */
    QPointer<QWidget> m_graphicsView;
    bool m_isScenePressed = false;
    /** What has taken the press that is held; null when nothing has, or it is known as dragged. */
    UIElement* m_held = nullptr;
    QPointer<QWidget> m_heldWidget;
    /** Of graphics items that are no objects, by view and class; of views that are pressed. */
    QHash<QString, UIElement*> m_sharedAreas;
};

} // namespace UIControls
} // namespace Vorsk
