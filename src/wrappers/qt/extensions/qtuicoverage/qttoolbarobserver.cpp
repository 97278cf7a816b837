// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qttoolbarobserver.h"

#include "qtuicoverage/qtwidgetscoveragetracker.h"

#include <QToolBar>

namespace Vorsk {
namespace UICoverage {

QtToolBarObserver::QtToolBarObserver(QToolBar* toolBar, UIAbstraction::UIElement* element,
                                     QtWidgetsCoverageTracker* tracker)
    : QtWidgetObserver(toolBar, element, tracker) {}

QtToolBarObserver::~QtToolBarObserver() = default;

} // namespace UICoverage
} // namespace Vorsk
