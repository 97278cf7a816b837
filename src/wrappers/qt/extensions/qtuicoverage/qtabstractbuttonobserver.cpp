#include "qtabstractbuttonobserver.h"

#include "mnemonics.h"
#include "names.h"
#include "qtwidgetscoveragetracker.h"

#include <QAbstractButton>

namespace Vorsk {
namespace UICoverage {

QtAbstractButtonObserver::QtAbstractButtonObserver(QAbstractButton* button,
                                                   UIAbstraction::UIElement* element,
                                                   QtWidgetsCoverageTracker* tracker)
    : QtWidgetObserver(button, element, tracker) {
    this->element()->setText(stripMnemonics(button->text()));
    this->element()->registerEvent(Events::clicked());
    connect(button, &QAbstractButton::clicked, this, &QtAbstractButtonObserver::buttonClicked);
}

QtAbstractButtonObserver::~QtAbstractButtonObserver() = default;

void QtAbstractButtonObserver::buttonClicked() {
    element()->increaseUsage(Events::clicked());
}

} // namespace UICoverage
} // namespace Vorsk
