// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/core/deliverystack.h"
#include "testlib/testcase.h"

#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <memory>

using Vorsk::UIControls::DeliveryStack;

namespace {

/** Addresses as a stack has them that grows downwards: the higher the number, the further in. */
const void* frame(int depth) {
    return reinterpret_cast<const void*>(quintptr{0x100000} - static_cast<quintptr>(depth) * 64);
}

const QEvent press(QEvent::MouseButtonPress);
const QEvent key(QEvent::KeyPress);
const QEvent timer(QEvent::Timer);
const QEvent paint(QEvent::Paint);

} // namespace

class tst_DeliveryStack : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nothingGoesOnAtFirst();
    void inputIsNoted();
    void whatIsNoInputIsNotedWithinInputOnly();
    void whatIsNoInputIsNotedWhereAllIsKept();
    void aDeliveryEndsWhenItIsTold();
    void theEndOfADeliveryEndsWhatItPassedOn();
    void anEndThatBelongsToNoneChangesNothing();
    void aFrameThatIsLeftHasEnded();
    void aDeliveryOnTheSameLevelReplacesTheFormer();
    void whereNoEndsAreToldWhatAnInputLeadsToIsNotNoted();
    void whatBeganInAnEventLoopThatIsNoMoreHasEnded();
    void theReceiverMayDie();
    void aReceiverThatIsBeingDestroyedIsNotGuarded();
};

void tst_DeliveryStack::nothingGoesOnAtFirst() {
    DeliveryStack stack;
    QVERIFY(stack.isEmpty());
    QVERIFY(stack.innermost(frame(9)) == nullptr);
}

void tst_DeliveryStack::inputIsNoted() {
    DeliveryStack stack;
    QObject receiver;
    stack.begin(&receiver, &press, press.type(), frame(1));
    const DeliveryStack::Delivery* const innermost = stack.innermost(frame(5));
    QVERIFY(innermost != nullptr);
    QCOMPARE(innermost->living.data(), &receiver);
    QCOMPARE(innermost->type, QEvent::MouseButtonPress);
}

void tst_DeliveryStack::whatIsNoInputIsNotedWithinInputOnly() {
    DeliveryStack stack;
    QObject receiver;
    stack.begin(&receiver, &timer, timer.type(), frame(1));
    QVERIFY(stack.isEmpty());
    stack.begin(&receiver, &press, press.type(), frame(1));
    stack.begin(&receiver, &timer, timer.type(), frame(3));
    QCOMPARE(stack.innermost(frame(5))->type, QEvent::Timer);
}

void tst_DeliveryStack::whatIsNoInputIsNotedWhereAllIsKept() {
    DeliveryStack stack;
    QObject receiver;
    stack.setKeepsAll(true);
    stack.begin(&receiver, &timer, timer.type(), frame(1));
    QCOMPARE(stack.innermost(frame(5))->living.data(), &receiver);
    stack.setKeepsAll(false);
    stack.end(&receiver, &timer);
    stack.begin(&receiver, &timer, timer.type(), frame(1));
    QVERIFY(stack.isEmpty());
}

void tst_DeliveryStack::aDeliveryEndsWhenItIsTold() {
    DeliveryStack stack;
    QObject outer;
    QObject inner;
    stack.begin(&outer, &press, press.type(), frame(1));
    stack.begin(&inner, &timer, timer.type(), frame(3));
    stack.end(&inner, &timer);
    QCOMPARE(stack.innermost(frame(5))->receiver, &outer);
    stack.end(&outer, &press);
    QVERIFY(stack.isEmpty());
}

/** A key that a widget ignores reaches its parent within the same delivery, of which there is one
 * end. */
void tst_DeliveryStack::theEndOfADeliveryEndsWhatItPassedOn() {
    DeliveryStack stack;
    QObject child;
    QObject parent;
    stack.begin(&child, &key, key.type(), frame(1));
    stack.begin(&parent, &key, key.type(), frame(2));
    QCOMPARE(stack.innermost(frame(5))->receiver, &parent);
    stack.end(&child, &key);
    QVERIFY(stack.isEmpty());
}

void tst_DeliveryStack::anEndThatBelongsToNoneChangesNothing() {
    DeliveryStack stack;
    QObject receiver;
    QObject other;
    stack.begin(&receiver, &press, press.type(), frame(1));
    stack.end(&other, &press);
    stack.end(&receiver, &timer);
    QVERIFY(stack.innermost(frame(5)) != nullptr);
}

void tst_DeliveryStack::aFrameThatIsLeftHasEnded() {
    DeliveryStack stack;
    QObject receiver;
    stack.begin(&receiver, &press, press.type(), frame(4));
    QVERIFY(stack.innermost(frame(5)) != nullptr);
    QVERIFY(stack.innermost(frame(4)) == nullptr);
    QVERIFY(stack.isEmpty());
}

void tst_DeliveryStack::aDeliveryOnTheSameLevelReplacesTheFormer() {
    DeliveryStack stack;
    QObject outer;
    QObject first;
    QObject second;
    stack.begin(&outer, &press, press.type(), frame(1));
    stack.begin(&first, &timer, timer.type(), frame(3));
    const QEvent call(QEvent::MetaCall);
    stack.begin(&second, &call, call.type(), frame(3));
    QCOMPARE(stack.innermost(frame(5))->receiver, &second);
    stack.end(&second, &call);
    QCOMPARE(stack.innermost(frame(5))->receiver, &outer);
}

void tst_DeliveryStack::whereNoEndsAreToldWhatAnInputLeadsToIsNotNoted() {
    DeliveryStack stack;
    QObject outer;
    QObject inner;
    stack.begin(&outer, &press, press.type(), frame(1));
    stack.begin(&inner, &paint, paint.type(), frame(3));
    QCOMPARE(stack.innermost(frame(9))->receiver, &outer);
    stack.begin(&inner, &timer, timer.type(), frame(3));
    QCOMPARE(stack.innermost(frame(9))->receiver, &inner);
    stack.end(&inner, &timer);
    stack.begin(&inner, &paint, paint.type(), frame(3));
    QCOMPARE(stack.innermost(frame(9))->receiver, &inner);
}

void tst_DeliveryStack::whatBeganInAnEventLoopThatIsNoMoreHasEnded() {
    DeliveryStack stack;
    QObject outer;
    QObject inner;
    stack.begin(&outer, &press, press.type(), frame(1));
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        stack.begin(&inner, &key, key.type(), frame(3));
        QCOMPARE(stack.innermost(frame(9))->receiver, &inner);
        loop.quit();
    });
    loop.exec();
    // Further in than the one of the loop, which the frames alone would not tell from being within
    // it.
    QCOMPARE(stack.innermost(frame(9))->receiver, &outer);
}

void tst_DeliveryStack::theReceiverMayDie() {
    DeliveryStack stack;
    auto receiver = std::make_unique<QObject>();
    stack.begin(receiver.get(), &press, press.type(), frame(1));
    receiver.reset();
    QVERIFY(stack.innermost(frame(5))->living.isNull());
}

void tst_DeliveryStack::aReceiverThatIsBeingDestroyedIsNotGuarded() {
    DeliveryStack stack;
    int told = 0;
    {
        QObject receiver;
        connect(&receiver, &QObject::destroyed, this, [&](QObject* dying) {
            stack.begin(dying, &press, press.type(), frame(1));
            QVERIFY(stack.innermost(frame(5))->living.isNull());
            QCOMPARE(stack.innermost(frame(5))->receiver, dying);
            ++told;
        });
    }
    QCOMPARE(told, 1);
}

QTEST_GUILESS_MAIN(tst_DeliveryStack)
#include "tst_deliverystack.moc"
