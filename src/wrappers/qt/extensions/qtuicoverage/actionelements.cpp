// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/actionelements.h"

#include "qtuicoverage/names.h"
#include "qtuicoverage/qtwidgetobserver.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "tracking/abstractuielementexporter.h"
#include "tracking/classname.h"
#include "tracking/grab.h"
#include "tracking/logging.h"
#include "tracking/mnemonics.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QVector>
#include <QWidget>

#include <algorithm>

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::ElementGeometry;
using UIAbstraction::StandardType;
using UIAbstraction::UIElement;
using UIAbstraction::UIEvent;

namespace {

/** The widget's actions as guards: what runs between two of them may delete the next one. */
QVector<QPointer<QAction>> guardedActions(const QWidget* widget) {
    const QList<QAction*> actions = widget->actions();
    QVector<QPointer<QAction>> guarded;
    guarded.reserve(actions.size());
    for (QAction* action : actions) {
        guarded.append(action);
    }
    return guarded;
}

} // namespace

ActionElements::ActionElements(QtWidgetObserver* observer, QtWidgetsCoverageTracker* tracker,
                               const WidgetCalls& calls)
    : m_observer(observer)
    , m_tracker(tracker)
    , m_calls(calls) {
    if (tracker->exporter() != nullptr) {
        tracker->exporter()->addElementStore(&m_store);
    }
}

void ActionElements::createElements(const std::function<void(QAction*)>& observe) {
    const QVector<QPointer<QAction>> actions = guardedActions(m_observer->widget());
    for (const QPointer<QAction>& action : actions) {
        if (!action.isNull() && !action->isSeparator() && m_observer->widget() != nullptr) {
            createElement(action, observe);
        }
    }
}

void ActionElements::createElement(QAction* action, const std::function<void(QAction*)>& observe) {
    const QPointer<QAction> guard(action);
    // Everything about the item stands in the record of its addition, so it is set before that.
    auto* const item = new UIElement(className(action), StandardTypes::menuItem(), QString());
    item->registerEvent(Events::clicked());
    item->registerEvent(Events::shown());
    item->setText(stripMnemonics(action->text()));
    // Laying the actions out runs the application's style.
    const QRect rectangle = m_calls.actionGeometry(m_observer->widget(), action);
    if (guard.isNull() || m_observer->widget() == nullptr) {
        delete item;
        return;
    }
    item->setGeometry(ElementGeometry(rectangle, true));
    m_store.addMapping(action, item);
    observe(action);
    m_observer->element()->addChild(item);
    if (QMenu* const menu = action->menu()) {
        UIElement* const menuElement = m_tracker->createGenericElement(menu, StandardTypes::menu());
        menuElement->registerEvent(Events::shown());
        item->addChild(menuElement);
    }
}

void ActionElements::addObserved(QAction* action) {
    m_observedActions.insert(action);
}

void ActionElements::removeObserved(QAction* action) {
    m_observedActions.remove(action);
}

bool ActionElements::isAlive(QAction* action) {
    if (m_store.elementForObject(action) != nullptr) {
        return true;
    }
    // The action that was observed at this address is gone. A new one can have taken its place;
    // then some widget offers it.
    const QWidgetList widgets = QApplication::allWidgets();
    return std::any_of(widgets.cbegin(), widgets.cend(), [action](const QWidget* widget) {
        return widget->actions().contains(action);
    });
}

void ActionElements::countTriggered(QAction* action, UIElement* senderElement) {
    // A menu also emits triggered() for the actions of its sub-menus; those have observers of their
    // own.
    if (!m_observedActions.contains(action) || !isAlive(action)) {
        return;
    }
    const QString text = stripMnemonics(action->text());
    UIElement* child = nullptr;
    if (senderElement != nullptr) {
        // Items with equal text cannot be told apart in the element tree, so the first one counts.
        child = senderElement->findChild(text, StandardTypes::menuItem());
        if (child != nullptr) {
            child->increaseUsage(Events::clicked());
            return;
        }
        child = senderElement->findChild(text, StandardType());
    }
    if (child != nullptr) {
        logWarning("Action is registered as %s -- not handled, yet",
                   child->standardType().toString().toLocal8Bit().constData());
    } else {
        logWarning("Unregistered child %s encounted", action->text().toLocal8Bit().constData());
    }
}

void ActionElements::countUsageAt(const QPoint& position, const UIEvent& event) {
    const QPointer<QtWidgetObserver> observer(m_observer);
    QAction* const action = m_calls.actionAt(m_observer->widget(), position);
    if (observer.isNull()) {
        return;
    }
    if (action == nullptr) {
        logWarning("No action at given position: (%d,%d)", position.x(), position.y());
        return;
    }
    if (UIElement* const item = m_store.elementForObject(action)) {
        item->increaseUsage(event);
    } else {
        logWarning("Unregistered action occurred: { text='%s' }",
                   action->text().toLocal8Bit().constData());
    }
}

void ActionElements::grabImages() {
    // Grabbing runs the application's paint code, which may delete actions, the menu and so this
    // object.
    const QPointer<QtWidgetObserver> observer(m_observer);
    const QVector<QPointer<QAction>> actions = guardedActions(m_observer->widget());
    for (const QPointer<QAction>& action : actions) {
        if (action.isNull()) {
            continue;
        }
        if (m_store.elementForObject(action) == nullptr) {
            logWarning("Tried to grab unregistered action: '%s'",
                       action->text().toLocal8Bit().constData());
            continue;
        }
        const QRect rectangle = m_calls.actionGeometry(m_observer->widget(), action);
        if (observer.isNull() || observer->widget() == nullptr) {
            return;
        }
        const QImage image = grabWidget(m_observer->widget(), rectangle);
        if (observer.isNull() || observer->widget() == nullptr) {
            return;
        }
        if (UIElement* const item = action.isNull() ? nullptr : m_store.elementForObject(action)) {
            item->setImage(image);
        }
    }
}

} // namespace UICoverage
} // namespace Vorsk
