// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// What the items count: the second half of the tests that menus and menu bars have in common.
#include "menuobservertest.h"
#include "qtuicoverage/names.h"
#include "qtuicoverage/qtwidgetobserver.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/samestorage.h"
#include "uiabstraction/uielement.h"

#include <QAction>
#include <QMenu>
#include <QTest>

using namespace Vorsk::UICoverage;
using Vorsk::UIAbstraction::StandardType;

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

} // namespace

void MenuObserverTest::noteTriggered(QAction* action) {
    m_triggered = action;
}

void MenuObserverTest::deleteTriggered(QAction* action) {
    delete action;
}

void MenuObserverTest::triggeredActionIsFoundByItsStrippedText() {
    addAction("&Open");
    QAction* const file = addAction("&File");
    observe();
    file->trigger();
    QCOMPARE(clicks(0), 0);
    QCOMPARE(clicks(1), 1);
    QCOMPARE(m_probe->takeLog(), QStringList());
}

void MenuObserverTest::triggeredActionsWithEqualTextsCountTheFirst() {
    QAction* const first = addAction("&Same");
    QAction* const second = addAction("Sam&e");
    observe();
    first->trigger();
    second->trigger();
    QCOMPARE(clicks(0), 2);
    QCOMPARE(clicks(1), 0);
    countUsageAt(m_observer.get(), actionGeometry(m_widget.get(), second).center());
    QCOMPARE(clicks(0), 2);
    QCOMPARE(clicks(1), 1);
}

void MenuObserverTest::triggeredActionsOfSubMenusAreIgnored() {
    auto* const menu = new QMenu(text("Sub"), m_widget.get());
    m_widget->addAction(menu->menuAction());
    QAction* const inner = menu->addAction(text("Sub"));
    observe();
    m_triggered = nullptr;
    connect(m_widget.get(), SIGNAL(triggered(QAction*)), this, SLOT(noteTriggered(QAction*)));
    inner->trigger();
    QCOMPARE(m_triggered, inner); // the signal came
    QCOMPARE(clicks(0), 0);
    QCOMPARE(m_probe->takeLog(), QStringList());
}

void MenuObserverTest::triggeredActionWithoutAChildOfItsTextIsReported() {
    QAction* const action = addAction("Before");
    observe();
    action->setText(text("&After"));
    action->trigger();
    QCOMPARE(m_probe->takeLog(), QStringList{text("warning: Unregistered child &After encounted")});
    QCOMPARE(clicks(0), 0);
}

void MenuObserverTest::triggeredActionWithTheTextOfAnotherTypeIsReported_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("warning");
    QTest::newRow("a button") << text("Button")
                              << text(
                                     "warning: Action is registered as Button -- not handled, yet");
    QTest::newRow("no type") << QString()
                             << text(
                                    "warning: Action is registered as unknown -- not handled, yet");
}

void MenuObserverTest::triggeredActionWithTheTextOfAnotherTypeIsReported() {
    QFETCH(QString, type);
    QFETCH(QString, warning);
    QAction* const action = addAction("Before");
    observe();
    auto* const other = new UIElement(text("Other"), StandardType(type), QString());
    other->setText(text("After"));
    m_element->addChild(other);
    action->setText(text("&After"));
    action->trigger();
    QCOMPARE(m_probe->takeLog(), QStringList{warning});
    QVERIFY(other->usage().isEmpty());
    QCOMPARE(clicks(0), 0);
}

void MenuObserverTest::addressOfADeadActionStaysObserved() {
    TestLib::SameStorage<QAction> storage;
    QAction* const action = storage.make(text("Old"), nullptr);
    m_widget->addAction(action);
    observe();
    QCOMPARE(clicks(0), 0);
    storage.destroy();
    // The item stays in the tree, and a new action at the address passes for an observed one.
    QCOMPARE(m_element->children().size(), 1);
    QCOMPARE(storage.make(text("Old"), nullptr), action);
    m_widget->addAction(action);
    action->trigger();
    QCOMPARE(clicks(0), 1);
    action->setText(text("New"));
    action->trigger();
    QCOMPARE(m_probe->takeLog(), QStringList{text("warning: Unregistered child New encounted")});
}

void MenuObserverTest::triggeredActionThatTheApplicationDeletesFirstIsIgnored() {
    // Menus of recent files do that: they are cleared and filled anew when one is chosen.
    connect(m_widget.get(), SIGNAL(triggered(QAction*)), this, SLOT(deleteTriggered(QAction*)));
    QAction* const action = addAction("One");
    observe();
    action->trigger();
    QVERIFY(m_widget->actions().isEmpty());
    QCOMPARE(clicks(0), 0);
    QCOMPARE(m_probe->takeLog(), QStringList());
}

void MenuObserverTest::triggeredNewActionAtADeadOnesAddressElsewhereIsReported() {
    TestLib::SameStorage<QAction> storage;
    QAction* const action = storage.make(text("Old"), nullptr);
    m_widget->addAction(action);
    auto* const menu = new QMenu(text("Sub"), m_widget.get());
    m_widget->addAction(menu->menuAction());
    observe();
    // The widget says "triggered" of its sub-menus' actions as well.
    QCOMPARE(storage.make(text("New"), nullptr), action);
    menu->addAction(action);
    action->trigger();
    QCOMPARE(m_probe->takeLog(), QStringList{text("warning: Unregistered child New encounted")});
    menu->removeAction(action);
}

void MenuObserverTest::pressCountsOnTheActionsOwnItem() {
    addAction("One");
    QAction* const two = addAction("Two");
    observe();
    countUsageAt(m_observer.get(), actionGeometry(m_widget.get(), two).center());
    countUsageAt(m_observer.get(), actionGeometry(m_widget.get(), two).topLeft());
    QCOMPARE(clicks(0), 0);
    QCOMPARE(clicks(1), 2);
    QCOMPARE(m_probe->takeLog(), QStringList());
}

void MenuObserverTest::pressOnNoActionIsReported_data() {
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<QString>("warning");
    QTest::newRow("empty part") << QPoint(590, 390)
                                << text("warning: No action at given position: (590,390)");
    QTest::newRow("outside") << QPoint(-1, -22)
                             << text("warning: No action at given position: (-1,-22)");
}

void MenuObserverTest::pressOnNoActionIsReported() {
    QFETCH(QPoint, position);
    QFETCH(QString, warning);
    addAction("One");
    observe();
    countUsageAt(m_observer.get(), position);
    QCOMPARE(m_probe->takeLog(), QStringList{warning});
    QCOMPARE(clicks(0), 0);
}

void MenuObserverTest::pressOnALaterActionIsReported() {
    addAction("One");
    observe();
    QAction* const later = addAction("&Later");
    countUsageAt(m_observer.get(), actionGeometry(m_widget.get(), later).center());
    QCOMPARE(m_probe->takeLog(),
             QStringList{text("warning: Unregistered action occurred: { text='&Later' }")});
}

void MenuObserverTest::pressOnANewActionAtADeadOnesAddressIsReported() {
    TestLib::SameStorage<QAction> storage;
    QAction* const action = storage.make(text("Old"), nullptr);
    m_widget->addAction(action);
    observe();
    action->disconnect();
    QCOMPARE(storage.make(text("New"), nullptr), action);
    m_widget->addAction(action);
    countUsageAt(m_observer.get(), actionGeometry(m_widget.get(), action).center());
    QCOMPARE(m_probe->takeLog(),
             QStringList{text("warning: Unregistered action occurred: { text='New' }")});
    QCOMPARE(clicks(0), 0);
}

void MenuObserverTest::grabbingSetsAPictureOfEachItemAndReportsTheOthers() {
    addAction("One");
    addSeparator();
    addAction("Two");
    addSeparator();
    addAction("Three");
    observe();
    addAction("&Later");
    m_probe->takeRecords();
    grabActionImages(m_observer.get());
    QCOMPARE(m_probe->takeLog(),
             (QStringList{text("warning: Tried to grab unregistered action: ''"),
                          text("warning: Tried to grab unregistered action: ''"),
                          text("warning: Tried to grab unregistered action: '&Later'")}));
    QCOMPARE(m_probe->takeRecords(), (QStringList{text("kind 5 imageChanged #2 image"),
                                                  text("kind 5 imageChanged #3 image"),
                                                  text("kind 5 imageChanged #4 image")}));
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(item(i)->image().size(), item(i)->geometry().rect().size());
    }
}

void MenuObserverTest::grabbingAnActionWithoutPlaceStoresNoPicture() {
    QAction* const hidden = addAction("Hidden");
    hidden->setVisible(false);
    observe();
    QVERIFY(actionGeometry(m_widget.get(), hidden).isEmpty());
    m_probe->takeRecords();
    grabActionImages(m_observer.get());
    QCOMPARE(m_probe->takeRecords(), QStringList{text("kind 5 imageChanged #2 no image")});
    QCOMPARE(m_probe->takeLog(), QStringList());
}
