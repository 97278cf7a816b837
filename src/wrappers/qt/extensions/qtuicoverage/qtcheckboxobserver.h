// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicoverage/qtabstractbuttonobserver.h"

QT_BEGIN_NAMESPACE
class QCheckBox;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

class QtWidgetsCoverageTracker;

/**
 * Counts what state one check box gets into, besides its clicks. "unchecked" is announced as
 * something that can happen, but never counted.
 */
class QtCheckBoxObserver : public QtAbstractButtonObserver {
    Q_OBJECT

public:
    QtCheckBoxObserver(QCheckBox* checkBox, UIAbstraction::UIElement* element,
                       QtWidgetsCoverageTracker* tracker);
    ~QtCheckBoxObserver() override;

private Q_SLOTS:
    void checkBoxChangedState(int state);
};

} // namespace UICoverage
} // namespace Vorsk
