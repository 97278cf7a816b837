// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/valueuses.h"

#include "qtuicontrols/widgets/usecounter.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QMetaProperty>

namespace Vorsk {
namespace UIControls {

using UICoverage::methodNumber;

ValueUses::ValueUses(UseCounter& counter)
    : m_counter(counter) {}

Uses ValueUses::usesOf(ElementType type) {
    return type == ElementType::SpinBox ? Uses{Use::Changed} : Uses{Use::Moved};
}

void ValueUses::expect(QWidget* control, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        // It repeats its step by a timer as long as it is pressed.
        m_counter.attribution().arm(control);
        m_repeating = control;
    }
}

void ValueUses::endPress() {
    if (!m_repeating.isNull()) {
        m_counter.attribution().disarm(m_repeating);
        m_repeating = nullptr;
    }
}

void ValueUses::connectTo(QWidget* control) {
    static const QMetaObject& slider = QAbstractSlider::staticMetaObject;
    static const int valueSignal = methodNumber(slider, "valueChanged(int)");
    static const int movedSignal = methodNumber(slider, "sliderMoved(int)");
    static const int movedSlot = methodNumber(staticMetaObject, "moved()");

    if (qobject_cast<QAbstractSpinBox*>(control) != nullptr) {
        connectToSpinBox(control);
    } else if (qobject_cast<QAbstractSlider*>(control) != nullptr) {
        m_counter.connections().connect(control, valueSignal, this, movedSlot);
        // The value of one without tracking follows at the release.
        m_counter.connections().connect(control, movedSignal, this, movedSlot);
    }
}

void ValueUses::connectToSpinBox(QWidget* control) {
    static const int dateSignal =
        methodNumber(QDateTimeEdit::staticMetaObject, "dateTimeChanged(QDateTime)");
    static const int textSignal = methodNumber(QLineEdit::staticMetaObject, "textChanged(QString)");
    static const int slot = methodNumber(staticMetaObject, "spun()");

    if (qobject_cast<QDateTimeEdit*>(control) != nullptr) {
        m_counter.connections().connect(control, dateSignal, this, slot);
        return;
    }
    const QMetaProperty value = control->metaObject()->userProperty();
    if (value.hasNotifySignal()) {
        m_counter.connections().connect(control, value.notifySignalIndex(), this, slot);
        return;
    }
    // One of the application's own, which says what it is worth in its text alone.
    if (const auto* const line =
            control->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly)) {
        m_counter.connections().connect(line, textSignal, this, slot);
    }
}

void ValueUses::spun() {
    QWidget* const control = m_counter.controlOf(sender());
    if (control != nullptr && m_counter.typeOf(control) == ElementType::SpinBox) {
        m_counter.countOperated(control, Use::Changed);
    }
}

void ValueUses::moved() {
    auto* const slider = qobject_cast<QAbstractSlider*>(sender());
    if (slider != nullptr && m_counter.controlOf(slider) == slider) {
        m_counter.countOperated(slider, Use::Moved);
    }
}

} // namespace UIControls
} // namespace Vorsk
