// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicoverage/qtwidgetobserver.h"

QT_BEGIN_NAMESPACE
class QLineEdit;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

class QtWidgetsCoverageTracker;

/**
 * Counts changes and confirmations of one line edit. What stands in the line edit is never copied:
 * it may be private, and it names nothing.
 */
class QtLineEditObserver : public QtWidgetObserver {
    Q_OBJECT

public:
    QtLineEditObserver(QLineEdit* lineEdit, UIAbstraction::UIElement* element,
                       QtWidgetsCoverageTracker* tracker);
    ~QtLineEditObserver() override;

private Q_SLOTS:
    void onReturnPressed();
    void onTextChanged();
    void onTextEdited();
};

} // namespace UICoverage
} // namespace Vorsk
