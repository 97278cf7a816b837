// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "tracking/qtobjectobserver.h"
#include "tracking/uicoveragetracker.h"
#include "uiabstraction/uielement.h"

#include <QTest>

#include <memory>

using namespace Vorsk::UICoverage;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

namespace {

class CountingObject : public QObject {
public:
    int destroyedReceivers() const { return receivers(SIGNAL(destroyed())); }
};

} // namespace

class tst_QtObjectObserver : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void hasOnePrivateSlot() {
        const QMetaObject& meta = QtObjectObserver::staticMetaObject;
        QCOMPARE(meta.className(), "Vorsk::UICoverage::QtObjectObserver");
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
        const QMetaMethod slot = meta.method(meta.methodOffset());
        QCOMPARE(slot.methodType(), QMetaMethod::Slot);
        QCOMPARE(slot.access(), QMetaMethod::Private);
        QCOMPARE(slot.methodSignature(), QByteArray("objectDestroyed()"));
    }

    void keepsWhatItIsGivenAndOwnsNothing() {
        UIElement element(QStringLiteral("Type"), StandardType(), QString());
        UICoverageTracker tracker(nullptr);
        QObject object;
        {
            const QtObjectObserver observer(&object, &element, &tracker);
            QCOMPARE(observer.observedObject(), &object);
            QCOMPARE(observer.element(), &element);
            QCOMPARE(observer.tracker(), &tracker);
            QCOMPARE(observer.parent(), nullptr);
            QVERIFY(element.usage().isEmpty());
            QVERIFY(element.text().isNull());
        }
        // Would be deleted twice otherwise, which the sanitizers see.
        QVERIFY(object.children().isEmpty());
    }

    void connectsNothingToTheObjectsDestruction() {
        UIElement element(QStringLiteral("Type"), StandardType(), QString());
        CountingObject object;
        const QtObjectObserver observer(&object, &element, nullptr);
        QCOMPARE(object.destroyedReceivers(), 0);
    }

    void survivesItsObject() {
        UIElement element(QStringLiteral("Type"), StandardType(), QString());
        auto object = std::make_unique<QObject>();
        const QtObjectObserver observer(object.get(), &element, nullptr);
        object.reset();
        QCOMPARE(observer.observedObject(), nullptr);
        QCOMPARE(observer.element(), &element);
    }

    void noticesADeathThatIsNotAnnounced() {
        UIElement element(QStringLiteral("Type"), StandardType(), QString());
        auto object = std::make_unique<QObject>();
        const QtObjectObserver observer(object.get(), &element, nullptr);
        object->disconnect();
        object.reset();
        QCOMPARE(observer.observedObject(), nullptr);
    }
};

QTEST_GUILESS_MAIN(tst_QtObjectObserver)
#include "tst_qtobjectobserver.moc"
