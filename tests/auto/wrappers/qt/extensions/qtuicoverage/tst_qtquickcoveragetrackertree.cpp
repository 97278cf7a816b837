#include "qtquickcoveragetracker.h"
#include "qtwidgetscoveragetracker.h"
#include "testlib/quickprobe.h"
#include "testlib/quickscene.h"
#include "testlib/samestorage.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QFocusEvent>
#include <QQuickWidget>
#include <QTest>

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
    void objectDisconnectedFromEverybodyIsForgottenWhenItDies();
    void newItemAtTheAddressOfADisconnectedOneGetsItsOwnElement();
    void newWindowAtTheAddressOfADisconnectedOneGetsItsOwnElement();
    void eventInsideTheWindowsFirstEvent();
    void itemMayDieWhileItsWindowIsRendered_data();
    void itemMayDieWhileItsWindowIsRendered();
    void windowMayDieWhileItIsTracked();
    void trackerMayDieBeforeTheItems();
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

void tst_QtQuickCoverageTrackerTree::objectDisconnectedFromEverybodyIsForgottenWhenItDies() {
    QuickProbe probe;
    QQuickWindow window;
    auto* const item = new QQuickItem(window.contentItem());
    probe.show(&window);
    item->disconnect();
    delete item;
    probe.takeRecords();
    probe.focusIn(&window);
    QCOMPARE(probe.takeRecords(4).size(), 2); // window and content item
    QCOMPARE(probe.element(item), nullptr);
}

void tst_QtQuickCoverageTrackerTree::newItemAtTheAddressOfADisconnectedOneGetsItsOwnElement() {
    QuickProbe probe;
    QQuickWindow window;
    TestLib::SameStorage<QQuickItem> storage;
    QQuickItem* item = storage.make();
    item->setParentItem(window.contentItem());
    probe.show(&window);
    const UIElement* const first = probe.element(item);
    QVERIFY(first);
    item->disconnect();
    item = storage.make();
    QCOMPARE(probe.element(item), nullptr);
    item->setParentItem(window.contentItem());
    QVERIFY(probe.element(item));
    QVERIFY(probe.element(item) != first);
    // And an observer that works.
    const QQuickItem child(item);
    QCOMPARE(probe.element(item)->children().size(), 1);
    QVERIFY(first->children().isEmpty());
}

void tst_QtQuickCoverageTrackerTree::newWindowAtTheAddressOfADisconnectedOneGetsItsOwnElement() {
    QuickProbe probe;
    TestLib::SameStorage<QQuickWindow> storage;
    QQuickWindow* window = storage.make();
    probe.show(window);
    const UIElement* const first = probe.element(window);
    window->disconnect();
    window = storage.make();
    probe.show(window);
    QVERIFY(probe.element(window) != first);
    QCOMPARE(probe.usage(window, "shown"), 1);
}

/** Delivers a press to its window when it is looked at. */
class Pressing : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QString text READ text CONSTANT)
public:
    explicit Pressing(QuickProbe* probe)
        : m_probe(probe) {}
    QString text() const {
        m_probe->press(window(), QPointF(1, 1));
        m_probe->show(window());
        return QStringLiteral("pressed");
    }

private:
    QuickProbe* m_probe;
};

void tst_QtQuickCoverageTrackerTree::eventInsideTheWindowsFirstEvent() {
    QuickProbe probe;
    QQuickWindow window;
    Pressing item(&probe);
    item.setParentItem(window.contentItem());
    probe.show(&window);
    QCOMPARE(probe.usage(&window, "shown"), 2);
    QCOMPARE(probe.element(&item)->text(), QStringLiteral("pressed"));
    QCOMPARE(probe.tracker().elementStore().elements().size(), 3);
    QCOMPARE(probe.element(&window)->children().size(), 1);
}

/** Has the name of the item that the real popups put into the window, so that it is a popup. */
class QQuickPopupItem : public QQuickItem {
    Q_OBJECT
};

namespace {

/** Deletes an item when its window is rendered, which begins with polishing. */
class RenderingDeleter : public QQuickItem {
public:
    using QQuickItem::QQuickItem;
    QPointer<QQuickItem> victim;

protected:
    void updatePolish() override { delete victim; }
};

} // namespace

void tst_QtQuickCoverageTrackerTree::itemMayDieWhileItsWindowIsRendered_data() {
    QTest::addColumn<bool>("popupDies");
    QTest::newRow("the pressed item") << false;
    QTest::newRow("the popup around it") << true;
}

void tst_QtQuickCoverageTrackerTree::itemMayDieWhileItsWindowIsRendered() {
    QFETCH(bool, popupDies);
    QuickProbe probe(Pictures::On);
    QQuickWindow window;
    window.resize(100, 100);
    const QPointer<QQuickPopupItem> popup = new QQuickPopupItem;
    popup->setParentItem(window.contentItem());
    const QPointer<QQuickItem> inside = new QQuickItem(popup);
    RenderingDeleter deleter(window.contentItem());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    probe.show(&window);
    QCOMPARE(probe.element(popup)->standardType().name(), QStringLiteral("Dialog"));
    deleter.victim = popupDies ? static_cast<QQuickItem*>(popup) : inside.data();
    deleter.polish();
    probe.takeRecords();
    probe.press(inside);
    QVERIFY(deleter.victim.isNull());
    QCOMPARE(popup.isNull(), popupDies);
    QCOMPARE(probe.takeRecords(5).size(), popupDies ? 0 : 1);
    delete popup;
}

/** Deletes its window when it is looked at. */
class WindowDeleter : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QString text READ text CONSTANT)
public:
    QString text() const {
        delete window();
        return QString();
    }
};

void tst_QtQuickCoverageTrackerTree::windowMayDieWhileItIsTracked() {
    QuickProbe probe(Pictures::On);
    const auto events = {QEvent::Show, QEvent::MouseButtonPress, QEvent::KeyPress, QEvent::FocusIn};
    for (const QEvent::Type type : events) {
        const QPointer<QQuickWindow> window = new QQuickWindow;
        WindowDeleter deleter;
        deleter.setParentItem(window->contentItem());
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QEvent other(type);
        probe.tracker().handleEvent(window, type == QEvent::MouseButtonPress ? &press : &other);
        QVERIFY(window.isNull());
    }
    QCOMPARE(probe.takeRecords(11), QStringList());
}

void tst_QtQuickCoverageTrackerTree::trackerMayDieBeforeTheItems() {
    QuickProbe probe;
    QuickScene scene("Item { T.Button { objectName: 'button' } }", Imports::Templates2);
    probe.show(scene.window());
    const UIElement* const element = probe.element(scene.item("button"));
    probe.destroyTrackers();
    QVERIFY(QMetaObject::invokeMethod(scene.item("button"), "clicked"));
    QCOMPARE(element->usage().value(UIEvent(QStringLiteral("clicked"))), 0);
    const QQuickItem child(scene.root());
}

QTEST_MAIN(tst_QtQuickCoverageTrackerTree)

#include "tst_qtquickcoveragetrackertree.moc"
