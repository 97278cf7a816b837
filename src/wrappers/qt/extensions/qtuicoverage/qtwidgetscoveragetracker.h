// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tracking/observerpool.h"
#include "tracking/uicoveragetracker.h"

#include <QEvent>
#include <QObject>
#include <QPointer>

QT_BEGIN_NAMESPACE
class QMouseEvent;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

/**
 * Builds the elements of a Qt Widgets application from the events that the host delivers: each
 * widget that is shown gets an element, and all its ancestors; what the classification knows gets
 * an observer as well. There is no scan of widgets that exist already. GUI thread only.
 */
class QtWidgetsCoverageTracker : public QObject, public UICoverageTracker {
    Q_OBJECT

public:
    /** @param exporter as UICoverageTracker takes it */
    explicit QtWidgetsCoverageTracker(AbstractUIElementExporter* exporter);
    /** Deletes every observer; elements stay. */
    ~QtWidgetsCoverageTracker() override;

    /** Whether handleEvent() does anything at all with events of that type. */
    static constexpr bool isOfInterest(QEvent::Type type) {
        return type == QEvent::MouseButtonPress || type == QEvent::Show || type == QEvent::Paint;
    }

    /** Entry point for every event; what is not of interest costs a look at its type. Consumes
     * none. */
    void handleEvent(QObject* object, QEvent* event);

    /** Feeds handleEvent(), should somebody install the tracker as a filter; never consumes. */
    bool eventFilter(QObject* watched, QEvent* event) override;

    /** Makes sure that the widget and its ancestors have elements and observers. Never null. */
    UIAbstraction::UIElement* trackWidget(QObject* widget);

    /** Tracks the visible widgets below the widget; a hidden one is left out with all below it. */
    void trackChildWidgets(QWidget* widget);

    /** The object's element, or a new transparent one of that type. Never null. */
    UIAbstraction::UIElement* createGenericElement(QObject* widget,
                                                   const UIAbstraction::StandardType& standardType);

private:
    template <class Widget, class Observer>
    UIAbstraction::UIElement* trackWidgetAs(const QPointer<QObject>& widget,
                                            UIAbstraction::UIElement* known,
                                            const UIAbstraction::StandardType& standardType);
    void handlePress(QObject* object, const QMouseEvent* event);
    void handleShow(QWidget* widget);
    void takeScreenshot(QWidget* widget);
    void connectToParent(QObject* object);
    template <class Observer>
    Observer* observerOf(QObject* object);

    ObserverPool m_observers;
};

} // namespace UICoverage
} // namespace Vorsk
