// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "subject.h"

#include <QVector>

#include <memory>

QT_BEGIN_NAMESPACE
class QMainWindow;
class QPushButton;
class QWidget;
QT_END_NAMESPACE

/**
 * A main window with 60 menu actions and group boxes full of push buttons, check boxes, line edits
 * and labels in equal parts, 48 to a box. Every leaf is shown.
 */
class WidgetsSubject : public Subject {
public:
    WidgetsSubject();
    ~WidgetsSubject() override;

    void buildAndShow(int leaves) override;
    void sendEvents(int count) override;
    void disturb(int count) override;
    void click(int count) override;
    void destroy() override;

private:
    QWidget* makeLeaf(int number);
    void addMenus();

    std::unique_ptr<QMainWindow> m_window;
    QVector<QWidget*> m_leaves;
    QVector<QPushButton*> m_buttons;
};
