// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/textuses.h"

#include "qtuicontrols/widgets/usecounter.h"
#include "qtuicontrols/widgets/widgetclass.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace Vorsk {
namespace UIControls {

using Cause = Attribution::Cause;
using UICoverage::methodNumber;

namespace {

/** The line edit that is the control or its editor; null when it has none. */
QLineEdit* lineOf(QWidget* control) {
    if (const auto* const box = qobject_cast<QComboBox*>(control)) {
        return box->lineEdit();
    }
    if (qobject_cast<QAbstractSpinBox*>(control) != nullptr) {
        return control->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
    }
    return qobject_cast<QLineEdit*>(control);
}

/** Whether the widget is the popup of a completer, or lies in one. */
bool isInCompleter(const QObject* receiver) {
    const auto* const widget = qobject_cast<const QWidget*>(receiver);
    return widget != nullptr && widget->window()->parentWidget() == nullptr &&
           widget->window()->focusProxy() != nullptr;
}

} // namespace

TextUses::TextUses(UseCounter& counter)
    : m_counter(counter) {}

Uses TextUses::usesOf(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) != nullptr ? Uses{Use::Edited, Use::Confirmed}
                                                             : Uses{Use::Edited};
}

void TextUses::expect(QWidget* control, QEvent* event) {
    if (event->type() == QEvent::KeyPress && qobject_cast<QKeySequenceEdit*>(control) != nullptr) {
        // It waits a second for further keys.
        m_counter.attribution().arm(control);
    }
}

void TextUses::connectTo(QWidget* control) {
    static const int richSignal = methodNumber(QTextEdit::staticMetaObject, "textChanged()");
    static const int plainSignal = methodNumber(QPlainTextEdit::staticMetaObject, "textChanged()");
    static const int keysSignal =
        methodNumber(QKeySequenceEdit::staticMetaObject, "keySequenceChanged(QKeySequence)");
    static const int bodySlot = methodNumber(staticMetaObject, "bodyChanged()");
    static const int keysSlot = methodNumber(staticMetaObject, "keysChanged()");

    if (qobject_cast<QTextEdit*>(control) != nullptr) {
        m_counter.connections().connect(control, richSignal, this, bodySlot);
    } else if (qobject_cast<QPlainTextEdit*>(control) != nullptr) {
        m_counter.connections().connect(control, plainSignal, this, bodySlot);
    } else if (qobject_cast<QKeySequenceEdit*>(control) != nullptr) {
        m_counter.connections().connect(control, keysSignal, this, keysSlot);
    } else if (classOf(control) == WidgetClass::OwnEditor) {
        m_counter.connections().connect(
            control, methodNumber(*control->metaObject(), "textChanged()"), this, bodySlot);
    } else if (QLineEdit* const line = lineOf(control)) {
        connectToLine(line);
    }
}

void TextUses::connectToLine(QWidget* line) {
    static const QMetaObject& cls = QLineEdit::staticMetaObject;
    static const int editedSignal = methodNumber(cls, "textEdited(QString)");
    static const int changedSignal = methodNumber(cls, "textChanged(QString)");
    static const int confirmedSignal = methodNumber(cls, "returnPressed()");
    static const int editedSlot = methodNumber(staticMetaObject, "lineEdited()");
    static const int changedSlot = methodNumber(staticMetaObject, "lineChanged()");
    static const int confirmedSlot = methodNumber(staticMetaObject, "lineConfirmed()");

    m_counter.connections().connect(line, editedSignal, this, editedSlot);
    m_counter.connections().connect(line, changedSignal, this, changedSlot);
    m_counter.connections().connect(line, confirmedSignal, this, confirmedSlot);
}

void TextUses::lineEdited() {
    QWidget* const control = m_counter.controlOf(sender());
    if (control == nullptr || !m_counter.isOperated(control)) {
        return;
    }
    switch (m_counter.typeOf(control)) {
    case ElementType::TextInput:
    case ElementType::ComboBox:
        m_counter.count(control, Use::Edited);
        break;
    case ElementType::SpinBox:
        // The value may follow only when the focus goes.
        m_counter.count(control, Use::Changed);
        break;
    default:
        break;
    }
}

/** What a completer puts into the text is not told as edited. */
void TextUses::lineChanged() {
    const Attribution::Verdict verdict = m_counter.attribution().verdict();
    QWidget* const control = m_counter.controlOf(sender());
    if (control == nullptr) {
        return;
    }
    if (verdict.cause == Cause::Input ? !isInCompleter(verdict.receiver)
                                      : verdict.cause != Cause::Accessibility) {
        return;
    }
    if (m_counter.typeOf(control) == ElementType::TextInput ||
        m_counter.typeOf(control) == ElementType::ComboBox) {
        m_counter.countOperated(control, Use::Edited);
    }
}

void TextUses::lineConfirmed() {
    QWidget* const control = m_counter.controlOf(sender());
    if (control != nullptr && m_counter.typeOf(control) == ElementType::TextInput) {
        m_counter.countOperated(control, Use::Confirmed);
    }
}

void TextUses::bodyChanged() {
    QWidget* const control = m_counter.controlOf(sender());
    if (control == nullptr || control != sender()) {
        return;
    }
    const Attribution::Verdict verdict = m_counter.attribution().verdict();
    switch (verdict.type) {
    case QEvent::InputMethod:
        // What is being composed is no edit, but is told as a change.
        if (!m_counter.gesture().isCommitted()) {
            return;
        }
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        // The selection is pasted by the middle button, all else by a menu.
        if (m_counter.gesture().button() != Qt::MiddleButton &&
            qobject_cast<QMenu*>(verdict.receiver) == nullptr) {
            return;
        }
        break;
    case QEvent::Wheel: // changes the size of the letters
    case QEvent::MouseMove:
        return;
    default:
        break;
    }
    m_counter.countOperated(control, Use::Edited);
}

void TextUses::keysChanged() {
    auto* const edit = qobject_cast<QKeySequenceEdit*>(sender());
    if (edit != nullptr) {
        m_counter.countOperated(edit, Use::Edited);
        m_counter.attribution().disarm(edit);
    }
}

} // namespace UIControls
} // namespace Vorsk
