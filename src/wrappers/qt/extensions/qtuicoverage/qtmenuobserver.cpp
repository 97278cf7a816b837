// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtmenuobserver.h"

#include "qtuicoverage/qtwidgetscoveragetracker.h"

#include <QAction>
#include <QMenu>

namespace Vorsk {
namespace UICoverage {

namespace {

const ActionElements::WidgetCalls calls = {
    [](QWidget* widget, QAction* action) {
        return static_cast<QMenu*>(widget)->actionGeometry(action);
    },
    [](QWidget* widget, const QPoint& position) {
        return static_cast<QMenu*>(widget)->actionAt(position);
    },
};

} // namespace

QtMenuObserver::QtMenuObserver(QMenu* menu, UIAbstraction::UIElement* element,
                               QtWidgetsCoverageTracker* tracker)
    : QtWidgetObserver(menu, element, tracker)
    , m_items(this, tracker, calls) {
    const QPointer<QMenu> guard(menu);
    this->element()->setWindowNode(true);
    m_items.createElements([this](QAction* action) { addActionToObserve(action); });
    if (guard.isNull()) {
        return;
    }
    connect(menu, &QMenu::triggered, this, &QtMenuObserver::actionTriggered);
}

QtMenuObserver::~QtMenuObserver() = default;

void QtMenuObserver::countUsageAt(const QPoint& position, const UIAbstraction::UIEvent& event) {
    m_items.countUsageAt(position, event);
}

void QtMenuObserver::grabActionImages() {
    m_items.grabImages();
}

void QtMenuObserver::addActionToObserve(QAction* action) {
    m_items.addObserved(action);
    connect(action, &QObject::destroyed, this, &QtMenuObserver::actionDestroyed);
}

void QtMenuObserver::actionDestroyed(QObject* object) {
    // By the time an action says that it is destroyed it is no QAction any more, so the cast fails
    // and its address stays observed. That is harmless: addresses are only compared, and a menu
    // item looks its action up before it counts.
    if (auto* const action = qobject_cast<QAction*>(object)) {
        m_items.removeObserved(action);
    }
}

void QtMenuObserver::actionTriggered(QAction* action) {
    m_items.countTriggered(action, tracker()->element(qobject_cast<QMenu*>(sender())));
}

} // namespace UICoverage
} // namespace Vorsk
