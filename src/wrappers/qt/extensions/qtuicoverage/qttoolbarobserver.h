// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicoverage/qtwidgetobserver.h"

QT_BEGIN_NAMESPACE
class QToolBar;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

class QtWidgetsCoverageTracker;

/** Watches one tool bar; there is nothing to count on it but that it is shown. */
class QtToolBarObserver : public QtWidgetObserver {
    Q_OBJECT

public:
    QtToolBarObserver(QToolBar* toolBar, UIAbstraction::UIElement* element,
                      QtWidgetsCoverageTracker* tracker);
    ~QtToolBarObserver() override;
};

} // namespace UICoverage
} // namespace Vorsk
