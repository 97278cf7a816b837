// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtlineeditobserver.h"

#include "qtuicoverage/names.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "tracking/metamethods.h"

#include <QLineEdit>

namespace Vorsk {
namespace UICoverage {

QtLineEditObserver::QtLineEditObserver(QLineEdit* lineEdit, UIAbstraction::UIElement* element,
                                       QtWidgetsCoverageTracker* tracker)
    : QtWidgetObserver(lineEdit, element, tracker) {
    this->element()->registerEvent(Events::confirmed());
    this->element()->registerEvent(Events::textChanged());
    this->element()->registerEvent(Events::textEdited());
    const QMetaObject& ours = staticMetaObject;
    const QMetaObject& theirs = QLineEdit::staticMetaObject;
    static const int returnPressed = methodNumber(theirs, "returnPressed()");
    static const int textChanged = methodNumber(theirs, "textChanged(QString)");
    static const int textEdited = methodNumber(theirs, "textEdited(QString)");
    static const int returnPressedSlot = methodNumber(ours, "onReturnPressed()");
    static const int textChangedSlot = methodNumber(ours, "onTextChanged()");
    static const int textEditedSlot = methodNumber(ours, "onTextEdited()");
    QMetaObject::connect(lineEdit, returnPressed, this, returnPressedSlot);
    QMetaObject::connect(lineEdit, textChanged, this, textChangedSlot);
    QMetaObject::connect(lineEdit, textEdited, this, textEditedSlot);
}

QtLineEditObserver::~QtLineEditObserver() = default;

void QtLineEditObserver::onReturnPressed() {
    element()->increaseUsage(Events::confirmed());
}

void QtLineEditObserver::onTextChanged() {
    element()->increaseUsage(Events::textChanged());
}

void QtLineEditObserver::onTextEdited() {
    element()->increaseUsage(Events::textEdited());
}

} // namespace UICoverage
} // namespace Vorsk
