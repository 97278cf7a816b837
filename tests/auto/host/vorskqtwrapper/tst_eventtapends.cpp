// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/vorskqtwrapper/tapprobes.h"
#include "testlib/testcase.h"
#include "vorskqtwrapper/eventtap.h"

#include <QTest>
#include <QThread>

#include <memory>

/* The end of every delivery is told, the innermost first, to who asks. */

using namespace TapProbes;

namespace {

struct End {
    QObject* receiver;
    QEvent* event;
};

QVector<End> ends;

void noteEnd(QObject* receiver, QEvent* event) {
    ends.append({receiver, event});
}

int countOf(const QObject* receiver, const QEvent* event) {
    int count = 0;
    for (const End& end : ends) {
        count += end.receiver == receiver && end.event == event ? 1 : 0;
    }
    return count;
}

} // namespace

class tst_EventTapEnds : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void endComesAfterTheReceiverSawIt();
    void innermostEndsFirst();
    void passedOnDeliveryEndsOnce();
    void receiverMayBeDeadAtTheEnd();
    void receiverDeletedByACallbackHasItsEnd();
    void exceptionEndsADelivery();
    void deliveriesOnOtherThreadsAreNotTold();
    void deliveryThatIsUnderWayHasItsEnd();
};

void tst_EventTapEnds::initTestCase() {
    Receiver widget(QStringLiteral("widget"));
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&widget, &event);
    QVERIFY(ends.isEmpty()); // nobody has asked yet
    VorskHost::EventTap::instance().addEnd(noteEnd);
}

void tst_EventTapEnds::init() {
    TestCase::init();
    application()->mode = OwnNotifyApplication::Mode::Pass;
    clear();
    ends.clear();
}

void tst_EventTapEnds::endComesAfterTheReceiverSawIt() {
    Receiver widget(QStringLiteral("widget"));
    QEvent event(QEvent::User);
    int endsWhenSeen = -1;
    widget.onEvent = [&](QEvent* seen) {
        endsWhenSeen = seen == &event ? countOf(&widget, &event) : endsWhenSeen;
    };
    QCoreApplication::sendEvent(&widget, &event);
    QCOMPARE(endsWhenSeen, 0);
    QCOMPARE(countOf(&widget, &event), 1);
}

void tst_EventTapEnds::innermostEndsFirst() {
    Receiver outer(QStringLiteral("outer"));
    Receiver inner(QStringLiteral("inner"));
    QEvent outerEvent(QEvent::User);
    QEvent innerEvent(QEvent::User);
    outer.onEvent = [&](QEvent* event) {
        if (event == &outerEvent) {
            QCoreApplication::sendEvent(&inner, &innerEvent);
        }
    };
    ends.clear();
    QCoreApplication::sendEvent(&outer, &outerEvent);
    QCOMPARE(ends.size(), 2);
    QCOMPARE(ends.at(0).receiver, &inner);
    QCOMPARE(ends.at(0).event, &innerEvent);
    QCOMPARE(ends.at(1).receiver, &outer);
    QCOMPARE(ends.at(1).event, &outerEvent);
}

void tst_EventTapEnds::passedOnDeliveryEndsOnce() {
    Receiver parent(QStringLiteral("parent"));
    Receiver child(QStringLiteral("child"), &parent);
    child.accepts = false;
    QMouseEvent event = press();
    sequence.clear();
    ends.clear();
    QCoreApplication::sendEvent(&child, &event);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "parent"));
    QCOMPARE(countOf(&child, &event), 1);
    QCOMPARE(countOf(&parent, &event), 0);
}

void tst_EventTapEnds::receiverMayBeDeadAtTheEnd() {
    auto* const object = new QObject;
    object->deleteLater();
    QCoreApplication::sendPostedEvents(object, QEvent::DeferredDelete);
    QVERIFY(!ends.isEmpty());
    QCOMPARE(ends.last().receiver, object);
}

void tst_EventTapEnds::receiverDeletedByACallbackHasItsEnd() {
    auto widget = std::make_unique<Receiver>(QStringLiteral("widget"));
    QObject* const address = widget.get();
    QEvent event(QEvent::User);
    onHandOver = [&](QObject* receiver, QEvent* handed) {
        if (receiver == address && handed == &event) {
            widget.reset();
        }
    };
    QCoreApplication::sendEvent(widget.get(), &event);
    QVERIFY(widget == nullptr);
    QCOMPARE(countOf(address, &event), 1);
}

void tst_EventTapEnds::exceptionEndsADelivery() {
#ifdef __arm__
    QSKIP("Qt has no tables for unwinding there: an exception ends the bare program as well");
#endif
    Receiver widget(QStringLiteral("widget"));
    QEvent event(QEvent::User);
    widget.onEvent = [&event](QEvent* seen) {
        if (seen == &event) {
            throw 1;
        }
    };
    bool caught = false;
    try {
        qApp->notify(&widget, &event);
    } catch (int) {
        caught = true;
    }
    QVERIFY(caught);
    QCOMPARE(countOf(&widget, &event), 1);
}

void tst_EventTapEnds::deliveriesOnOtherThreadsAreNotTold() {
    QObject receiver;
    QEvent event(QEvent::User);
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        QObject elsewhere;
        QCoreApplication::sendEvent(&elsewhere, &event);
    }));
    thread->start();
    QVERIFY(thread->wait());
    for (const End& end : std::as_const(ends)) {
        QVERIFY(end.event != &event);
    }
}

void tst_EventTapEnds::deliveryThatIsUnderWayHasItsEnd() {
    static int late = 0;
    Receiver widget(QStringLiteral("widget"));
    QEvent event(QEvent::User);
    widget.onEvent = [&event](QEvent* seen) {
        if (seen == &event) {
            VorskHost::EventTap::instance().addEnd([](QObject*, QEvent*) { ++late; });
        }
    };
    QCoreApplication::sendEvent(&widget, &event);
    QCOMPARE(late, 1);
    QCOMPARE(countOf(&widget, &event), 1);
}

int main(int argc, char** argv) {
    OwnNotifyApplication app(argc, argv);
    tst_EventTapEnds test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_eventtapends.moc"
