// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QObject>
#include <QPointer>
#include <QSet>

QT_BEGIN_NAMESPACE
class QAbstractButton;
class QEvent;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class UseCounter;

/**
 * Counts the uses of buttons of all kinds, check boxes, radio buttons and checkable group boxes.
 * GUI thread only.
 */
class ButtonUses : public QObject {
    Q_OBJECT

public:
    explicit ButtonUses(UseCounter& counter);

    static Uses usesOf(const QWidget* widget, ElementType type);

    /** Input is about to go to the widget: has the signals of other buttons connected that it may
     * click. */
    void expectOthers(QWidget* receiver, QEvent* event);
    /** Has the control's signals connected. */
    void connectTo(QWidget* control);
    /** The press that a button may repeat is over. */
    void endPress();

private Q_SLOTS:
    void pressed();
    void released();
    void clicked();
    void toggled();
    void groupClicked();
    void menuShows();

private:
    bool isOperated(QAbstractButton* button) const;
    bool isReached(const QAbstractButton* button) const;
    void count(QAbstractButton* button);

    UseCounter& m_counter;
    /** Buttons that have been counted at released() and will say clicked() yet; addresses. */
    QSet<const QObject*> m_counted;
    /** Buttons that have been counted when their menu showed and will say pressed() yet; addresses.
     */
    QSet<const QObject*> m_shown;
    QPointer<QObject> m_repeating;
};

} // namespace UIControls
} // namespace Vorsk
