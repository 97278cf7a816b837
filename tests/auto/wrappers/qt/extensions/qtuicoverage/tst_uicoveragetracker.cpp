// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/fakehook.h"
#include "testlib/testcase.h"
#include "tracking/streamuielementexporter.h"
#include "tracking/uicoveragetracker.h"

#include <QTest>

#include <memory>

using namespace Vorsk::UICoverage;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

namespace {

std::unique_ptr<UIElement> makeElement() {
    return std::make_unique<UIElement>(QStringLiteral("Type"), StandardType(), QString());
}

class ChildTracker : public UICoverageTracker {
public:
    using UICoverageTracker::UICoverageTracker;
    void trackChildren(QObject* object) override { tracked.append(object); }

    QList<QObject*> tracked;
};

} // namespace

class tst_UICoverageTracker : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void withoutAnExporterWorksAndExportsNothing() {
        TestLib::FakeHook hook;
        const auto element = makeElement();
        QObject object;
        UICoverageTracker tracker(nullptr);
        QCOMPARE(tracker.exporter(), nullptr);
        tracker.elementStore().addMapping(&object, element.get());
        element->setText(QStringLiteral("text"));
        QCOMPARE(tracker.element(&object), element.get());
        QVERIFY(hook.messages.isEmpty());
    }

    void takesScreenshotsUntilToldOtherwise() {
        UICoverageTracker tracker(nullptr);
        QVERIFY(tracker.takeScreenshotsOfElements());
        tracker.setTakeScreenshotsOfElements(false);
        QVERIFY(!tracker.takeScreenshotsOfElements());
        tracker.setTakeScreenshotsOfElements(true);
        QVERIFY(tracker.takeScreenshotsOfElements());
    }

    void elementOfAnUnknownOrDestroyedObjectIsNull() {
        const auto element = makeElement();
        UICoverageTracker tracker(nullptr);
        QObject unknown;
        QCOMPARE(tracker.element(&unknown), nullptr);
        QObject* address = nullptr;
        {
            QObject object;
            address = &object;
            tracker.elementStore().addMapping(&object, element.get());
            QCOMPARE(tracker.element(&object), element.get());
        }
        QCOMPARE(tracker.element(address), nullptr);
    }

    void exporterSeesEveryElementOfTheStore() {
        TestLib::FakeHook hook;
        StreamUIElementExporter exporter;
        const auto element = makeElement();
        QObject object;
        UICoverageTracker tracker(&exporter);
        QCOMPARE(tracker.exporter(), &exporter);
        QVERIFY(hook.messages.isEmpty());
        tracker.elementStore().addMapping(&object, element.get());
        QCOMPARE(hook.messages.size(), 1);
        QCOMPARE(hook.messages.at(0).args.at(2).toInt(), 1);
        element->setText(QStringLiteral("text"));
        QCOMPARE(hook.messages.size(), 2);
        QCOMPARE(hook.messages.at(1).args.at(2).toInt(), 7);
    }

    void destructionDeletesAndAnnouncesNothing() {
        TestLib::FakeHook hook;
        StreamUIElementExporter exporter;
        const auto element = makeElement();
        const QPointer<UIElement> guard(element.get());
        QObject object;
        {
            UICoverageTracker tracker(&exporter);
            tracker.elementStore().addMapping(&object, element.get());
            hook.messages.clear();
        }
        QVERIFY(!guard.isNull());
        QVERIFY(hook.messages.isEmpty());
        // The exporter is attached to the element, not to the tracker.
        element->setText(QStringLiteral("text"));
        QCOMPARE(hook.messages.size(), 1);
    }

    void rootElementsAreTheStores() {
        const auto root = makeElement();
        UIElement* const child = makeElement().release();
        root->addChild(child);
        QObject rootObject;
        QObject childObject;
        UICoverageTracker tracker(nullptr);
        QVERIFY(tracker.rootElements().isEmpty());
        tracker.elementStore().addMapping(&childObject, child);
        tracker.elementStore().addMapping(&rootObject, root.get());
        QCOMPARE(tracker.rootElements(), QList<UIElement*>{root.get()});
    }

    void trackChildrenDoesNothingHereAndCanBeOverridden() {
        TestLib::FakeHook hook;
        StreamUIElementExporter exporter;
        QObject object;
        QObject child(&object);
        UICoverageTracker plain(&exporter);
        plain.trackChildren(&object);
        QVERIFY(plain.elementStore().elements().isEmpty());
        QVERIFY(hook.messages.isEmpty());
        ChildTracker overriding(nullptr);
        UICoverageTracker& base = overriding;
        base.trackChildren(&object);
        QCOMPARE(overriding.tracked, QList<QObject*>{&object});
    }
};

QTEST_GUILESS_MAIN(tst_UICoverageTracker)
#include "tst_uicoveragetracker.moc"
