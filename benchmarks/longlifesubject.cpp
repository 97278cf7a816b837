// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QLabel>
#include <QPushButton>

#include <cstdio>
#include <memory>
#include <vector>

#include <malloc.h>

/*
 * Creates, shows and destroys that many buttons, window by window, then delivers that many events
 * to a few widgets that stay. Says after each tenth how many bytes of memory are in use. Started
 * with and without recording by benchmarks/longlife.
 */

namespace {

constexpr int perWindow = 1000;
constexpr int steps = 10;

void report(const char* what, long done) {
    const struct mallinfo2 used = mallinfo2();
    std::printf("%s %ld %zu\n", what, done, used.uordblks + used.hblkhd);
    static_cast<void>(std::fflush(stdout));
}

void useAWindow(int buttons) {
    QWidget window;
    std::vector<QPushButton*> all;
    all.reserve(static_cast<std::size_t>(buttons));
    for (int i = 0; i < buttons; ++i) {
        all.push_back(new QPushButton(QStringLiteral("Button %1").arg(i), &window));
    }
    window.show();
    for (QPushButton* button : all) {
        button->click();
    }
}

/** One event in ten is counted: another Show of a widget that is known. */
void deliver(const std::vector<QWidget*>& receivers, long events) {
    const QEvent::Type types[] = {QEvent::Show,          QEvent::User,
                                  QEvent::ToolTipChange, QEvent::StyleChange,
                                  QEvent::User,          QEvent::IconTextChange,
                                  QEvent::User,          QEvent::ModifiedChange,
                                  QEvent::User,          QEvent::ActivationChange};
    for (long i = 0; i < events; ++i) {
        QEvent event(types[i % 10]);
        QCoreApplication::sendEvent(receivers[static_cast<size_t>(i / 10) % receivers.size()],
                                    &event);
    }
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const long elements = arguments.value(1).toLong();
    const long events = arguments.value(2).toLong();
    // What is there once, is there before the first number.
    useAWindow(perWindow);
    report("elements", 0);
    for (long done = perWindow; done <= elements; done += perWindow) {
        useAWindow(perWindow - 1); // the window is one as well
        if (done % (elements / steps) == 0) {
            report("elements", done);
        }
    }
    QWidget window;
    constexpr int labels = 10;
    std::vector<QWidget*> receivers;
    receivers.reserve(labels);
    for (int i = 0; i < labels; ++i) {
        receivers.push_back(new QLabel(QStringLiteral("Label"), &window));
    }
    window.show();
    deliver(receivers, 1000);
    report("events", 0);
    for (int step = 1; step <= steps; ++step) {
        deliver(receivers, events / steps);
        report("events", events / steps * step);
    }
    return 0;
}
