// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicoverage/qtwidgetobserver.h"

#include <QModelIndex>

QT_BEGIN_NAMESPACE
class QAbstractItemView;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

class QtWidgetsCoverageTracker;

/**
 * Is connected to what a user does in one item view, and counts nothing of it: the cells of a view
 * are not elements in this version.
 */
class QtAbstractItemViewObserver : public QtWidgetObserver {
    Q_OBJECT

public:
    QtAbstractItemViewObserver(QAbstractItemView* view, UIAbstraction::UIElement* element,
                               QtWidgetsCoverageTracker* tracker);
    ~QtAbstractItemViewObserver() override;

private Q_SLOTS:
    void onActivated(QModelIndex index);
    void onClicked(QModelIndex index);
    void onDoubleClicked(QModelIndex index);
    void onEntered(QModelIndex index);
    void onPressed(QModelIndex index);
    void onViewportEntered();
};

} // namespace UICoverage
} // namespace Vorsk
