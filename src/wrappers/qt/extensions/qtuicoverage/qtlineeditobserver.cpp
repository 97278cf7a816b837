#include "qtlineeditobserver.h"

#include "names.h"
#include "qtwidgetscoveragetracker.h"

#include <QLineEdit>

namespace Vorsk {
namespace UICoverage {

QtLineEditObserver::QtLineEditObserver(QLineEdit* lineEdit, UIAbstraction::UIElement* element,
                                       QtWidgetsCoverageTracker* tracker)
    : QtWidgetObserver(lineEdit, element, tracker) {
    this->element()->registerEvent(Events::confirmed());
    this->element()->registerEvent(Events::textChanged());
    this->element()->registerEvent(Events::textEdited());
    connect(lineEdit, &QLineEdit::returnPressed, this, &QtLineEditObserver::onReturnPressed);
    connect(lineEdit, &QLineEdit::textChanged, this, &QtLineEditObserver::onTextChanged);
    connect(lineEdit, &QLineEdit::textEdited, this, &QtLineEditObserver::onTextEdited);
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
