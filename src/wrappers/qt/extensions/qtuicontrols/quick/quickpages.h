// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

QT_BEGIN_NAMESPACE
class QQuickItem;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

// Which items are pages: what stacks, swipe views, tab views and loaders show one of at a time.

/** Whether the parent shows the item as one of its pages. @param isInRow within one of many rows */
bool isPageOf(const QQuickItem* parent, const QQuickItem* item, bool isInRow);

/** Whose page the item is; null when it is that of no swipe view. */
QQuickItem* swipeViewOf(const QQuickItem* page);

/** What the page itself, or its tab, calls it; null for nothing. */
QString titleOfPage(const QQuickItem* page);

} // namespace UIControls
} // namespace Vorsk
