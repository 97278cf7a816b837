// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tracking/observerpool.h"
#include "tracking/uicoveragetracker.h"

#include <QEvent>
#include <QList>
#include <QObject>

QT_BEGIN_NAMESPACE
class QImage;
class QMouseEvent;
class QQuickItem;
class QQuickWindow;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

class QtQuickItemObserver;

/**
 * Builds the elements of Qt Quick windows from the events that the host delivers: a window becomes
 * known with its first press, focus-in or show, and with it every item below it; later items are
 * tracked when their parent says that its children changed. Counts what happens to windows; items
 * count through their observers. GUI thread only.
 */
class QtQuickCoverageTracker : public QObject, public UICoverageTracker {
    Q_OBJECT
    Q_INTERFACES(Vorsk::UICoverage::UICoverageTracker)

public:
    /** @param exporter as UICoverageTracker takes it */
    explicit QtQuickCoverageTracker(AbstractUIElementExporter* exporter);
    /** Deletes every observer; elements stay. */
    ~QtQuickCoverageTracker() override;

    /** Whether handleEvent() does anything at all with events of that type. */
    static constexpr bool isOfInterest(QEvent::Type type) {
        return type == QEvent::MouseButtonPress || type == QEvent::KeyPress ||
               type == QEvent::FocusIn || type == QEvent::Show;
    }

    /** Entry point for every event; what is not of interest costs a look at its type. Consumes
     * none. */
    void handleEvent(QObject* object, QEvent* event);

    /** Feeds handleEvent(), should somebody install the tracker as a filter; never consumes. */
    bool eventFilter(QObject* watched, QEvent* event) override;

    /** Tracks the items below an item that have no element yet; other objects are ignored. */
    void trackChildren(QObject* object) override;

    /** The window's element, made with those of all its items when it is new; null for no window.
     */
    UIAbstraction::UIElement* windowElement(QQuickWindow* window);

private:
    void handleWindowEvent(QQuickWindow* window, const QEvent* event);
    void handleItemEvent(QQuickItem* item, const QEvent* event);

    UIAbstraction::UIElement* trackItem(QQuickItem* item);
    UIAbstraction::UIElement* createItemElement(QQuickItem* item);
    QtQuickItemObserver* observer(QQuickItem* item);
    int knownChildren(QQuickItem* item, const QList<QQuickItem*>& children);
    void rememberKnownChildren(QQuickItem* item, const QList<QQuickItem*>& children);

    void clickWindow(QQuickWindow* window, const QMouseEvent* event);
    void showWindow(QQuickWindow* window);
    void refreshWindowGeometry(QQuickWindow* window);
    void refreshItemGeometry(QQuickItem* item);
    void takeWindowScreenshot(QQuickWindow* window);
    void takeItemScreenshot(QQuickItem* item);

    ObserverPool m_observers;
};

} // namespace UICoverage
} // namespace Vorsk
