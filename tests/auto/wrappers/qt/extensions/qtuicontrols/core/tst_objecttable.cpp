// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/core/objecttable.h"
#include "testlib/samestorage.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QTest>

#include <memory>
#include <vector>

using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIControls::ObjectTable;

class tst_ObjectTable : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void anObjectHasTheElementItWasGiven();
    void severalObjectsMayStandForOneElement();
    void anObjectThatDiedHasNone();
    void aNewObjectAtItsAddressInheritsNothing();
    void disconnectingEverythingChangesNothing();
    void doesNotGrowWithWhatHasDied();
};

namespace {

UIElement* newElement() {
    return new UIElement(QStringLiteral("QObject"), StandardType(), QString());
}

} // namespace

void tst_ObjectTable::anObjectHasTheElementItWasGiven() {
    const std::unique_ptr<UIElement> element(newElement());
    ObjectTable table;
    QObject object;
    QObject other;
    QVERIFY(table.elementOf(&object) == nullptr);
    QVERIFY(table.objectOf(element.get()) == nullptr);
    table.insert(&object, element.get());
    QCOMPARE(table.elementOf(&object), element.get());
    QCOMPARE(table.objectOf(element.get()), &object);
    QVERIFY(table.elementOf(&other) == nullptr);
    QVERIFY(table.elementOf(nullptr) == nullptr);
}

void tst_ObjectTable::severalObjectsMayStandForOneElement() {
    const std::unique_ptr<UIElement> element(newElement());
    ObjectTable table;
    QObject first;
    QObject second;
    table.insert(&first, element.get());
    table.insert(&second, element.get());
    QCOMPARE(table.elementOf(&first), element.get());
    QCOMPARE(table.elementOf(&second), element.get());
    QCOMPARE(table.objectOf(element.get()), &second);
}

void tst_ObjectTable::anObjectThatDiedHasNone() {
    const std::unique_ptr<UIElement> element(newElement());
    ObjectTable table;
    auto object = std::make_unique<QObject>();
    const QObject* const address = object.get();
    table.insert(object.get(), element.get());
    object.reset();
    QVERIFY(table.elementOf(address) == nullptr);
    QVERIFY(table.objectOf(element.get()) == nullptr);
}

void tst_ObjectTable::aNewObjectAtItsAddressInheritsNothing() {
    const std::unique_ptr<UIElement> element(newElement());
    ObjectTable table;
    TestLib::SameStorage<QObject> storage;
    storage.make();
    table.insert(storage.address(), element.get());
    storage.destroy();
    storage.make();
    QVERIFY(table.elementOf(storage.address()) == nullptr);
    QVERIFY(table.objectOf(element.get()) == nullptr);
    storage.destroy();
}

void tst_ObjectTable::disconnectingEverythingChangesNothing() {
    const std::unique_ptr<UIElement> element(newElement());
    ObjectTable table;
    auto object = std::make_unique<QObject>();
    const QObject* const address = object.get();
    table.insert(object.get(), element.get());
    object->disconnect();
    QCOMPARE(table.elementOf(address), element.get());
    object.reset();
    QVERIFY(table.elementOf(address) == nullptr);
}

void tst_ObjectTable::doesNotGrowWithWhatHasDied() {
    const std::unique_ptr<UIElement> element(newElement());
    ObjectTable table;
    std::size_t most = 0;
    std::vector<std::unique_ptr<QObject>> dying;
    for (int round = 0; round < 100; ++round) {
        dying.clear();
        for (int i = 0; i < 500; ++i) {
            dying.push_back(std::make_unique<QObject>());
            table.insert(dying.back().get(), element.get());
        }
        most = std::max(most, table.size());
    }
    QVERIFY2(most <= 2048, qPrintable(QString::number(most)));
}

QTEST_GUILESS_MAIN(tst_ObjectTable)
#include "tst_objecttable.moc"
