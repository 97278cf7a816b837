// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>

QT_BEGIN_NAMESPACE
class QAbstractButton;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

// Keys that click another button than the one that gets them: arrows among the buttons of which one
// is checked, Return for a dialog's default button, and the keys of message boxes.

/** Whether the button is one of several of which only one is checked. */
bool isExclusive(const QAbstractButton* button);

/** The buttons that a key which goes to the receiver may click. */
QList<QAbstractButton*> buttonsReachedByKey(QWidget* receiver, int key);

/** Whether a key that goes to the receiver is meant to click the button, which is not the receiver
 * or a part of it. */
bool isReachedByKey(const QAbstractButton* button, QWidget* receiver, int key);

} // namespace UIControls
} // namespace Vorsk
