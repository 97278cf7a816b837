// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtdialogobserver.h"

#include "qtuicoverage/qtwidgetscoveragetracker.h"

#include <QDialog>

namespace Vorsk {
namespace UICoverage {

QtDialogObserver::QtDialogObserver(QDialog* dialog, UIAbstraction::UIElement* element,
                                   QtWidgetsCoverageTracker* tracker)
    : QtWidgetObserver(dialog, element, tracker) {
    this->element()->setWindowNode(true);
    this->element()->setText(dialog->windowTitle());
}

QtDialogObserver::~QtDialogObserver() = default;

} // namespace UICoverage
} // namespace Vorsk
