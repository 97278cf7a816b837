// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtmenubarobserver.h"

#include "qtuicoverage/qtwidgetscoveragetracker.h"

#include <QAction>
#include <QMenuBar>

namespace Vorsk {
namespace UICoverage {

namespace {

const ActionElements::WidgetCalls calls = {
    [](QWidget* widget, QAction* action) {
        return static_cast<QMenuBar*>(widget)->actionGeometry(action);
    },
    [](QWidget* widget, const QPoint& position) {
        return static_cast<QMenuBar*>(widget)->actionAt(position);
    },
};

} // namespace

QtMenuBarObserver::QtMenuBarObserver(QMenuBar* menuBar, UIAbstraction::UIElement* element,
                                     QtWidgetsCoverageTracker* tracker)
    : QtWidgetObserver(menuBar, element, tracker)
    , m_items(this, tracker, calls) {
    const QPointer<QMenuBar> guard(menuBar);
    m_items.createElements([this](QAction* action) { addActionToObserve(action); });
    if (guard.isNull()) {
        return;
    }
    connect(menuBar, SIGNAL(triggered(QAction*)), this, SLOT(actionTriggered(QAction*)));
}

QtMenuBarObserver::~QtMenuBarObserver() = default;

void QtMenuBarObserver::countUsageAt(const QPoint& position, const UIAbstraction::UIEvent& event) {
    m_items.countUsageAt(position, event);
}

void QtMenuBarObserver::grabActionImages() {
    m_items.grabImages();
}

void QtMenuBarObserver::addActionToObserve(QAction* action) {
    m_items.addObserved(action);
    connect(action, SIGNAL(destroyed(QObject*)), this, SLOT(actionDestroyed(QObject*)));
}

void QtMenuBarObserver::actionDestroyed(QObject* object) {
    // By the time an action says that it is destroyed it is no QAction any more, so the cast fails
    // and its address stays observed. That is harmless: addresses are only compared, and a menu
    // item looks its action up before it counts.
    if (auto* const action = qobject_cast<QAction*>(object)) {
        m_items.removeObserved(action);
    }
}

void QtMenuBarObserver::actionTriggered(QAction* action) {
    m_items.countTriggered(action, tracker()->element(qobject_cast<QMenuBar*>(sender())));
}

} // namespace UICoverage
} // namespace Vorsk
