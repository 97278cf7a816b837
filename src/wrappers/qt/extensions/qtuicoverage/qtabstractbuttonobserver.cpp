// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtabstractbuttonobserver.h"

#include "qtuicoverage/names.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "tracking/metamethods.h"
#include "tracking/mnemonics.h"

#include <QAbstractButton>

namespace Vorsk {
namespace UICoverage {

QtAbstractButtonObserver::QtAbstractButtonObserver(QAbstractButton* button,
                                                   UIAbstraction::UIElement* element,
                                                   QtWidgetsCoverageTracker* tracker)
    : QtWidgetObserver(button, element, tracker) {
    this->element()->setText(stripMnemonics(button->text()));
    this->element()->registerEvent(Events::clicked());
    static const int signal = methodNumber(QAbstractButton::staticMetaObject, "clicked(bool)");
    static const int slot = methodNumber(staticMetaObject, "buttonClicked()");
    QMetaObject::connect(button, signal, this, slot);
}

QtAbstractButtonObserver::~QtAbstractButtonObserver() = default;

void QtAbstractButtonObserver::buttonClicked() {
    element()->increaseUsage(Events::clicked());
}

} // namespace UICoverage
} // namespace Vorsk
