// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicoverage/qtwidgetobserver.h"

QT_BEGIN_NAMESPACE
class QDialog;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

class QtWidgetsCoverageTracker;

/**
 * Marks the element of one dialog as a window and names it after the window title, read once, here.
 */
class QtDialogObserver : public QtWidgetObserver {
    Q_OBJECT

public:
    QtDialogObserver(QDialog* dialog, UIAbstraction::UIElement* element,
                     QtWidgetsCoverageTracker* tracker);
    ~QtDialogObserver() override;
};

} // namespace UICoverage
} // namespace Vorsk
