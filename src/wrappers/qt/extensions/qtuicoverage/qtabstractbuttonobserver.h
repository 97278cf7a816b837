// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicoverage/qtwidgetobserver.h"

QT_BEGIN_NAMESPACE
class QAbstractButton;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

class QtWidgetsCoverageTracker;

/**
 * Counts the clicks of one button, and names its element after the button's text. The text is read
 * once, here: later changes are not followed.
 */
class QtAbstractButtonObserver : public QtWidgetObserver {
    Q_OBJECT

public:
    QtAbstractButtonObserver(QAbstractButton* button, UIAbstraction::UIElement* element,
                             QtWidgetsCoverageTracker* tracker);
    ~QtAbstractButtonObserver() override;

private Q_SLOTS:
    void buttonClicked();
};

} // namespace UICoverage
} // namespace Vorsk
