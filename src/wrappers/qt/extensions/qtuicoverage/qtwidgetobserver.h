// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tracking/qtobjectobserver.h"

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

/** Watches one widget and keeps its element's place in the widget's window. */
class QtWidgetObserver : public QtObjectObserver {
    Q_OBJECT

public:
    QtWidgetObserver(QWidget* widget, UIAbstraction::UIElement* element,
                     UICoverageTracker* tracker);
    ~QtWidgetObserver() override;

    /** Null once the widget has died. */
    QWidget* widget() const;

public Q_SLOTS:
    /**
     * Sets the element's geometry to the widget's rectangle in the coordinates of the widget's
     * window. Warns when that window has no element or a transparent one. Called whenever the
     * widget is shown.
     */
    void init();
};

} // namespace UICoverage
} // namespace Vorsk
