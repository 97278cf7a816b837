// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/buttonrelations.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QDialog>
#include <QKeySequence>
#include <QMessageBox>
#include <QPushButton>

namespace Vorsk {
namespace UIControls {

namespace {

bool isArrow(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Left || key == Qt::Key_Right;
}

bool isReturn(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

QList<QAbstractButton*> neighboursOf(const QAbstractButton* button) {
    if (const QButtonGroup* const group = button->group()) {
        return group->exclusive() ? group->buttons() : QList<QAbstractButton*>();
    }
    const QWidget* const parent = button->parentWidget();
    if (!button->autoExclusive() || parent == nullptr) {
        return {};
    }
    QList<QAbstractButton*> neighbours;
    const QList<QAbstractButton*> siblings =
        parent->findChildren<QAbstractButton*>(QString(), Qt::FindDirectChildrenOnly);
    for (QAbstractButton* const sibling : siblings) {
        if (sibling->autoExclusive() && sibling->group() == nullptr) {
            neighbours.append(sibling);
        }
    }
    return neighbours;
}

QList<QAbstractButton*> buttonsOfDialog(const QDialog* dialog, int key) {
    if (const auto* const box = qobject_cast<const QMessageBox*>(dialog)) {
        return box->buttons();
    }
    QList<QAbstractButton*> defaults;
    if (isReturn(key)) {
        const QList<QPushButton*> buttons = dialog->findChildren<QPushButton*>();
        for (QPushButton* const button : buttons) {
            if (button->isDefault()) {
                defaults.append(button);
            }
        }
    }
    return defaults;
}

bool isMnemonic(const QAbstractButton* button, int key) {
    const QKeySequence mnemonic = QKeySequence::mnemonic(button->text());
    return !mnemonic.isEmpty() && (mnemonic[0] & ~int(Qt::KeyboardModifierMask)) == key;
}

} // namespace

bool isExclusive(const QAbstractButton* button) {
    return button->group() != nullptr ? button->group()->exclusive() : button->autoExclusive();
}

QList<QAbstractButton*> buttonsReachedByKey(QWidget* receiver, int key) {
    if (const auto* const button = qobject_cast<const QAbstractButton*>(receiver)) {
        return isArrow(key) ? neighboursOf(button) : QList<QAbstractButton*>();
    }
    const auto* const dialog = qobject_cast<const QDialog*>(receiver);
    return dialog == nullptr ? QList<QAbstractButton*>() : buttonsOfDialog(dialog, key);
}

bool isReachedByKey(const QAbstractButton* button, QWidget* receiver, int key) {
    if (const auto* const other = qobject_cast<const QAbstractButton*>(receiver)) {
        return isArrow(key) && other != button &&
               neighboursOf(other).contains(const_cast<QAbstractButton*>(button));
    }
    if (receiver != button->window()) {
        return false;
    }
    const auto* const push = qobject_cast<const QPushButton*>(button);
    if (isReturn(key)) {
        return qobject_cast<const QDialog*>(receiver) != nullptr && push != nullptr &&
               push->isDefault();
    }
    return qobject_cast<const QMessageBox*>(receiver) != nullptr &&
           (key == Qt::Key_Escape || isMnemonic(button, key));
}

} // namespace UIControls
} // namespace Vorsk
