// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/choiceuses.h"

#include "qtuicontrols/widgets/partelements.h"
#include "qtuicontrols/widgets/usecounter.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QTabBar>
#include <QTabWidget>

namespace Vorsk {
namespace UIControls {

using Cause = Attribution::Cause;
using UICoverage::methodNumber;

namespace {

/** The tab bar that the widget is, or that it shows. */
QTabBar* tabBarOf(const QObject* widget) {
    if (const auto* const tabs = qobject_cast<const QTabWidget*>(widget)) {
        return tabs->tabBar();
    }
    return qobject_cast<QTabBar*>(const_cast<QObject*>(widget));
}

bool isMouse(QEvent::Type type) {
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease ||
           type == QEvent::MouseButtonDblClick || type == QEvent::MouseMove;
}

} // namespace

ChoiceUses::ChoiceUses(UseCounter& counter, PartElements& parts)
    : m_counter(counter)
    , m_parts(parts) {}

Uses ChoiceUses::usesOf(const QWidget* widget) {
    const auto* const box = qobject_cast<const QComboBox*>(widget);
    return box != nullptr && box->isEditable() ? Uses{Use::Chosen, Use::Edited} : Uses{Use::Chosen};
}

void ChoiceUses::connectTo(QWidget* control) {
    static const QMetaObject& calendar = QCalendarWidget::staticMetaObject;
    static const int chosenSignal = methodNumber(QComboBox::staticMetaObject, "activated(int)");
    static const int clickedSignal = methodNumber(calendar, "clicked(QDate)");
    static const int selectedSignal = methodNumber(calendar, "selectionChanged()");
    static const int pageSignal = methodNumber(calendar, "currentPageChanged(int,int)");
    static const int activatedSignal = methodNumber(calendar, "activated(QDate)");
    static const int boxSlot = methodNumber(staticMetaObject, "boxChosen(int)");
    static const int dateSlot = methodNumber(staticMetaObject, "dateChosen()");
    static const int activatedSlot = methodNumber(staticMetaObject, "dateActivated()");

    if (qobject_cast<QComboBox*>(control) != nullptr) {
        m_counter.connections().connect(control, chosenSignal, this, boxSlot);
    } else if (qobject_cast<QCalendarWidget*>(control) != nullptr) {
        m_counter.connections().connect(control, clickedSignal, this, dateSlot);
        m_counter.connections().connect(control, selectedSignal, this, dateSlot);
        m_counter.connections().connect(control, pageSignal, this, dateSlot);
        m_counter.connections().connect(control, activatedSignal, this, activatedSlot);
    }
}

void ChoiceUses::expectTabs(QWidget* receiver) {
    static const QMetaObject& cls = QTabBar::staticMetaObject;
    static const int pressedSignal = methodNumber(cls, "tabBarClicked(int)");
    static const int changedSignal = methodNumber(cls, "currentChanged(int)");
    static const int pressedSlot = methodNumber(staticMetaObject, "tabPressed(int)");
    static const int changedSlot = methodNumber(staticMetaObject, "tabChanged(int)");

    if (const QTabBar* const bar = tabBarOf(receiver)) {
        m_counter.connections().connect(bar, pressedSignal, this, pressedSlot);
        m_counter.connections().connect(bar, changedSignal, this, changedSlot);
    }
}

void ChoiceUses::boxChosen(int row) {
    auto* const box = qobject_cast<QComboBox*>(sender());
    if (box == nullptr || m_counter.controlOf(box) != box || !m_counter.isOperated(box)) {
        return;
    }
    m_counter.count(box, Use::Chosen);
    if (UIElement* const option = m_parts.optionElement(box, row)) {
        m_counter.count(option, Use::Chosen, QRect());
    }
}

void ChoiceUses::dateChosen() {
    m_counter.countOperated(m_counter.controlOf(sender()), Use::Chosen);
}

void ChoiceUses::dateActivated() {
    m_counter.countOperated(m_counter.controlOf(sender()), Use::Activated);
}

bool ChoiceUses::isOperatedTabs(QTabBar* bar) const {
    const Attribution::Verdict verdict = m_counter.attribution().verdict();
    switch (verdict.cause) {
    case Cause::Input:
        return tabBarOf(verdict.receiver) == bar;
    case Cause::Accessibility:
        return m_counter.attribution().isOperatedByClient(bar);
    default:
        return false;
    }
}

/** The one that is current already can be chosen as well. */
void ChoiceUses::tabPressed(int index) {
    auto* const bar = qobject_cast<QTabBar*>(sender());
    if (bar != nullptr && index >= 0 && bar->isTabEnabled(index) &&
        m_counter.gesture().button() == Qt::LeftButton && isOperatedTabs(bar)) {
        countTab(bar, index);
    }
}

void ChoiceUses::tabChanged(int index) {
    auto* const bar = qobject_cast<QTabBar*>(sender());
    // By the mouse another tab becomes current when one is closed or dragged.
    if (bar != nullptr && index >= 0 && !isMouse(m_counter.attribution().verdict().type) &&
        isOperatedTabs(bar)) {
        countTab(bar, index);
    }
}

void ChoiceUses::countTab(QTabBar* bar, int index) {
    if (UIElement* const tab = m_parts.tabElement(bar, index)) {
        m_counter.count(tab, Use::Chosen, UseCounter::placeIn(bar, bar->tabRect(index)));
    }
}

} // namespace UIControls
} // namespace Vorsk
