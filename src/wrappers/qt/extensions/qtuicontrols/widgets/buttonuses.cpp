// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/buttonuses.h"

#include "qtuicontrols/widgets/buttonrelations.h"
#include "qtuicontrols/widgets/usecounter.h"
#include "qtuicontrols/widgets/widgetrole.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

namespace Vorsk {
namespace UIControls {

using Cause = Attribution::Cause;
using UICoverage::methodNumber;

namespace {

/** Whether a press brings up a menu and nothing else. */
bool opensMenuAtPress(const QAbstractButton* button) {
    const auto* const tool = qobject_cast<const QToolButton*>(button);
    if (tool == nullptr) {
        return menuOf(button) != nullptr;
    }
    return tool->popupMode() == QToolButton::InstantPopup &&
           (menuOf(button) != nullptr || !tool->actions().isEmpty());
}

/** Whether a press that is held brings up a menu later. */
bool opensMenuWhileHeld(const QAbstractButton* button) {
    const auto* const tool = qobject_cast<const QToolButton*>(button);
    return tool != nullptr && tool->popupMode() == QToolButton::DelayedPopup &&
           (menuOf(button) != nullptr || !tool->actions().isEmpty());
}

/** A tool button may stand for a command. */
bool isButton(ElementType type) {
    return type == ElementType::Button || type == ElementType::RadioButton ||
           type == ElementType::CheckBox || type == ElementType::Switch ||
           type == ElementType::Tab; // that of a tool box
}

Use useOf(const QAbstractButton* button) {
    if (!button->isCheckable()) {
        return Use::Clicked;
    }
    const auto* const box = qobject_cast<const QCheckBox*>(button);
    if (box != nullptr && box->checkState() == Qt::PartiallyChecked) {
        return Use::PartiallyChecked;
    }
    return button->isChecked() ? Use::Checked : Use::Unchecked;
}

} // namespace

ButtonUses::ButtonUses(UseCounter& counter)
    : m_counter(counter) {}

Uses ButtonUses::usesOf(const QWidget* widget, ElementType type) {
    if (type == ElementType::GroupBox) {
        return {Use::Checked, Use::Unchecked};
    }
    const auto* const button = qobject_cast<const QAbstractButton*>(widget);
    if (button == nullptr || !button->isCheckable()) {
        return {Use::Clicked};
    }
    const auto* const box = qobject_cast<const QCheckBox*>(button);
    if (box != nullptr && box->isTristate()) {
        return {Use::Checked, Use::Unchecked, Use::PartiallyChecked};
    }
    // One of several goes off by another's going on.
    return isExclusive(button) ? Uses{Use::Checked} : Uses{Use::Checked, Use::Unchecked};
}

void ButtonUses::connectTo(QWidget* control) {
    static const QMetaObject& cls = QAbstractButton::staticMetaObject;
    static const int pressedSignal = methodNumber(cls, "pressed()");
    static const int releasedSignal = methodNumber(cls, "released()");
    static const int clickedSignal = methodNumber(cls, "clicked(bool)");
    static const int toggledSignal = methodNumber(cls, "toggled(bool)");
    static const int groupSignal = methodNumber(QGroupBox::staticMetaObject, "clicked(bool)");
    static const int menuSignal = methodNumber(QMenu::staticMetaObject, "aboutToShow()");
    static const int pressedSlot = methodNumber(staticMetaObject, "pressed()");
    static const int releasedSlot = methodNumber(staticMetaObject, "released()");
    static const int clickedSlot = methodNumber(staticMetaObject, "clicked()");
    static const int toggledSlot = methodNumber(staticMetaObject, "toggled()");
    static const int groupSlot = methodNumber(staticMetaObject, "groupClicked()");
    static const int menuSlot = methodNumber(staticMetaObject, "menuShows()");

    if (qobject_cast<QGroupBox*>(control) != nullptr) {
        m_counter.connections().connect(control, groupSignal, this, groupSlot);
        return;
    }
    const auto* const button = qobject_cast<QAbstractButton*>(control);
    if (button == nullptr) {
        return;
    }
    m_counter.connections().connect(button, pressedSignal, this, pressedSlot);
    m_counter.connections().connect(button, releasedSignal, this, releasedSlot);
    m_counter.connections().connect(button, clickedSignal, this, clickedSlot);
    if (button->isCheckable()) {
        m_counter.connections().connect(button, toggledSignal, this, toggledSlot);
    }
    if (const QMenu* const menu = menuOf(button)) {
        m_counter.connections().connect(menu, menuSignal, this, menuSlot);
    }
}

void ButtonUses::expectOthers(QWidget* receiver, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const QList<QAbstractButton*> others =
            buttonsReachedByKey(receiver, static_cast<QKeyEvent*>(event)->key());
        for (QAbstractButton* const button : others) {
            connectTo(button);
        }
    } else if (event->type() == QEvent::Shortcut) {
        const auto* const label = qobject_cast<QLabel*>(receiver);
        if (label != nullptr && label->buddy() != nullptr) {
            connectTo(label->buddy());
        }
    }
}

void ButtonUses::endPress() {
    if (!m_repeating.isNull()) {
        m_counter.attribution().disarm(m_repeating);
        m_repeating = nullptr;
    }
}

/** Whether input to something else than the button is meant to click it. */
bool ButtonUses::isReached(const QAbstractButton* button) const {
    const Attribution::Verdict verdict = m_counter.attribution().verdict();
    auto* const receiver = qobject_cast<QWidget*>(verdict.receiver);
    if (verdict.cause != Cause::Input || receiver == nullptr) {
        return false;
    }
    if (verdict.type == QEvent::KeyPress) {
        return isReachedByKey(button, receiver, m_counter.gesture().key());
    }
    const auto* const label = qobject_cast<QLabel*>(receiver);
    return verdict.type == QEvent::Shortcut && label != nullptr && label->buddy() == button;
}

bool ButtonUses::isOperated(QAbstractButton* button) const {
    return m_counter.controlOf(button) == button && isButton(m_counter.typeOf(button)) &&
           (m_counter.isOperated(button) || isReached(button));
}

void ButtonUses::pressed() {
    auto* const button = qobject_cast<QAbstractButton*>(sender());
    if (button == nullptr || !isOperated(button)) {
        m_shown.remove(button);
        return;
    }
    const Attribution::Verdict verdict = m_counter.attribution().verdict();
    if (verdict.type == QEvent::Shortcut || verdict.cause == Cause::Accessibility ||
        isReached(button)) {
        // A timer will click it.
        m_counter.attribution().arm(button);
    } else if (verdict.cause == Cause::Input &&
               (button->autoRepeat() || opensMenuWhileHeld(button))) {
        m_counter.attribution().arm(button);
        m_repeating = button;
    }
    // The menu has run already where the button has shown it by itself.
    if (opensMenuAtPress(button) && !m_shown.remove(button)) {
        m_counter.count(button, Use::Clicked);
    }
}

void ButtonUses::released() {
    auto* const button = qobject_cast<QAbstractButton*>(sender());
    if (button == nullptr) {
        return;
    }
    const QEvent::Type type = m_counter.attribution().verdict().type;
    const bool isLeft = type == QEvent::MouseMove; // the mouse is no longer on the button
    const bool isCancelled = type == QEvent::KeyPress &&
                             m_counter.gesture().key() == Qt::Key_Escape && !isReached(button);
    if (isLeft || isCancelled || !isOperated(button)) {
        return;
    }
    // Here and not at clicked(): the application does there what takes long, or is the end of the
    // button.
    m_counted.insert(button);
    count(button);
}

void ButtonUses::clicked() {
    auto* const button = qobject_cast<QAbstractButton*>(sender());
    if (button == nullptr) {
        return;
    }
    // Classes that click by themselves may leave released() out.
    if (!m_counted.remove(button) && isOperated(button)) {
        count(button);
    }
    if (m_repeating != button) {
        m_counter.attribution().disarm(button);
    }
}

/** An accessibility client toggles without a click. */
void ButtonUses::toggled() {
    auto* const button = qobject_cast<QAbstractButton*>(sender());
    if (button != nullptr && m_counter.attribution().verdict().cause == Cause::Accessibility &&
        isOperated(button)) {
        count(button);
    }
}

void ButtonUses::groupClicked() {
    auto* const box = qobject_cast<QGroupBox*>(sender());
    const Attribution::Verdict verdict = m_counter.attribution().verdict();
    if (box == nullptr || (verdict.cause == Cause::Input && verdict.receiver != box)) {
        return;
    }
    m_counter.countOperated(box, box->isChecked() ? Use::Checked : Use::Unchecked);
}

void ButtonUses::menuShows() {
    const QObject* const menu = sender();
    auto* const button = qobject_cast<QAbstractButton*>(m_counter.attribution().verdict().receiver);
    if (button != nullptr && menuOf(button) == menu && isOperated(button)) {
        if (opensMenuAtPress(button)) {
            m_shown.insert(button);
        }
        m_counter.count(button, Use::Clicked);
    }
}

void ButtonUses::count(QAbstractButton* button) {
    m_counter.count(button,
                    m_counter.typeOf(button) == ElementType::Tab ? Use::Chosen : useOf(button));
}

} // namespace UIControls
} // namespace Vorsk
