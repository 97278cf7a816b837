// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtquickcoveragetracker.h"

#include "qtuicoverage/names.h"
#include "qtuicoverage/qtquickitemobserver.h"
#include "qtuicoverage/quickgeometry.h"
#include "qtuicoverage/quickgrab.h"
#include "qtuicoverage/quickitemclass.h"
#include "tracking/grab.h"

#include <QMouseEvent>
#include <QPointer>
#include <QQuickItem>
#include <QQuickView>
#include <QQuickWindow>

#include <vector>

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::ElementGeometry;
using UIAbstraction::StandardType;
using UIAbstraction::UIElement;

namespace {

/** The items from first on, as guards: what runs while one is tracked may delete the next one. */
std::vector<QPointer<QQuickItem>> guarded(const QList<QQuickItem*>& items, int first) {
    return {items.cbegin() + first, items.cend()};
}

} // namespace

QtQuickCoverageTracker::QtQuickCoverageTracker(AbstractUIElementExporter* exporter)
    : UICoverageTracker(exporter)
    , m_observers(&elementStore()) {
    // They go with the tracker when it moves to another thread.
    m_observers.setParent(this);
    elementStore().setParent(this);
}

QtQuickCoverageTracker::~QtQuickCoverageTracker() = default;

void QtQuickCoverageTracker::handleEvent(QObject* object, QEvent* event) {
    // The type alone decides about nearly every event, so it is looked at before anything else.
    if (!isOfInterest(event->type())) {
        return;
    }
    if (auto* const window = qobject_cast<QQuickWindow*>(object)) {
        handleWindowEvent(window, event);
    } else if (auto* const item = qobject_cast<QQuickItem*>(object)) {
        handleItemEvent(item, event);
    }
}

void QtQuickCoverageTracker::handleWindowEvent(QQuickWindow* window, const QEvent* event) {
    const QPointer<QQuickWindow> guard(window);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        takeWindowScreenshot(window);
        if (!guard.isNull()) {
            clickWindow(window, static_cast<const QMouseEvent*>(event));
        }
        break;
    case QEvent::KeyPress:
        takeWindowScreenshot(window);
        break;
    case QEvent::FocusIn:
        refreshWindowGeometry(window);
        break;
    case QEvent::Show:
        showWindow(window);
        break;
    default:
        break;
    }
}

void QtQuickCoverageTracker::handleItemEvent(QQuickItem* item, const QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
        takeItemScreenshot(item);
        break;
    case QEvent::FocusIn:
        if (item->window() != nullptr) {
            refreshItemGeometry(item);
        }
        break;
    default:
        break;
    }
}

bool QtQuickCoverageTracker::eventFilter(QObject* watched, QEvent* event) {
    handleEvent(watched, event);
    return QObject::eventFilter(watched, event);
}

UIElement* QtQuickCoverageTracker::windowElement(QQuickWindow* window) {
    if (window == nullptr) {
        return nullptr;
    }
    if (UIElement* const known = element(window)) {
        return known;
    }
    const QPointer<QQuickWindow> guard(window);
    UIElement* const created = makeElement(window, StandardTypes::window());
    elementStore().addMapping(window, created);
    created->setWindowNode(true);
    created->registerEvent(Events::shown());
    created->setText(window->title());
    QPointer<QQuickItem> root = window->contentItem();
    if (auto* const view = qobject_cast<QQuickView*>(window)) {
        root = view->rootObject();
        if (!view->isWindowType()) {
            created->setWindowNode(false);
        }
    }
    trackItem(root);
    if (guard.isNull()) {
        return nullptr;
    }
    if (UIElement* const rootElement = root.isNull() ? nullptr : element(root)) {
        created->addChild(rootElement);
        rootElement->setTransparentNode(true);
    }
    return created;
}

UIElement* QtQuickCoverageTracker::trackItem(QQuickItem* item) {
    if (item == nullptr) {
        return nullptr;
    }
    const QPointer<QQuickItem> guard(item);
    UIElement* tracked = element(item);
    if (tracked == nullptr) {
        tracked = createItemElement(item);
        if (guard.isNull()) {
            return nullptr;
        }
    }
    // Also for an item that is known: it may have come here from another parent.
    if (UIElement* const parentElement = element(item->parentItem())) {
        parentElement->addChild(tracked);
    }
    const QList<QQuickItem*> children = item->childItems();
    const std::vector<QPointer<QQuickItem>> guardedChildren = guarded(children, 0);
    for (const QPointer<QQuickItem>& child : guardedChildren) {
        trackItem(child);
        if (guard.isNull()) {
            return nullptr;
        }
    }
    rememberKnownChildren(item, children);
    return tracked;
}

UIElement* QtQuickCoverageTracker::createItemElement(QQuickItem* item) {
    auto* const created = new UIElement(QuickItemClass::of(item).name(), StandardType(), QString());
    created->setTransparentNode(true);
    elementStore().addMapping(item, created);
    auto* const observer = new QtQuickItemObserver(item, created, this);
    if (observer->observedObject() == nullptr) {
        delete observer; // a property's getter deleted the item
    } else {
        m_observers.addObserver(created, observer);
    }
    return created;
}

void QtQuickCoverageTracker::trackChildren(QObject* object) {
    auto* const item = qobject_cast<QQuickItem*>(object);
    if (item == nullptr) {
        return;
    }
    const QPointer<QQuickItem> guard(item);
    const QList<QQuickItem*> children = item->childItems();
    const std::vector<QPointer<QQuickItem>> candidates =
        guarded(children, knownChildren(item, children));
    for (const QPointer<QQuickItem>& child : candidates) {
        if (!child.isNull() && element(child) == nullptr) {
            trackItem(child);
            trackChildren(child);
            if (guard.isNull()) {
                return;
            }
        }
    }
    rememberKnownChildren(item, children);
}

QtQuickItemObserver* QtQuickCoverageTracker::observer(QQuickItem* item) {
    return qobject_cast<QtQuickItemObserver*>(m_observers.observerForElement(element(item)));
}

/** How many children, from the first on, are sure to have an element, without looking at them. */
int QtQuickCoverageTracker::knownChildren(QQuickItem* item, const QList<QQuickItem*>& children) {
    const QtQuickItemObserver* const itemObserver = observer(item);
    const int known = itemObserver == nullptr ? -1 : itemObserver->knownChildren();
    if (known <= 0 || children.isEmpty()) {
        return 0;
    }
    // New children stand last. So as long as the last of those that were all known stands where it
    // stood, nobody came in before it; and where there are fewer than before and the last one has
    // an element, some have left and nobody came.
    if (children.size() < known) {
        return element(children.last()) == nullptr ? 0 : children.size();
    }
    return children.at(known - 1) == itemObserver->lastKnownChild() ? known : 0;
}

void QtQuickCoverageTracker::rememberKnownChildren(QQuickItem* item,
                                                   const QList<QQuickItem*>& children) {
    QtQuickItemObserver* const itemObserver = observer(item);
    if (itemObserver == nullptr) {
        return;
    }
    // What ran while they were tracked may have made children come and go, and the last one die.
    const bool areTheSame = item->childItems() == children;
    itemObserver->setKnownChildren(areTheSame ? children.size() : -1,
                                   areTheSame && !children.isEmpty() ? children.last() : nullptr);
}

void QtQuickCoverageTracker::clickWindow(QQuickWindow* window, const QMouseEvent* event) {
    if (UIElement* const clicked = windowElement(window)) {
        clicked->increaseUsageAt(Events::clicked(), event->localPos().toPoint());
    }
}

void QtQuickCoverageTracker::showWindow(QQuickWindow* window) {
    // Also where windowElement() has just set it: each show sends the title, which the order of
    // records that readers know relies on.
    if (UIElement* const shown = windowElement(window)) {
        shown->setText(window->title());
        shown->increaseUsage(Events::shown());
    }
}

void QtQuickCoverageTracker::refreshWindowGeometry(QQuickWindow* window) {
    UIElement* const refreshed = windowElement(window);
    if (refreshed == nullptr) {
        return;
    }
    refreshed->setGeometry(ElementGeometry(QRect(QPoint(0, 0), window->size()), true));
    const QImage windowImage = refreshed->image();
    const QList<UIElement*> elements = elementStore().elements();
    for (UIElement* candidate : elements) {
        const auto* const item =
            qobject_cast<QQuickItem*>(elementStore().objectForElement(candidate));
        if (item == nullptr || item->window() != window || !isShownItem(item)) {
            continue;
        }
        const QRect rectangle = sceneRectangle(item);
        candidate->setGeometry(ElementGeometry(rectangle, true));
        if (takeScreenshotsOfElements() && rectangle.isValid()) {
            candidate->setImage(copyImage(windowImage, rectangle));
        }
    }
}

void QtQuickCoverageTracker::refreshItemGeometry(QQuickItem* item) {
    // Hidden items too, unlike a window's refresh; an item without an element still leads to its
    // children.
    if (UIElement* const tracked = element(item)) {
        tracked->setGeometry(ElementGeometry(sceneRectangle(item), true));
    }
    const QList<QQuickItem*> children = item->childItems();
    for (QQuickItem* child : children) {
        refreshItemGeometry(child);
    }
}

void QtQuickCoverageTracker::takeWindowScreenshot(QQuickWindow* window) {
    if (!takeScreenshotsOfElements()) {
        return;
    }
    const UIElement* const known = windowElement(window);
    if (known == nullptr || !known->image().isNull()) {
        return;
    }
    const QPointer<QQuickWindow> guard(window);
    const QImage image = grabWindow(window);
    // Rendering ran the application's code: the window may be gone.
    if (UIElement* const pictured = guard.isNull() ? nullptr : element(window)) {
        pictured->setImage(image);
    }
}

void QtQuickCoverageTracker::takeItemScreenshot(QQuickItem* item) {
    if (!takeScreenshotsOfElements() || item->window() == nullptr) {
        return;
    }
    QQuickItem* top = item;
    while (top->parentItem() != nullptr &&
           qstrcmp(top->metaObject()->className(), "QQuickPopupItem") != 0) {
        top = top->parentItem();
    }
    const UIElement* const known = element(top);
    if (known == nullptr || !known->image().isNull()) {
        return;
    }
    const QPointer<QQuickItem> guard(top);
    const QImage image = grabWindow(item->window());
    // Rendering ran the application's code: the item may be gone, or in no window any more.
    const bool isInWindow = !guard.isNull() && top->window() != nullptr;
    if (UIElement* const pictured = isInWindow ? element(top) : nullptr) {
        pictured->setImage(copyImage(image, sceneRectangle(top)));
    }
}

} // namespace UICoverage
} // namespace Vorsk
