// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtwidgetscoveragetracker.h"

#include "qtuicoverage/names.h"
#include "qtuicoverage/qtabstractbuttonobserver.h"
#include "qtuicoverage/qtcheckboxobserver.h"
#include "qtuicoverage/qtdialogobserver.h"
#include "qtuicoverage/qtlineeditobserver.h"
#include "qtuicoverage/qtmainwindowobserver.h"
#include "qtuicoverage/qtmenubarobserver.h"
#include "qtuicoverage/qtmenuobserver.h"
#include "qtuicoverage/qttableviewobserver.h"
#include "qtuicoverage/qttoolbarobserver.h"
#include "tracking/grab.h"
#include "tracking/logging.h"

#include <QCheckBox>
#include <QDebug>
#include <QDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <QToolBar>
#include <QVector>

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::StandardType;
using UIAbstraction::UIElement;

QtWidgetsCoverageTracker::QtWidgetsCoverageTracker(AbstractUIElementExporter* exporter)
    : UICoverageTracker(exporter)
    , m_observers(&elementStore()) {
    // They go with the tracker when it moves to another thread.
    m_observers.setParent(this);
    elementStore().setParent(this);
}

QtWidgetsCoverageTracker::~QtWidgetsCoverageTracker() = default;

void QtWidgetsCoverageTracker::handleEvent(QObject* object, QEvent* event) {
    // The type alone decides about nearly every event, so it is looked at before anything else.
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (object->isWidgetType()) {
            handlePress(object, static_cast<const QMouseEvent*>(event));
        }
        break;
    case QEvent::Show:
        if (object->isWidgetType()) {
            const QPointer<QObject> guard(object);
            handleShow(static_cast<QWidget*>(object));
            auto* const observer = guard.isNull() ? nullptr : observerOf<QtWidgetObserver>(object);
            if (observer != nullptr) {
                observer->init();
            }
        }
        break;
    case QEvent::Paint:
        if (object->isWidgetType()) {
            notePaint(static_cast<QWidget*>(object), *static_cast<const QPaintEvent*>(event));
        }
        break;
    default:
        break;
    }
}

bool QtWidgetsCoverageTracker::eventFilter(QObject* watched, QEvent* event) {
    handleEvent(watched, event);
    return QObject::eventFilter(watched, event);
}

template <class Observer>
Observer* QtWidgetsCoverageTracker::observerOf(QObject* object) {
    UIElement* const known = element(object);
    return known == nullptr ? nullptr
                            : qobject_cast<Observer*>(m_observers.observerForElement(known));
}

void QtWidgetsCoverageTracker::handlePress(QObject* object, const QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || element(object) == nullptr) {
        return;
    }
    const QPoint position(qRound(event->localPos().x()), qRound(event->localPos().y()));
    // A menu that was hidden when it was tracked has no observer, and its presses are not counted.
    if (qobject_cast<QMenu*>(object) != nullptr) {
        if (auto* const observer = observerOf<QtMenuObserver>(object)) {
            observer->countUsageAt(position, Events::clicked());
        }
    } else if (qobject_cast<QMenuBar*>(object) != nullptr) {
        if (auto* const observer = observerOf<QtMenuBarObserver>(object)) {
            observer->countUsageAt(position, Events::clicked());
        }
    }
}

void QtWidgetsCoverageTracker::handleShow(QWidget* widget) {
    const QPointer<QWidget> guard(widget);
    const bool hasItems =
        qobject_cast<QMenu*>(widget) != nullptr || qobject_cast<QMenuBar*>(widget) != nullptr;
    UIElement* const shown = trackWidget(widget);
    shown->increaseUsage(Events::shown());
    if (hasItems) {
        shown->increaseUsageOfChildren(Events::shown());
    }
    if (takeScreenshotsOfElements() && !guard.isNull()) {
        takeScreenshot(widget);
    }
}

void QtWidgetsCoverageTracker::takeScreenshot(QWidget* widget) {
    const QPointer<QWidget> guard(widget);
    const QImage image = grabWidget(widget, QRect(QPoint(0, 0), QSize(-1, -1)));
    // The application's paint code has run: the widget may be gone, so everything is looked up
    // anew.
    UIElement* const shown = guard.isNull() ? nullptr : element(widget);
    if (shown == nullptr) {
        return;
    }
    if (image.isNull()) {
        logWarning("Failed to grab widget: '%s'.", shown->text().toLocal8Bit().constData());
    }
    // A null picture is stored as well: whoever reads the stream sees that there is none.
    shown->setImage(image);
    if (auto* const menuObserver = observerOf<QtMenuObserver>(widget)) {
        menuObserver->grabActionImages();
    } else if (auto* const menuBarObserver = observerOf<QtMenuBarObserver>(widget)) {
        menuBarObserver->grabActionImages();
    }
}

UIElement* QtWidgetsCoverageTracker::trackWidget(QObject* widget) {
    // Laying a menu out asks the application's code for sizes, and the widget may not survive that:
    // a dead one matches no further row.
    const QPointer<QObject> guard(widget);
    UIElement* known = element(widget);
    // Every row is run for every widget; the last one gives back what any row has made.
    known = trackWidgetAs<QMenuBar, QtMenuBarObserver>(guard, known, StandardTypes::menuBar());
    known = trackWidgetAs<QMenu, QtMenuObserver>(guard, known, StandardTypes::menu());
    known = trackWidgetAs<QCheckBox, QtCheckBoxObserver>(guard, known, StandardTypes::checkBox());
    // Push buttons only: the types that this extension tells apart are fixed, and tool buttons,
    // radio buttons and others are not among them.
    known =
        trackWidgetAs<QPushButton, QtAbstractButtonObserver>(guard, known, StandardTypes::button());
    known = trackWidgetAs<QLineEdit, QtLineEditObserver>(guard, known, StandardTypes::textInput());
    known = trackWidgetAs<QTableView, QtTableViewObserver>(guard, known, StandardTypes::table());
    known = trackWidgetAs<QMainWindow, QtMainWindowObserver>(guard, known, StandardTypes::window());
    known = trackWidgetAs<QDialog, QtDialogObserver>(guard, known, StandardTypes::dialog());
    known = trackWidgetAs<QToolBar, QtToolBarObserver>(guard, known, StandardTypes::toolBar());
    if (known != nullptr) {
        return known;
    }
    UIElement* const generic = createGenericElement(widget, StandardType());
    generic->registerEvent(Events::shown());
    connectToParent(widget);
    return generic;
}

template <class Widget, class Observer>
UIElement* QtWidgetsCoverageTracker::trackWidgetAs(const QPointer<QObject>& widget,
                                                   UIElement* known,
                                                   const StandardType& standardType) {
    auto* const matching = qobject_cast<Widget*>(widget.data());
    if (matching == nullptr) {
        return known;
    }
    UIElement* tracked = known;
    if (tracked == nullptr) {
        tracked = makeElement(widget, standardType);
        tracked->registerEvent(Events::shown());
        elementStore().addMapping(widget, tracked);
        connectToParent(widget);
        if (widget.isNull()) {
            return tracked;
        }
    }
    // Announced each time, also when nothing changes.
    tracked->setTransparentNode(tracked->isTransparentNode() && !matching->isVisible());
    if (!matching->isVisible() || m_observers.hasObserver(tracked)) {
        return tracked;
    }
    auto* const observer = new Observer(matching, tracked, this);
    if (observer->observedObject() == nullptr) {
        delete observer;
    } else {
        m_observers.addObserver(tracked, observer);
    }
    return tracked;
}

UIElement* QtWidgetsCoverageTracker::createGenericElement(QObject* widget,
                                                          const StandardType& standardType) {
    if (UIElement* const known = element(widget)) {
        return known;
    }
    UIElement* const generic = makeElement(widget, standardType);
    generic->setTransparentNode(true);
    elementStore().addMapping(widget, generic);
    return generic;
}

void QtWidgetsCoverageTracker::connectToParent(QObject* object) {
    QObject* const parent = object->parent();
    if (parent == nullptr) {
        return;
    }
    trackWidget(parent);
    UIElement* const child = element(object);
    UIElement* const parentElement = element(parent);
    if (child == nullptr || parentElement == nullptr || !child->isRoot()) {
        return;
    }
    parentElement->addChild(child);
}

void QtWidgetsCoverageTracker::trackChildWidgets(QWidget* widget) {
    UIElement* const parentElement = element(widget);
    // Guards: tracking one child may run code that deletes the next.
    QVector<QPointer<QWidget>> children;
    for (QObject* object : widget->children()) {
        if (auto* const child = qobject_cast<QWidget*>(object)) {
            children.append(child);
        }
    }
    for (const QPointer<QWidget>& child : qAsConst(children)) {
        if (child.isNull()) {
            continue;
        }
        const QByteArray name = child->objectName().toLocal8Bit();
        if (child->isHidden()) {
            qDebug("skipping hidden '%s'", name.constData());
            continue;
        }
        qDebug("handling '%s'", name.constData());
        if (element(child) == nullptr) {
            UIElement* const childElement = trackWidget(child);
            if (parentElement != nullptr) {
                parentElement->addChild(childElement);
            }
        }
        if (!child.isNull()) {
            trackChildWidgets(child);
        }
    }
}

} // namespace UICoverage
} // namespace Vorsk
