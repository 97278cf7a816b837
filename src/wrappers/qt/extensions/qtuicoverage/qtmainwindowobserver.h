// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicoverage/qtwidgetobserver.h"

QT_BEGIN_NAMESPACE
class QMainWindow;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

class QtWidgetsCoverageTracker;

/**
 * Marks the element of one main window as a window and names it after the window title, read once,
 * here.
 */
class QtMainWindowObserver : public QtWidgetObserver {
    Q_OBJECT

public:
    QtMainWindowObserver(QMainWindow* mainWindow, UIAbstraction::UIElement* element,
                         QtWidgetsCoverageTracker* tracker);
    ~QtMainWindowObserver() override;
};

} // namespace UICoverage
} // namespace Vorsk
