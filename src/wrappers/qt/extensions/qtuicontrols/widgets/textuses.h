// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QObject>

QT_BEGIN_NAMESPACE
class QEvent;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class UseCounter;

/**
 * Counts the uses of what a person types into: line edits, also those in combo and spin boxes, text
 * edits and key sequence edits. GUI thread only.
 */
class TextUses : public QObject {
    Q_OBJECT

public:
    explicit TextUses(UseCounter& counter);

    static Uses usesOf(const QWidget* widget);

    /** Input is about to go to the control. */
    void expect(QWidget* control, QEvent* event);
    /** Has the control's signals connected. */
    void connectTo(QWidget* control);

private Q_SLOTS:
    void lineEdited();
    void lineChanged();
    void lineConfirmed();
    void bodyChanged();
    void keysChanged();

private:
    void connectToLine(QWidget* line);

    UseCounter& m_counter;
};

} // namespace UIControls
} // namespace Vorsk
