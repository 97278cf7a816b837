// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "vorskqtwrapper/notifyinterceptor.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTest>

#include <array>
#include <memory>
#include <typeinfo>

using VorskHost::NotifyInterceptor;

namespace {

NotifyInterceptor* current = nullptr;
int replacements = 0;
int originals = 0;

bool replacement(QCoreApplication* application, QObject* receiver, QEvent* event) {
    ++replacements;
    return current->original()(application, receiver, event);
}

/** A second base, a virtual base and further virtual functions: all that makes a table odd. */
class Side {
public:
    virtual ~Side() = default;
    virtual int side() const { return 1; }
    int value = 11;
};

class Shared {
public:
    virtual ~Shared() = default;
    virtual int shared() const { return 2; }
    int value = 22;
};

class OddApplication : public Side, public QCoreApplication, public virtual Shared {
public:
    using QCoreApplication::QCoreApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        ++originals;
        return QCoreApplication::notify(receiver, event);
    }
    int side() const override { return 3; }
    int shared() const override { return value() + 4; }
    virtual int own() const { return 5; }

private:
    int value() const { return Shared::value; }
};

int argumentCount = 1;
std::array<char, 2> argumentText{'x', '\0'};
std::array<char*, 2> arguments{argumentText.data(), nullptr};

void send() {
    QEvent event(QEvent::User);
    QObject receiver;
    QCoreApplication::sendEvent(&receiver, &event);
}

} // namespace

class tst_NotifyInterceptor : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void everyDeliveryIsIntercepted();
    void detach();
    void attachTwice();
    void restOfTheObjectIsUntouched();
    void otherObjectsOfTheClassAreUntouched();
    void tableThatIsNobodys();

private:
    OddApplication* m_application = nullptr;
    std::unique_ptr<NotifyInterceptor> m_interceptor;
};

void tst_NotifyInterceptor::initTestCase() {
    m_application = static_cast<OddApplication*>(QCoreApplication::instance());
}

void tst_NotifyInterceptor::init() {
    TestCase::init();
    m_interceptor = std::make_unique<NotifyInterceptor>();
    current = m_interceptor.get();
    replacements = 0;
    originals = 0;
}

void tst_NotifyInterceptor::cleanup() {
    m_interceptor->detach(m_application);
    TestCase::cleanup();
}

void tst_NotifyInterceptor::cleanupTestCase() {
    m_interceptor.reset();
}

void tst_NotifyInterceptor::everyDeliveryIsIntercepted() {
    QVERIFY(!m_interceptor->isAttached(m_application));
    QVERIFY(m_interceptor->attach(m_application, replacement));
    QVERIFY(m_interceptor->isAttached(m_application));
    replacements = 0;
    originals = 0;
    send();
    QCOMPARE(replacements, 1);
    QCOMPARE(originals, 1);
    QEvent event(QEvent::User);
    QCoreApplication::instance()->notify(this, &event);
    QCOMPARE(replacements, 2);
    QCOMPARE(originals, 2);
}

void tst_NotifyInterceptor::detach() {
    QVERIFY(m_interceptor->attach(m_application, replacement));
    m_interceptor->detach(m_application);
    QVERIFY(!m_interceptor->isAttached(m_application));
    replacements = 0;
    originals = 0;
    send();
    QCOMPARE(replacements, 0);
    QCOMPARE(originals, 1);
}

void tst_NotifyInterceptor::attachTwice() {
    QVERIFY(m_interceptor->attach(m_application, replacement));
    QVERIFY(m_interceptor->attach(m_application, replacement));
    replacements = 0;
    send();
    QCOMPARE(replacements, 1);
}

void tst_NotifyInterceptor::restOfTheObjectIsUntouched() {
    QVERIFY(m_interceptor->attach(m_application, replacement));
    // Through the base, so that the table is asked.
    QCoreApplication* application = QCoreApplication::instance();
    QVERIFY(dynamic_cast<OddApplication*>(application) == m_application);
    QVERIFY(dynamic_cast<void*>(application) == dynamic_cast<void*>(m_application));
    QVERIFY(typeid(*application) == typeid(OddApplication));
    const Side* side = dynamic_cast<Side*>(application);
    QVERIFY(side != nullptr);
    QCOMPARE(side->side(), 3);
    const Shared* shared = dynamic_cast<Shared*>(application);
    QVERIFY(shared != nullptr);
    QCOMPARE(shared->shared(), 26);
    QCOMPARE(m_application->own(), 5);
    QCOMPARE(application->metaObject(), &QCoreApplication::staticMetaObject);
    QVERIFY(application->inherits("QCoreApplication"));
}

void tst_NotifyInterceptor::otherObjectsOfTheClassAreUntouched() {
    QVERIFY(m_interceptor->attach(m_application, replacement));
    // The class's own table still leads to the class's own function.
    QEvent event(QEvent::User);
    replacements = 0;
    m_application->OddApplication::notify(this, &event);
    QCOMPARE(replacements, 0);
}

void tst_NotifyInterceptor::tableThatIsNobodys() {
    // Somebody else has done the same: a table on the heap, of which nobody knows how long it is.
    QVERIFY(m_interceptor->attach(m_application, replacement));
    NotifyInterceptor second;
    QVERIFY(!second.attach(m_application, replacement));
    QVERIFY(!second.isAttached(m_application));
    replacements = 0;
    send();
    QCOMPARE(replacements, 1);
}

int main(int argc, char** argv) {
    OddApplication application(argumentCount, arguments.data());
    tst_NotifyInterceptor test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_notifyinterceptor.moc"
