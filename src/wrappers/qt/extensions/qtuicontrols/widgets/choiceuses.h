// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QObject>

QT_BEGIN_NAMESPACE
class QEvent;
class QTabBar;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class PartElements;
class UseCounter;

/** Counts what is chosen in combo boxes, calendars and tab bars. GUI thread only. */
class ChoiceUses : public QObject {
    Q_OBJECT

public:
    ChoiceUses(UseCounter& counter, PartElements& parts);

    static Uses usesOf(const QWidget* widget);

    /** Has the signals of a combo box or calendar connected. */
    void connectTo(QWidget* control);
    /** Input is about to go to the widget: has the signals of the tab bar that it is, or that it
     * has, connected. */
    void expectTabs(QWidget* receiver);

private Q_SLOTS:
    void boxChosen(int row);
    void dateChosen();
    void dateActivated();
    void tabPressed(int index);
    void tabChanged(int index);

private:
    bool isOperatedTabs(QTabBar* bar) const;
    void countTab(QTabBar* bar, int index);

    UseCounter& m_counter;
    PartElements& m_parts;
};

} // namespace UIControls
} // namespace Vorsk
