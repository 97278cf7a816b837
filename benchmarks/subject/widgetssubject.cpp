// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "widgetssubject.h"

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPushButton>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace {

constexpr int leavesInBox = 48;
constexpr int columnsInBox = 8;

void sendMouse(QWidget* widget, QEvent::Type type, Qt::MouseButtons buttons) {
    const QPoint centre = widget->rect().center();
    QMouseEvent event(type, centre, widget->mapToGlobal(centre), Qt::LeftButton, buttons,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace

WidgetsSubject::WidgetsSubject() = default;

WidgetsSubject::~WidgetsSubject() = default;

QWidget* WidgetsSubject::makeLeaf(int number) {
    const QString text = QStringLiteral("Control %1").arg(number);
    switch (number % 4) {
    case 0: {
        auto* const button = new QPushButton(text);
        QObject::connect(button, &QPushButton::clicked, [this] { ++m_clicks; });
        m_buttons.append(button);
        return button;
    }
    case 1:
        return new QCheckBox(text);
    case 2:
        return new QLineEdit(text);
    default:
        return new QLabel(text);
    }
}

void WidgetsSubject::addMenus() {
    for (int i = 0; i < 6; ++i) {
        QMenu* const menu = m_window->menuBar()->addMenu(QStringLiteral("Menu %1").arg(i));
        for (int j = 0; j < 10; ++j) {
            menu->addAction(QStringLiteral("Action %1").arg(10 * i + j));
        }
    }
}

void WidgetsSubject::buildAndShow(int leaves) {
    m_window = std::make_unique<QMainWindow>();
    addMenus();
    auto* const centre = new QWidget;
    auto* const boxes = new QGridLayout(centre);
    const int boxCount = (leaves + leavesInBox - 1) / leavesInBox;
    const int columns = std::max(1, static_cast<int>(std::sqrt(boxCount) / 2));
    for (int box = 0; box < boxCount; ++box) {
        auto* const group = new QGroupBox(QStringLiteral("Group %1").arg(box));
        auto* const layout = new QGridLayout(group);
        const int end = std::min(leaves, (box + 1) * leavesInBox);
        for (int leaf = box * leavesInBox; leaf < end; ++leaf) {
            QWidget* const made = makeLeaf(leaf);
            const int place = leaf % leavesInBox;
            layout->addWidget(made, place / columnsInBox, place % columnsInBox);
            m_leaves.append(made);
        }
        boxes->addWidget(group, box / columns, box % columns);
    }
    m_window->setCentralWidget(centre);
    m_window->show();
    while (!m_window->windowHandle()->isExposed()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
}

void WidgetsSubject::sendEvents(int count) {
    QEvent event(QEvent::User);
    for (int i = 0; i < count; ++i) {
        QCoreApplication::sendEvent(m_leaves.at(i % m_leaves.size()), &event);
    }
}

void WidgetsSubject::disturb(int count) {
    for (int i = 0; i < count; ++i) {
        m_leaves.at(i % m_leaves.size())->repaint();
    }
}

void WidgetsSubject::click(int count) {
    for (int i = 0; i < count; ++i) {
        QPushButton* const button = m_buttons.at(i % m_buttons.size());
        sendMouse(button, QEvent::MouseButtonPress, Qt::LeftButton);
        sendMouse(button, QEvent::MouseButtonRelease, Qt::NoButton);
    }
}

void WidgetsSubject::destroy() {
    m_window.reset();
}
