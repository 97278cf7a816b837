// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "vorskqtwrapper/eventtap.h"
#include "vorskqtwrapper/eventwrappercontext.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTest>

using namespace VorskHost;

namespace {

QObject* expected = nullptr;
int first = 0;
int second = 0;

void countFirst(QObject* object, QEvent*) {
    first += object == expected ? 1 : 0;
}

void countSecond(QObject* object, QEvent*) {
    second += object == expected ? 1 : 0;
}

void send(QObject& receiver) {
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&receiver, &event);
}

} // namespace

class tst_EventWrapperContext : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void incompleteRegistrations();
    void severalRegistrations();
};

void tst_EventWrapperContext::incompleteRegistrations() {
    EventWrapperContext context(EventTap::instance());
    context.registerEventCallback(nullptr, countFirst);
    context.registerEventCallback(&QObject::staticMetaObject, nullptr);
    expected = this;
    send(*this);
    QCOMPARE(first, 0);
}

void tst_EventWrapperContext::severalRegistrations() {
    EventWrapperContext context(EventTap::instance());
    context.registerEventCallback(&QObject::staticMetaObject, countFirst);
    context.registerEventCallback(&TestLib::TestCase::staticMetaObject, countSecond);
    QObject other;
    expected = &other;
    send(other);
    QCOMPARE(first, 1);
    QCOMPARE(second, 0);
    expected = this;
    send(*this);
    QCOMPARE(first, 2);
    QCOMPARE(second, 1);
}

QTEST_GUILESS_MAIN(tst_EventWrapperContext)
#include "tst_eventwrappercontext.moc"
