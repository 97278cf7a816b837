// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtquickcoveragetracker.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/quickprobe.h"
#include "testlib/quickscene.h"
#include "testlib/samestorage.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QFocusEvent>
#include <QQuickWidget>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using TestLib::QuickProbe;
using TestLib::QuickScene;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

using Imports = QuickScene::Imports;
using Pictures = QuickProbe::Pictures;

/** What becomes of the elements when items come, move and go, in ways that applications have. */
class tst_QtQuickCoverageTrackerTree : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void laterChildrenAreTracked();
    void childrenAreTrackedThroughTheVirtualTable();
    void itemThatDiesLeavesItsElementInTheTree();
    void itemMovedToAnotherWindowIsListedInBoth();
    void itemMovedBelowItsFormerChildMakesNoEndlessWalk();
    void unknownItemWithAKnownChildListsItTwice();
    void loaderSwapsItsContent();
    void listViewRecyclesItsDelegates();
    void popupOfVersion2IsTrackedWhenItOpens();
    void quickWidgetInsideAWidgetWindow();
    void widgetsTrackerMakesNothingOfAQuickWindow();
};

void tst_QtQuickCoverageTrackerTree::laterChildrenAreTracked() {
    QuickProbe probe;
    QuickScene scene("Item { }");
    probe.show(scene.window());
    probe.takeRecords();
    const std::unique_ptr<QObject> made(scene.create("Rectangle { Text { objectName: 'text' } }"));
    auto* const item = qobject_cast<QQuickItem*>(made.get());
    QCOMPARE(probe.element(item), nullptr);
    item->setParentItem(scene.root());
    QCOMPARE(probe.takeRecords()
                 .filter(QRegularExpression(QStringLiteral("^kind [12] ")))
                 .replaceInStrings(QRegularExpression(QStringLiteral("_\\d+")), QString())
                 .join(QLatin1Char('\n')),
             QStringLiteral("kind 1 elementAdded #4 unknown/Scene_QMLTYPE transparent\n"
                            "kind 2 childAdded #3 #4\n"
                            "kind 1 elementAdded #5 unknown/QQuickText transparent\n"
                            "kind 2 childAdded #4 #5"));
}

namespace {

class ListeningTracker : public Vorsk::UICoverage::QtQuickCoverageTracker {
public:
    using QtQuickCoverageTracker::QtQuickCoverageTracker;
    void trackChildren(QObject* object) override {
        tracked.append(object);
        QtQuickCoverageTracker::trackChildren(object);
    }
    QList<QObject*> tracked;
};

} // namespace

void tst_QtQuickCoverageTrackerTree::childrenAreTrackedThroughTheVirtualTable() {
    QQuickWindow window;
    QQuickItem parent;
    QQuickItem child(&parent);
    ListeningTracker tracker(nullptr);
    tracker.windowElement(&window);
    QVERIFY(tracker.tracked.isEmpty());
    parent.setParentItem(window.contentItem());
    QCOMPARE(tracker.tracked, (QList<QObject*>{window.contentItem(), &parent}));
    parent.setParentItem(nullptr);
    delete tracker.element(&window);
}

void tst_QtQuickCoverageTrackerTree::itemThatDiesLeavesItsElementInTheTree() {
    QuickProbe probe;
    QQuickWindow window;
    auto* const item = new QQuickItem(window.contentItem());
    probe.show(&window);
    const UIElement* const element = probe.element(item);
    probe.takeRecords();
    delete item;
    QCOMPARE(probe.takeRecords(), QStringList());
    QCOMPARE(probe.element(item), nullptr);
    QCOMPARE(probe.element(window.contentItem())->children().size(), 1);
    QCOMPARE(probe.element(window.contentItem())->children().constFirst(), element);
    QCOMPARE(probe.tracker().elementStore().elements().size(), 2);
}

void tst_QtQuickCoverageTrackerTree::itemMovedToAnotherWindowIsListedInBoth() {
    QuickProbe probe;
    QQuickWindow first;
    QQuickWindow second;
    QQuickItem item(first.contentItem());
    QQuickItem child(&item);
    item.setSize(QSizeF(10, 10));
    probe.show(&first);
    probe.show(&second);
    UIElement* const element = probe.element(&item);
    item.setParentItem(second.contentItem());
    // Known already, so nothing is made of the move ...
    QCOMPARE(probe.element(&item), element);
    QVERIFY(probe.element(second.contentItem())->children().isEmpty());
    // ... but its place is that in its window now, and so is what follows.
    probe.focusIn(&second);
    QCOMPARE(element->geometry().rect(), QRect(0, 0, 10, 10));
    const QQuickItem later(&item);
    QCOMPARE(probe.element(&item)->children().size(), 2);
    QCOMPARE(element->parent(), probe.element(first.contentItem()));
    // Into a window that becomes known only now.
    QQuickWindow third;
    item.setParentItem(third.contentItem());
    probe.show(&third);
    QCOMPARE(probe.element(third.contentItem())->children(), QList<UIElement*>{element});
    QCOMPARE(probe.element(first.contentItem())->children(), QList<UIElement*>{element});
    item.setParentItem(nullptr);
}

void tst_QtQuickCoverageTrackerTree::itemMovedBelowItsFormerChildMakesNoEndlessWalk() {
    QuickProbe probe;
    QQuickWindow window;
    window.resize(100, 100);
    QQuickItem a(window.contentItem());
    QQuickItem x(&a);
    probe.show(&window);
    x.setParentItem(window.contentItem());
    QQuickItem p;
    a.setParentItem(&p);
    p.setParentItem(&x);
    QVERIFY(probe.element(&p));
    // Now a lists x, x lists p and p lists a.
    QVERIFY(probe.element(&a)->children().contains(probe.element(&x)));
    QVERIFY(probe.element(&x)->children().contains(probe.element(&p)));
    QVERIFY(probe.element(&p)->children().contains(probe.element(&a)));
    for (QQuickItem* item : {&a, &x, &p}) {
        item->setSize(QSizeF(10, 10));
    }
    probe.focusIn(&window);
    probe.press(&window, QPointF(5, 5));
    QCOMPARE(probe.usage(&window, "clicked"), 1);
    QCOMPARE(probe.usage(&a, "clicked"), 1);
    QCOMPARE(probe.usage(&x, "clicked"), 1);
    QCOMPARE(probe.usage(&p, "clicked"), 1);
    QVERIFY(!probe.tree(&window).isEmpty());
    for (QQuickItem* item : {&a, &x, &p}) {
        item->setParentItem(nullptr);
    }
}

void tst_QtQuickCoverageTrackerTree::unknownItemWithAKnownChildListsItTwice() {
    QuickProbe probe;
    QQuickWindow window;
    window.resize(100, 100);
    QQuickItem known(window.contentItem());
    known.setSize(QSizeF(10, 10));
    probe.show(&window);
    QQuickItem unknown;
    known.setParentItem(&unknown);
    unknown.setParentItem(window.contentItem());
    QCOMPARE(probe.element(&unknown)->children(), QList<UIElement*>{probe.element(&known)});
    QCOMPARE(probe.element(window.contentItem())->children(),
             (QList<UIElement*>{probe.element(&known), probe.element(&unknown)}));
    // A hit counts once for each way to it.
    probe.focusIn(&window);
    probe.press(&window, QPointF(5, 5));
    QCOMPARE(probe.usage(&known, "clicked"), 2);
    QCOMPARE(probe.usage(&window, "clicked"), 1);
    known.setParentItem(nullptr);
    unknown.setParentItem(nullptr);
    // The elements are deleted once each, when the probe dies.
}

void tst_QtQuickCoverageTrackerTree::loaderSwapsItsContent() {
    QuickProbe probe;
    QuickScene scene(
        "Item {"
        " property Component one: Component { T.Button { objectName: 'one'; text: 'One' } }\n"
        " property Component two: Component { T.Button { objectName: 'two'; text: 'Two' } }\n"
        " property int page: 1;"
        " Loader { objectName: 'loader'; sourceComponent: page == 1 ? one : two } }",
        Imports::Templates2);
    probe.start();
    QVERIFY(scene.show());
    QQuickItem* const loader = scene.item("loader");
    const QPointer<QQuickItem> one = scene.item("one");
    QVERIFY(probe.element(one));
    scene.root()->setProperty("page", 2);
    QTRY_VERIFY(one.isNull());
    QVERIFY(probe.element(scene.item("two")));
    QStringList texts;
    const QList<UIElement*> children = probe.element(loader)->children();
    for (const UIElement* child : children) {
        texts.append(child->text());
    }
    QCOMPARE(texts, QStringList({QStringLiteral("One"), QStringLiteral("Two")}));
    QVERIFY(QMetaObject::invokeMethod(scene.item("two"), "clicked"));
    QCOMPARE(probe.usage(scene.item("two"), "clicked"), 1);
    QCOMPARE(children.constFirst()->usage().value(UIEvent(QStringLiteral("clicked"))), 0);
}

void tst_QtQuickCoverageTrackerTree::listViewRecyclesItsDelegates() {
    QuickProbe probe;
    QuickScene scene("ListView { width: 200; height: 100; cacheBuffer: 0; model: 500;"
                     " delegate: T.Button { width: 200; height: 20; text: 'Row ' + index } }",
                     Imports::Templates2);
    probe.start();
    QVERIFY(scene.show());
    auto* const content = scene.root()->property("contentItem").value<QQuickItem*>();
    const auto everyDelegateIsKnown = [&probe, content] {
        int known = 0;
        const QList<QQuickItem*> items = content->childItems();
        for (QQuickItem* item : items) {
            known += probe.element(item) != nullptr ? 1 : 0;
        }
        return known == items.size() && known > 0;
    };
    QVERIFY(everyDelegateIsKnown());
    for (int y = 0; y <= 9900; y += 100) {
        scene.root()->setProperty("contentY", y);
        QMetaObject::invokeMethod(scene.root(), "forceLayout");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(everyDelegateIsKnown());
    }
    // Each row that was ever seen has an element of its own. Only what was there before the window
    // was shown has its text: a later row is given its parent before its properties are bound.
    QStringList texts;
    const QList<UIElement*> rows = probe.element(content)->children();
    for (const UIElement* row : rows) {
        if (row->standardType().name() == QLatin1String("Button")) {
            texts.append(row->text());
        }
    }
    QCOMPARE(texts.size(), 500);
    QCOMPARE(texts.constFirst(), QStringLiteral("Row 0"));
    QCOMPARE(texts.constLast(), QString());
    // Those that are gone are listed no more.
    QVERIFY(probe.tracker().elementStore().elements().size() < 100);
    probe.focusIn(scene.window());
}

void tst_QtQuickCoverageTrackerTree::popupOfVersion2IsTrackedWhenItOpens() {
    QuickProbe probe(Pictures::Off, TestLib::TreePrinter::Sizes::Hidden);
    QuickScene scene("ApplicationWindow { width: 300; height: 200; title: 'Window';"
                     " T.Popup { objectName: 'popup'; width: 100; height: 50;"
                     "  T.Button { text: 'Inside' } } }",
                     Imports::Templates2);
    probe.start();
    QVERIFY(scene.show());
    QObject* const popup = scene.object("popup");
    QVERIFY(!probe.tree(scene.window()).contains(QLatin1String("Dialog/")));
    QVERIFY(QMetaObject::invokeMethod(popup, "open"));
    const QString tree = probe.tree(scene.window());
    QVERIFY2(tree.contains(QLatin1String("Dialog/QQuickPopupItem window")), qPrintable(tree));
    QVERIFY2(tree.contains(QLatin1String("Button/QQuickButton \"Inside\"")), qPrintable(tree));
}

void tst_QtQuickCoverageTrackerTree::quickWidgetInsideAWidgetWindow() {
    QuickProbe probe(Pictures::Off, TestLib::TreePrinter::Sizes::Shown, QuickProbe::Toolkits::Both);
    QuickScene scene("Item { width: 100; height: 100;"
                     " T.Button { objectName: 'button'; width: 50; height: 50; text: 'Quick' } }",
                     Imports::Templates2);
    QWidget window;
    auto* const quickWidget = new QQuickWidget(&window);
    quickWidget->setContent(QUrl(), nullptr, scene.root());
    probe.start();
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::mouseClick(quickWidget, Qt::LeftButton, Qt::NoModifier, QPoint(25, 25));
    // The widget belongs to one tracker, its items, which no show or focus of a window announces
    // but a press does, to the other.
    QVERIFY(probe.widgetsTracker()->element(quickWidget));
    QVERIFY(probe.widgetsTracker()->element(&window));
    QCOMPARE(probe.element(quickWidget), nullptr);
    QVERIFY(probe.element(quickWidget->quickWindow()));
    QQuickItem* const button = scene.root()->childItems().constFirst();
    QCOMPARE(probe.usage(button, "clicked"), 1);
    QCOMPARE(probe.element(button)->text(), QStringLiteral("Quick"));
    scene.root()->setParentItem(nullptr);
}

void tst_QtQuickCoverageTrackerTree::widgetsTrackerMakesNothingOfAQuickWindow() {
    QuickProbe probe(Pictures::Off, TestLib::TreePrinter::Sizes::Shown, QuickProbe::Toolkits::Both);
    QuickScene scene("Item { }");
    probe.start();
    QVERIFY(scene.show());
    QVERIFY(probe.element(scene.window()));
    QVERIFY(probe.widgetsTracker()->elementStore().elements().isEmpty());
}

QTEST_MAIN(tst_QtQuickCoverageTrackerTree)

#include "tst_qtquickcoveragetrackertree.moc"
