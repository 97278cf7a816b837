// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtmainwindowobserver.h"

#include "qtuicoverage/qtwidgetscoveragetracker.h"

#include <QMainWindow>

namespace Vorsk {
namespace UICoverage {

QtMainWindowObserver::QtMainWindowObserver(QMainWindow* mainWindow,
                                           UIAbstraction::UIElement* element,
                                           QtWidgetsCoverageTracker* tracker)
    : QtWidgetObserver(mainWindow, element, tracker) {
    this->element()->setWindowNode(true);
    this->element()->setText(mainWindow->windowTitle());
}

QtMainWindowObserver::~QtMainWindowObserver() = default;

} // namespace UICoverage
} // namespace Vorsk
