// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtcheckboxobserver.h"

#include "qtuicoverage/names.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "tracking/metamethods.h"

#include <QCheckBox>

namespace Vorsk {
namespace UICoverage {

QtCheckBoxObserver::QtCheckBoxObserver(QCheckBox* checkBox, UIAbstraction::UIElement* element,
                                       QtWidgetsCoverageTracker* tracker)
    : QtAbstractButtonObserver(checkBox, element, tracker) {
    this->element()->registerEvent(Events::checked());
    this->element()->registerEvent(Events::unchecked());
    if (checkBox->isTristate()) {
        this->element()->registerEvent(Events::partiallyChecked());
    }
    static const int signal = methodNumber(QCheckBox::staticMetaObject, "stateChanged(int)");
    static const int slot = methodNumber(staticMetaObject, "checkBoxChangedState(int)");
    QMetaObject::connect(checkBox, signal, this, slot);
}

QtCheckBoxObserver::~QtCheckBoxObserver() = default;

void QtCheckBoxObserver::checkBoxChangedState(int state) {
    // "unchecked" stays at zero: it is registered as a possible event, and what counts of a check
    // box is fixed for those who read the stream.
    if (state == Qt::PartiallyChecked) {
        element()->increaseUsage(Events::partiallyChecked());
    } else if (state == Qt::Checked) {
        element()->increaseUsage(Events::checked());
    }
}

} // namespace UICoverage
} // namespace Vorsk
