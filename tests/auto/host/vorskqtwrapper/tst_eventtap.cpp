// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/vorskqtwrapper/tapprobes.h"
#include "testlib/testcase.h"

#include <QRandomGenerator>
#include <QTest>
#include <QThread>
#include <QWindow>

#include <memory>

/* Every delivery is handed over exactly once, before its receiver sees it. */

using namespace TapProbes;

class tst_EventTap : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void mouseClickOnAWidget();
    void keyClickOnAWidget();
    void mouseClickOnAWindow();
    void pressThatPropagatesToAParent();
    void keyThatPropagatesToAParent();
    void contextMenuThatPropagatesToAParent();
    void wheel();
    void pressSwallowedByAnObjectFilter();
    void pressSwallowedByAnApplicationFilter_data();
    void pressSwallowedByAnApplicationFilter();
    void deliveriesAfterASwallowedOne();
    void eventSentWhileAnotherIsDelivered();
    void sameTypeSentToTheSameReceiverWithinADelivery();
    void pressThatChangesFocus();
    void postedEvent();
    void eventsOnAnotherThread();
    void eventPostedFromAnotherThread();
    void moveWithoutMouseTracking();
    void noneIsConsumed();
    void randomInputAgainstAFilterThatSeesAll();
};

void tst_EventTap::init() {
    TestCase::init();
    application()->mode = OwnNotifyApplication::Mode::Pass;
    clear();
}

void tst_EventTap::mouseClickOnAWidget() {
    Receiver widget(QStringLiteral("widget"));
    QTest::mouseClick(&widget, Qt::LeftButton);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "widget"));
    QVERIFY(onceAndFirst(QEvent::MouseButtonRelease, "widget"));
}

void tst_EventTap::keyClickOnAWidget() {
    Receiver widget(QStringLiteral("widget"));
    QTest::keyClick(&widget, Qt::Key_A);
    QVERIFY(onceAndFirst(QEvent::KeyPress, "widget"));
    QVERIFY(onceAndFirst(QEvent::KeyRelease, "widget"));
}

void tst_EventTap::mouseClickOnAWindow() {
    Receiver widget(QStringLiteral("widget"));
    widget.resize(50, 50);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    widget.windowHandle()->setObjectName(QStringLiteral("window"));
    handedOver.clear();
    sequence.clear();
    QTest::mouseClick(widget.windowHandle(), Qt::LeftButton);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "widget"));
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "window"), 1);
}

void tst_EventTap::pressThatPropagatesToAParent() {
    Receiver parent(QStringLiteral("parent"));
    Receiver middle(QStringLiteral("middle"), &parent);
    Receiver child(QStringLiteral("child"), &middle);
    middle.accepts = false;
    child.accepts = false;
    sequence.clear();
    QTest::mousePress(&child, Qt::LeftButton);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "child"));
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "middle"));
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "parent"));

    sequence.clear();
    QMouseEvent event = press();
    QCoreApplication::sendEvent(&child, &event);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "child"));
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "middle"));
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "parent"));
}

void tst_EventTap::keyThatPropagatesToAParent() {
    Receiver parent(QStringLiteral("parent"));
    Receiver child(QStringLiteral("child"), &parent);
    child.accepts = false;
    sequence.clear();
    QTest::keyPress(&child, Qt::Key_A);
    QVERIFY(onceAndFirst(QEvent::KeyPress, "child"));
    QVERIFY(onceAndFirst(QEvent::KeyPress, "parent"));
}

void tst_EventTap::contextMenuThatPropagatesToAParent() {
    Receiver parent(QStringLiteral("parent"));
    Receiver child(QStringLiteral("child"), &parent);
    child.accepts = false;
    sequence.clear();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
    QCoreApplication::sendEvent(&child, &event);
    QVERIFY(onceAndFirst(QEvent::ContextMenu, "child"));
    QVERIFY(onceAndFirst(QEvent::ContextMenu, "parent"));
}

void tst_EventTap::wheel() {
    Receiver widget(QStringLiteral("widget"));
    QWheelEvent event(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
    QVERIFY(onceAndFirst(QEvent::Wheel, "widget"));
}

void tst_EventTap::pressSwallowedByAnObjectFilter() {
    Receiver widget(QStringLiteral("widget"));
    Filter filter;
    filter.swallows = isPress;
    widget.installEventFilter(&filter);
    QTest::mousePress(&widget, Qt::LeftButton);
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "widget"), 1);
    QCOMPARE(count(filter.seen, QEvent::MouseButtonPress, "widget"), 1);
    QCOMPARE(seenCount(QEvent::MouseButtonPress, "widget"), 0);
}

void tst_EventTap::pressSwallowedByAnApplicationFilter_data() {
    QTest::addColumn<bool>("sent");
    QTest::newRow("straight to notify") << false;
    QTest::newRow("sent") << true;
}

void tst_EventTap::pressSwallowedByAnApplicationFilter() {
    QFETCH(bool, sent);
    Receiver widget(QStringLiteral("widget"));
    Filter filter;
    filter.swallows = isPress;
    qApp->installEventFilter(&filter);
    if (sent) {
        QMouseEvent event = press();
        QVERIFY(QCoreApplication::sendEvent(&widget, &event));
    } else {
        QTest::mousePress(&widget, Qt::LeftButton);
    }
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "widget"), 1);
    QCOMPARE(count(filter.seen, QEvent::MouseButtonPress, "widget"), 1);
    QCOMPARE(seenCount(QEvent::MouseButtonPress, "widget"), 0);
}

void tst_EventTap::deliveriesAfterASwallowedOne() {
    // The same event object, the same receiver, the same place on the stack, and every second
    // delivery swallowed before it reaches our filter.
    Receiver widget(QStringLiteral("widget"));
    Filter filter;
    bool swallowNext = false;
    filter.swallows = [&swallowNext](QObject*, QEvent* event) {
        return event->type() == QEvent::MouseButtonPress && swallowNext;
    };
    qApp->installEventFilter(&filter);
    QMouseEvent event = press();
    for (int i = 1; i <= 20; ++i) {
        swallowNext = i % 2 == 1;
        if (i % 3 == 0) {
            QCoreApplication::sendEvent(&widget, &event);
        } else {
            qApp->notify(&widget, &event);
        }
        QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "widget"), i);
    }
    QCOMPARE(seenCount(QEvent::MouseButtonPress, "widget"), 10);
}

void tst_EventTap::eventSentWhileAnotherIsDelivered() {
    Receiver outer(QStringLiteral("outer"));
    Receiver inner(QStringLiteral("inner"));
    outer.onEvent = [&inner](QEvent* event) {
        if (event->type() == QEvent::MouseButtonPress) {
            QTest::keyPress(&inner, Qt::Key_A);
            QTest::mousePress(&inner, Qt::LeftButton);
        }
    };
    sequence.clear();
    QTest::mousePress(&outer, Qt::LeftButton);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "outer"));
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "inner"));
    QVERIFY(onceAndFirst(QEvent::KeyPress, "inner"));
}

void tst_EventTap::sameTypeSentToTheSameReceiverWithinADelivery() {
    // From the receiver, and from a filter that stands before ours: the first delivery has not
    // reached our filter then.
    Receiver widget(QStringLiteral("widget"));
    int depth = 0;
    const auto sendAnother = [&widget, &depth] {
        if (++depth < 4) {
            QMouseEvent event = press();
            qApp->notify(&widget, &event);
        }
    };
    Filter filter;
    filter.swallows = [&](QObject* receiver, QEvent* event) {
        if (receiver == &widget && event->type() == QEvent::MouseButtonPress) {
            sendAnother();
        }
        return false;
    };
    qApp->installEventFilter(&filter);
    widget.onEvent = [&](QEvent* event) {
        if (event->type() == QEvent::MouseButtonPress) {
            sendAnother();
        }
    };
    QTest::mousePress(&widget, Qt::LeftButton);
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "widget"), 4);
    QCOMPARE(seenCount(QEvent::MouseButtonPress, "widget"), 4);
}

void tst_EventTap::pressThatChangesFocus() {
    Receiver window(QStringLiteral("window"));
    Receiver first(QStringLiteral("first"), &window);
    Receiver second(QStringLiteral("second"), &window);
    window.show();
    qApp->setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    first.setFocus();
    handedOver.clear();
    sequence.clear();
    // Spontaneous, as only such a press gives focus.
    QTest::mousePress(&second, Qt::LeftButton);
    QVERIFY(second.hasFocus());
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "second"));
    QVERIFY(onceAndFirst(QEvent::FocusOut, "first"));
    QVERIFY(onceAndFirst(QEvent::FocusIn, "second"));
}

void tst_EventTap::postedEvent() {
    Receiver widget(QStringLiteral("widget"));
    QCoreApplication::postEvent(&widget, new QEvent(QEvent::User));
    QCoreApplication::sendPostedEvents();
    QVERIFY(onceAndFirst(QEvent::User, "widget"));
}

void tst_EventTap::eventsOnAnotherThread() {
    QThread thread;
    QObject object;
    Filter filter;
    object.setObjectName(QStringLiteral("elsewhere"));
    object.installEventFilter(&filter);
    object.moveToThread(&thread);
    filter.moveToThread(&thread);
    handedOver.clear();
    filter.swallows = [&thread](QObject*, QEvent* event) {
        if (event->type() == QEvent::User) {
            thread.quit();
        }
        return false;
    };
    thread.start();
    QCoreApplication::postEvent(&object, new QEvent(QEvent::User));
    QVERIFY(thread.wait(20000));
    QCOMPARE(count(filter.seen, QEvent::User, "elsewhere"), 1);
    QCOMPARE(count(handedOver, QEvent::User, "elsewhere"), 0);
    QCOMPARE(handedOverOnOtherThreads, 0);
}

void tst_EventTap::eventPostedFromAnotherThread() {
    Receiver widget(QStringLiteral("widget"));
    std::unique_ptr<QThread> thread(QThread::create(
        [&widget] { QCoreApplication::postEvent(&widget, new QEvent(QEvent::User)); }));
    thread->start();
    QVERIFY(thread->wait(20000));
    QCoreApplication::sendPostedEvents();
    QVERIFY(onceAndFirst(QEvent::User, "widget"));
}

void tst_EventTap::moveWithoutMouseTracking() {
    // Such a move goes through the application's filters and never to the widget.
    Receiver widget(QStringLiteral("widget"));
    QMouseEvent event(QEvent::MouseMove, QPointF(5, 5), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
    QCOMPARE(count(handedOver, QEvent::MouseMove, "widget"), 1);
    QCOMPARE(seenCount(QEvent::MouseMove, "widget"), 0);
}

void tst_EventTap::noneIsConsumed() {
    Receiver accepting(QStringLiteral("accepting"));
    Receiver ignoring(QStringLiteral("ignoring"));
    ignoring.accepts = false;
    QMouseEvent first = press();
    QVERIFY(QCoreApplication::sendEvent(&accepting, &first));
    QVERIFY(first.isAccepted());
    QMouseEvent second = press();
    QVERIFY(!QCoreApplication::sendEvent(&ignoring, &second));
    QVERIFY(!second.isAccepted());
    for (const QString& handed : qAsConst(handedOver)) {
        QVERIFY2(sequence.contains(QStringLiteral("seen ") + handed), qPrintable(handed));
    }
}

void tst_EventTap::randomInputAgainstAFilterThatSeesAll() {
    // A filter that was installed last is asked first, so it sees every delivery that there is.
    Receiver window(QStringLiteral("window"));
    Receiver panel(QStringLiteral("panel"), &window);
    Receiver left(QStringLiteral("left"), &panel);
    Receiver right(QStringLiteral("right"), &panel);
    const QList<Receiver*> receivers{&window, &panel, &left, &right};
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QRandomGenerator random(20);
    Filter filter;
    QObject* firstReceiver = nullptr;
    filter.swallows = [&](QObject* receiver, QEvent* event) {
        // What is passed on to a parent and swallowed there is the one thing that we do not see.
        return isPress(receiver, event) && receiver == firstReceiver && random.bounded(3) == 0;
    };
    qApp->installEventFilter(&filter);
    handedOver.clear();
    filter.seen.clear();
    for (int i = 0; i < 500; ++i) {
        for (Receiver* receiver : receivers) {
            receiver->accepts = random.bounded(2) == 0;
        }
        Receiver* target = receivers[random.bounded(receivers.size())];
        firstReceiver = target;
        QMouseEvent event = press();
        QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
        switch (random.bounded(5)) {
        case 0:
            qApp->notify(target, &event);
            break;
        case 1:
            qApp->notify(target, &key);
            break;
        case 2:
            QCoreApplication::sendEvent(target, &event);
            break;
        case 3:
            QCoreApplication::postEvent(target, new QEvent(QEvent::User));
            QCoreApplication::sendPostedEvents();
            break;
        default:
            target->setVisible(!target->isVisible());
            break;
        }
    }
    QVERIFY(count(filter.seen, QEvent::MouseButtonPress, "window") >
            count(filter.seen, QEvent::MouseButtonPress, "left"));
    handedOver.sort();
    filter.seen.sort();
    QCOMPARE(handedOver, filter.seen);
}

int main(int argc, char** argv) {
    OwnNotifyApplication app(argc, argv);
    tst_EventTap test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_eventtap.moc"
