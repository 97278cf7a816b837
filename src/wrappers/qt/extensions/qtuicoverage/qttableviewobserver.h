// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicoverage/qtabstractitemviewobserver.h"

QT_BEGIN_NAMESPACE
class QTableView;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

class QtWidgetsCoverageTracker;

/** Watches one table view, as any item view is watched. */
class QtTableViewObserver : public QtAbstractItemViewObserver {
    Q_OBJECT

public:
    QtTableViewObserver(QTableView* view, UIAbstraction::UIElement* element,
                        QtWidgetsCoverageTracker* tracker);
    ~QtTableViewObserver() override;
};

} // namespace UICoverage
} // namespace Vorsk
