// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/vorskqtwrapper/tapprobes.h"
#include "testlib/testcase.h"
#include "vorskqtwrapper/eventtap.h"

#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QThread>

#include <typeinfo>

/* Applications that do odd things, and callbacks that do. */

using namespace TapProbes;

namespace {

int handedOverToWidgetCallback = 0;

void widgetCallback(QObject* receiver, QEvent*) {
    QVERIFY(receiver->isWidgetType());
    ++handedOverToWidgetCallback;
}

int internalCallbackCalls = 0;
QObject* consumedReceiver = nullptr;

bool internalCallback(void** parameters) {
    ++internalCallbackCalls;
    return consumedReceiver != nullptr && parameters[0] == consumedReceiver;
}

} // namespace

class tst_EventTapSafety : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void otherInternalCallbacksKeepWorking();
    void applicationsOwnNotify_data();
    void applicationsOwnNotify();
    void receiverDeletedByACallback();
    void receiverInItsDestructor();
    void exceptionThroughADelivery();
    void callbackForAClassOnly();
    void callbackRegisteredByACallback();
    void applicationKeepsItsType();
};

void tst_EventTapSafety::init() {
    TestCase::init();
    application()->mode = OwnNotifyApplication::Mode::Pass;
    clear();
}

void tst_EventTapSafety::otherInternalCallbacksKeepWorking() {
    QVERIFY(QInternal::registerCallback(QInternal::EventNotifyCallback, internalCallback));
    Receiver widget(QStringLiteral("widget"));
    Receiver consumed(QStringLiteral("consumed"));
    consumedReceiver = &consumed;
    internalCallbackCalls = 0;
    QMouseEvent event = press();
    QCoreApplication::sendEvent(&widget, &event);
    QCoreApplication::sendEvent(&consumed, &event);
    consumedReceiver = nullptr;
    QVERIFY(QInternal::unregisterCallback(QInternal::EventNotifyCallback, internalCallback));
    QCOMPARE(internalCallbackCalls, 2);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "widget"));
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "consumed"), 0);
}

void tst_EventTapSafety::applicationsOwnNotify_data() {
    using Mode = OwnNotifyApplication::Mode;
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("handed");
    QTest::addColumn<int>("seen");
    QTest::newRow("passes on") << static_cast<int>(Mode::Pass) << 1 << 1;
    QTest::newRow("swallows") << static_cast<int>(Mode::Swallow) << 1 << 0;
    QTest::newRow("passes on a copy") << static_cast<int>(Mode::PassCopy) << 1 << 1;
    QTest::newRow("delivers twice") << static_cast<int>(Mode::PassTwice) << 2 << 2;
}

void tst_EventTapSafety::applicationsOwnNotify() {
    QFETCH(int, mode);
    QFETCH(int, handed);
    QFETCH(int, seen);
    Receiver widget(QStringLiteral("widget"));
    application()->mode = static_cast<OwnNotifyApplication::Mode>(mode);
    const int callsBefore = application()->calls;
    QMouseEvent event = press();
    qApp->notify(&widget, &event);
    QCOMPARE(application()->calls, callsBefore + 1);
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "widget"), handed);
    QCOMPARE(seenCount(QEvent::MouseButtonPress, "widget"), seen);
}

void tst_EventTapSafety::receiverDeletedByACallback() {
    QPointer<QObject> widget = new Receiver(QStringLiteral("widget"));
    onHandOver = [&widget](QObject* receiver, QEvent* event) {
        if (receiver == widget && event->type() == QEvent::User) {
            delete receiver;
        }
    };
    QEvent event(QEvent::User);
    QVERIFY(QCoreApplication::sendEvent(widget, &event));
    QVERIFY(widget.isNull());
    QCOMPARE(count(handedOver, QEvent::User, "widget"), 1);

    // The same where only the filter sees it: a press on its way to the parent.
    auto* parent = new Receiver(QStringLiteral("parent"));
    widget = parent;
    Receiver child(QStringLiteral("child"), parent);
    child.accepts = false;
    onHandOver = [&widget, &child](QObject* receiver, QEvent* passedOn) {
        if (receiver == widget && passedOn->type() == QEvent::MouseButtonPress) {
            child.setParent(nullptr);
            delete receiver;
        }
    };
    QTest::mousePress(&child, Qt::LeftButton);
    QVERIFY(widget.isNull());
    QCOMPARE(count(handedOver, QEvent::MouseButtonPress, "parent"), 1);
}

void tst_EventTapSafety::receiverInItsDestructor() {
    // Qt tells an object that is being destroyed of children that leave it.
    auto* parent = new QObject;
    parent->setObjectName(QStringLiteral("dying"));
    auto* leaving = new QObject(parent);
    connect(parent, &QObject::destroyed, leaving, [leaving] { leaving->setParent(nullptr); });
    delete parent;
    delete leaving;
    QCOMPARE(count(handedOver, QEvent::ChildRemoved, "dying"), 1);
}

void tst_EventTapSafety::exceptionThroughADelivery() {
#ifdef __arm__
    QSKIP("Qt has no tables for unwinding there: an exception ends the bare program as well");
#endif
    Receiver widget(QStringLiteral("widget"));
    widget.onEvent = [](QEvent* event) {
        if (event->type() == QEvent::User) {
            throw 1;
        }
    };
    QEvent event(QEvent::User);
    bool caught = false;
    try {
        qApp->notify(&widget, &event);
    } catch (int) {
        caught = true;
    }
    QVERIFY(caught);
    QTest::mousePress(&widget, Qt::LeftButton);
    QVERIFY(onceAndFirst(QEvent::MouseButtonPress, "widget"));
}

void tst_EventTapSafety::callbackForAClassOnly() {
    VorskHost::EventTap::instance().add(&QWidget::staticMetaObject, widgetCallback);
    QObject object;
    QLineEdit edit;
    handedOverToWidgetCallback = 0;
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&object, &event);
    QCOMPARE(handedOverToWidgetCallback, 0);
    QCoreApplication::sendEvent(&edit, &event);
    QCOMPARE(handedOverToWidgetCallback, 1);
}

void tst_EventTapSafety::callbackRegisteredByACallback() {
    Receiver widget(QStringLiteral("widget"));
    bool added = false;
    onHandOver = [&added](QObject*, QEvent*) {
        // Enough that the list moves.
        for (int i = 0; i < 100 && !added; ++i) {
            VorskHost::EventTap::instance().add(&QThread::staticMetaObject, callback);
        }
        added = true;
    };
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&widget, &event);
    QVERIFY(onceAndFirst(QEvent::User, "widget"));
}

void tst_EventTapSafety::applicationKeepsItsType() {
    QVERIFY(dynamic_cast<OwnNotifyApplication*>(QCoreApplication::instance()) != nullptr);
    QVERIFY(dynamic_cast<QThread*>(static_cast<QObject*>(qApp)) == nullptr);
    QVERIFY(typeid(*QCoreApplication::instance()) == typeid(OwnNotifyApplication));
    QCOMPARE(qApp->metaObject(), &QApplication::staticMetaObject);
}

int main(int argc, char** argv) {
    OwnNotifyApplication app(argc, argv);
    tst_EventTapSafety test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_eventtapsafety.moc"
