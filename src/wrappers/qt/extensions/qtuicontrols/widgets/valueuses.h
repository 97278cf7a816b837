// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QObject>
#include <QPointer>

QT_BEGIN_NAMESPACE
class QEvent;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class UseCounter;

/** Counts the uses of spin boxes, date and time edits, sliders and dials. GUI thread only. */
class ValueUses : public QObject {
    Q_OBJECT

public:
    explicit ValueUses(UseCounter& counter);

    static Uses usesOf(ElementType type);

    /** Input is about to go to the control. */
    void expect(QWidget* control, QEvent* event);
    /** Has the control's signals connected. */
    void connectTo(QWidget* control);
    /** The press that the control may repeat is over. */
    void endPress();

private Q_SLOTS:
    void spun();
    void moved();

private:
    void connectToSpinBox(QWidget* control);

    UseCounter& m_counter;
    QPointer<QObject> m_repeating;
};

} // namespace UIControls
} // namespace Vorsk
