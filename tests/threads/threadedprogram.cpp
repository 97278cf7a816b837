// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// An application whose other threads send events to objects of theirs all the while that its
// windows are used; tst_threads runs it. Says how many events they sent.
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <atomic>
#include <cstdio>
#include <thread>
#include <vector>

namespace {

constexpr int workers = 4;
constexpr int rounds = 20;

std::atomic<bool> isOver{false};
std::atomic<long> sent{0};

/** Lives in a thread of its own; takes every event. */
class Worker : public QObject {
public:
    bool event(QEvent* event) override {
        ++seen;
        return QObject::event(event);
    }
    long seen = 0;
};

/** All sorts that mean something to whoever watches widgets and Qt Quick items. */
void sendAll(QObject* receiver) {
    for (const QEvent::Type type : {QEvent::Show, QEvent::FocusIn, QEvent::Hide, QEvent::Polish,
                                    QEvent::ChildPolished, QEvent::ParentChange}) {
        QEvent event(type);
        QCoreApplication::sendEvent(receiver, &event);
    }
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(1, 1), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(receiver, &press);
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
    QCoreApplication::sendEvent(receiver, &key);
}

void work() {
    while (!isOver) {
        Worker parent;
        auto* const child = new Worker;
        child->setParent(&parent); // a ChildAdded event
        sendAll(&parent);
        sendAll(child);
        QCoreApplication::postEvent(&parent, new QEvent(QEvent::User));
        QCoreApplication::sendPostedEvents(&parent);
        child->setObjectName(QStringLiteral("child"));
        delete child;
        sent += parent.seen;
    }
}

/** A window that is shown, used and destroyed. */
void useWindow(int number) {
    QDialog dialog;
    dialog.setWindowTitle(QStringLiteral("Window %1").arg(number));
    QPushButton button(QStringLiteral("Press"));
    QCheckBox box(QStringLiteral("Check"));
    QLineEdit edit;
    QVBoxLayout layout(&dialog);
    for (QWidget* widget : std::initializer_list<QWidget*>{&button, &box, &edit}) {
        layout.addWidget(widget);
    }
    dialog.show();
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(5, box.height() / 2));
    QTest::keyClicks(&edit, QStringLiteral("text"));
    QCoreApplication::processEvents();
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    std::vector<std::thread> threads;
    threads.reserve(workers);
    for (int i = 0; i < workers; ++i) {
        threads.emplace_back(work);
    }
    for (int i = 0; i < rounds; ++i) {
        useWindow(i);
    }
    // None of them is behind when the windows are.
    while (sent < 1000) {
        std::this_thread::yield();
    }
    isOver = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::printf("sent %ld\n", sent.load());
    return 0;
}
