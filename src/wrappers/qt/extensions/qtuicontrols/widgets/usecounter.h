// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/attribution.h"
#include "qtuicontrols/elementbook.h"
#include "qtuicontrols/widgets/inputgesture.h"
#include "qtuicontrols/widgets/lazyconnections.h"
#include "qtuicontrols/widgets/widgetowners.h"

#include <QRect>

#include <vector>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

struct TrackerServices;

/**
 * Decides whether a person has operated a widget and counts a use once for each gesture. What all
 * hubs of signals share; a member of WidgetUses. GUI thread only.
 */
class UseCounter {
public:
    explicit UseCounter(const TrackerServices& services);

    ElementBook& book() { return m_book; }
    Attribution& attribution() { return m_attribution; }
    const WidgetOwners& owners() const { return m_owners; }
    InputGesture& gesture() { return m_gesture; }

    /** Of the hubs to controls. */
    LazyConnections& connections() { return m_connections; }

    /** The control that the object is a part of; null when it is of none or that has no element. */
    QWidget* controlOf(const QObject* object) const { return m_owners.controlOf(object); }
    /** The type of a control's element; Area when it has none. */
    ElementType typeOf(const QWidget* control);

    /** Whether the present input, or what an earlier one has begun, went to the control or a part
     * of it. */
    bool isOperated(QWidget* control);

    /** Counts a use of the control's element. */
    void count(QWidget* control, Use use);
    /** Counts a use of an element without a widget of its own; the place is in the coordinates of
     * its window, and unknown when it is null. */
    void count(UIElement* element, Use use, const QRect& place);
    /** Counts it when the control is operated. */
    void countOperated(QWidget* control, Use use);

    /** The rectangle of the widget in the coordinates of its window. */
    static QRect placeOf(const QWidget* widget);
    /** A rectangle of the widget in the coordinates of its window. */
    static QRect placeIn(const QWidget* widget, const QRect& rectangle);

private:
    struct Counted {
        const UIElement* element;
        Use use;
    };

    bool isFirst(const UIElement* element, Use use);

    ElementBook& m_book;
    Attribution& m_attribution;
    WidgetOwners m_owners;
    InputGesture m_gesture;
    LazyConnections m_connections;
    /** In the gesture of that serial number. */
    std::vector<Counted> m_counted;
    int m_serial = 0;
};

} // namespace UIControls
} // namespace Vorsk
