// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qttableviewobserver.h"

#include "qtuicoverage/qtwidgetscoveragetracker.h"

#include <QTableView>

namespace Vorsk {
namespace UICoverage {

QtTableViewObserver::QtTableViewObserver(QTableView* view, UIAbstraction::UIElement* element,
                                         QtWidgetsCoverageTracker* tracker)
    : QtAbstractItemViewObserver(view, element, tracker) {}

QtTableViewObserver::~QtTableViewObserver() = default;

} // namespace UICoverage
} // namespace Vorsk
