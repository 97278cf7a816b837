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
#include <QTest>

using TestLib::QuickProbe;
using TestLib::QuickScene;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

using Imports = QuickScene::Imports;
using Pictures = QuickProbe::Pictures;

/** Objects that die, and code of the application that runs, while the tracker is at work. */
class tst_QtQuickCoverageTrackerLifetime : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void objectDisconnectedFromEverybodyIsForgottenWhenItDies();
    void newItemAtTheAddressOfADisconnectedOneGetsItsOwnElement();
    void newWindowAtTheAddressOfADisconnectedOneGetsItsOwnElement();
    void eventInsideTheWindowsFirstEvent();
    void itemMayDieWhileItsWindowIsRendered_data();
    void itemMayDieWhileItsWindowIsRendered();
    void itemAtTheAddressOfOneThatDiedWhileItWasGrabbedGetsNoPictureOfIt();
    void windowMayDieWhileItIsTracked();
    void trackerMayDieBeforeTheItems();
};

void tst_QtQuickCoverageTrackerLifetime::objectDisconnectedFromEverybodyIsForgottenWhenItDies() {
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

void tst_QtQuickCoverageTrackerLifetime::newItemAtTheAddressOfADisconnectedOneGetsItsOwnElement() {
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

void tst_QtQuickCoverageTrackerLifetime::
    newWindowAtTheAddressOfADisconnectedOneGetsItsOwnElement() {
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

void tst_QtQuickCoverageTrackerLifetime::eventInsideTheWindowsFirstEvent() {
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

void tst_QtQuickCoverageTrackerLifetime::itemMayDieWhileItsWindowIsRendered_data() {
    QTest::addColumn<bool>("popupDies");
    QTest::newRow("the pressed item") << false;
    QTest::newRow("the popup around it") << true;
}

void tst_QtQuickCoverageTrackerLifetime::itemMayDieWhileItsWindowIsRendered() {
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

namespace {

/** Puts an item in the place of a popup when the window is rendered. */
class RenderingReplacer : public QQuickItem {
public:
    using QQuickItem::QQuickItem;
    TestLib::SameStorage<QQuickPopupItem>* storage = nullptr;

protected:
    void updatePolish() override { storage->make()->setParentItem(window()->contentItem()); }
};

} // namespace

void tst_QtQuickCoverageTrackerLifetime::
    itemAtTheAddressOfOneThatDiedWhileItWasGrabbedGetsNoPictureOfIt() {
    QuickProbe probe(Pictures::On);
    QQuickWindow window;
    window.resize(100, 100);
    TestLib::SameStorage<QQuickPopupItem> storage;
    QQuickPopupItem* const popup = storage.make();
    popup->setParentItem(window.contentItem());
    RenderingReplacer replacer(window.contentItem());
    replacer.storage = &storage;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    probe.show(&window);
    const UIElement* const first = probe.element(popup);
    replacer.polish();
    probe.takeRecords();
    probe.press(popup);
    // The new one was tracked as soon as it was a child, that is before the picture was taken.
    QVERIFY(probe.element(popup));
    QVERIFY(probe.element(popup) != first);
    QCOMPARE(probe.takeRecords(5), QStringList());
}

/** Deletes its window when it is looked at. */
class WindowDeleter : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(QString text READ text CONSTANT)
public:
    QString text() const {
        delete window();
        return {};
    }
};

void tst_QtQuickCoverageTrackerLifetime::windowMayDieWhileItIsTracked() {
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

void tst_QtQuickCoverageTrackerLifetime::trackerMayDieBeforeTheItems() {
    QuickProbe probe;
    QuickScene scene("Item { T.Button { objectName: 'button' } }", Imports::Templates2);
    probe.show(scene.window());
    const UIElement* const element = probe.element(scene.item("button"));
    probe.destroyTrackers();
    QVERIFY(QMetaObject::invokeMethod(scene.item("button"), "clicked"));
    QCOMPARE(element->usage().value(UIEvent(QStringLiteral("clicked"))), 0);
    const QQuickItem child(scene.root());
}

QTEST_MAIN(tst_QtQuickCoverageTrackerLifetime)

#include "tst_qtquickcoveragetrackerlifetime.moc"
