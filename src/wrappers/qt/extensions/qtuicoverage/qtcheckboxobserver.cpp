#include "qtcheckboxobserver.h"

#include "names.h"
#include "qtwidgetscoveragetracker.h"

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
    connect(checkBox, &QCheckBox::stateChanged, this, &QtCheckBoxObserver::checkBoxChangedState);
}

QtCheckBoxObserver::~QtCheckBoxObserver() = default;

void QtCheckBoxObserver::checkBoxChangedState(int state) {
    // Getting unchecked raises no count, and that is intended: "unchecked" stays at zero.
    if (state == Qt::PartiallyChecked) {
        element()->increaseUsage(Events::partiallyChecked());
    } else if (state == Qt::Checked) {
        element()->increaseUsage(Events::checked());
    }
}

} // namespace UICoverage
} // namespace Vorsk
