// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtabstractitemviewobserver.h"

#include "qtuicoverage/qtwidgetscoveragetracker.h"

#include <QAbstractItemView>

namespace Vorsk {
namespace UICoverage {

QtAbstractItemViewObserver::QtAbstractItemViewObserver(QAbstractItemView* view,
                                                       UIAbstraction::UIElement* element,
                                                       QtWidgetsCoverageTracker* tracker)
    : QtWidgetObserver(view, element, tracker) {
    connect(view, &QAbstractItemView::activated, this, &QtAbstractItemViewObserver::onActivated);
    connect(view, &QAbstractItemView::clicked, this, &QtAbstractItemViewObserver::onClicked);
    connect(view, &QAbstractItemView::doubleClicked, this,
            &QtAbstractItemViewObserver::onDoubleClicked);
    connect(view, &QAbstractItemView::entered, this, &QtAbstractItemViewObserver::onEntered);
    connect(view, &QAbstractItemView::pressed, this, &QtAbstractItemViewObserver::onPressed);
    connect(view, &QAbstractItemView::viewportEntered, this,
            &QtAbstractItemViewObserver::onViewportEntered);
}

QtAbstractItemViewObserver::~QtAbstractItemViewObserver() = default;

// The slots are empty on purpose: the connections exist, and record nothing.

void QtAbstractItemViewObserver::onActivated(QModelIndex) {}

void QtAbstractItemViewObserver::onClicked(QModelIndex) {}

void QtAbstractItemViewObserver::onDoubleClicked(QModelIndex) {}

void QtAbstractItemViewObserver::onEntered(QModelIndex) {}

void QtAbstractItemViewObserver::onPressed(QModelIndex) {}

void QtAbstractItemViewObserver::onViewportEntered() {}

} // namespace UICoverage
} // namespace Vorsk
