// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QMouseEvent>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTimer>
#include <QVBoxLayout>

#include <unistd.h>

/*
 * A program that is used without a pause, until its standard input ends: its recording grows all
 * the time, by new buttons and by clicks on them.
 */
int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QWidget window;
    window.setWindowTitle(QStringLiteral("Busy"));
    auto* layout = new QVBoxLayout(&window);
    window.show();

    constexpr int mostButtons = 200;
    int turn = 0;
    QPushButton* button = nullptr;
    QTimer use;
    QObject::connect(&use, &QTimer::timeout, &window, [&] {
        if (layout->count() < mostButtons) {
            button = new QPushButton(QStringLiteral("Button %1").arg(++turn));
            layout->addWidget(button);
            button->show();
        }
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, button->rect().center(), Qt::LeftButton, Qt::LeftButton,
                              Qt::NoModifier);
            QApplication::sendEvent(button, &event);
        }
    });
    use.start(1);

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [&] {
        char byte = 0;
        if (::read(STDIN_FILENO, &byte, 1) <= 0) {
            QApplication::quit();
        }
    });
    return QApplication::exec();
}
