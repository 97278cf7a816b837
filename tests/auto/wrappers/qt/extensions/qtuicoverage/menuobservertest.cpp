// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "menuobservertest.h"

#include "qtuicoverage/names.h"
#include "qtuicoverage/qtmenubarobserver.h"
#include "qtuicoverage/qtmenuobserver.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/samestorage.h"
#include "testlib/treeprinter.h"
#include "uiabstraction/uielement.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QWidgetAction>

using namespace Vorsk::UICoverage;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

namespace {

using Sizes = TestLib::TreePrinter::Sizes;

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

} // namespace

MenuObserverTest::MenuObserverTest() = default;

MenuObserverTest::~MenuObserverTest() = default;

void MenuObserverTest::init() {
    TestCase::init();
    m_probe = std::make_unique<TestLib::WidgetsProbe>(TestLib::WidgetsProbe::Pictures::Off,
                                                      Sizes::Hidden);
    m_widget.reset(newWidget());
    m_widget->resize(600, 400);
    m_element = m_probe->tracker().createGenericElement(m_widget.get(), StandardType(typeName()));
    m_element->setTransparentNode(false);
    m_probe->takeRecords();
}

void MenuObserverTest::cleanup() {
    m_observer.reset();
    m_widget.reset();
    m_probe.reset();
    TestCase::cleanup();
}

QAction* MenuObserverTest::addAction(const char* actionText) {
    auto* const action = new QAction(text(actionText), m_widget.get());
    m_widget->addAction(action);
    return action;
}

QAction* MenuObserverTest::addSeparator() {
    QAction* const action = addAction("");
    action->setSeparator(true);
    return action;
}

void MenuObserverTest::observe() {
    m_observer.reset(newObserver(m_widget.get(), m_element));
}

QString MenuObserverTest::printed() {
    return TestLib::TreePrinter(Sizes::Hidden).print(*m_element);
}

UIElement* MenuObserverTest::item(int index) {
    return m_element->children().at(index);
}

int MenuObserverTest::clicks(int index) {
    return item(index)->usage().value(Events::clicked(), -1);
}

void MenuObserverTest::hasThreePrivateSlotsInOrder() {
    const QMetaObject& meta = observerMetaObject();
    QCOMPARE(meta.superClass(), &QtWidgetObserver::staticMetaObject);
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 3);
    const char* const signatures[] = {"addActionToObserve(QAction*)", "actionDestroyed(QObject*)",
                                      "actionTriggered(QAction*)"};
    const char* const names[] = {"action", "object", "action"};
    for (int i = 0; i < 3; ++i) {
        const QMetaMethod slot = meta.method(meta.methodOffset() + i);
        QCOMPARE(slot.methodSignature(), QByteArray(signatures[i]));
        QCOMPARE(slot.parameterNames(), QList<QByteArray>{names[i]});
        QCOMPARE(slot.methodType(), QMetaMethod::Slot);
        QCOMPARE(slot.access(), QMetaMethod::Private);
    }
}

void MenuObserverTest::separatorsGetNoItem() {
    addAction("One");
    addSeparator();
    addAction("Two");
    addSeparator();
    addAction("Three");
    observe();
    QCOMPARE(printed().section(QLatin1Char('\n'), 1),
             text("  MenuItem/QAction \"One\" (rect) {clicked=0, shown=0}\n"
                  "  MenuItem/QAction \"Two\" (rect) {clicked=0, shown=0}\n"
                  "  MenuItem/QAction \"Three\" (rect) {clicked=0, shown=0}\n"));
    QCOMPARE(m_probe->takeLog(), QStringList());
}

void MenuObserverTest::itemsAreCompleteWhenTheyAreAnnounced() {
    addAction("&One");
    addAction("Two");
    observe();
    QStringList expected{
        text("kind 1 elementAdded #2 MenuItem/QAction \"One\" (rect) {clicked=0, shown=0}"),
        text("kind 2 childAdded #1 #2"),
        text("kind 1 elementAdded #3 MenuItem/QAction \"Two\" (rect) {clicked=0, shown=0}"),
        text("kind 2 childAdded #1 #3")};
    if (m_element->isWindowNode()) {
        expected.prepend(text("kind 10 windowNodeChanged #1 true"));
    }
    QCOMPARE(m_probe->takeRecords(), expected);
}

void MenuObserverTest::itemTextIsStripped() {
    addAction("&File");
    addAction("Cut && &paste");
    addAction("");
    observe();
    QCOMPARE(item(0)->text(), text("File"));
    QCOMPARE(item(1)->text(), text("Cut & paste"));
    QVERIFY(item(2)->text().isNull());
}

void MenuObserverTest::itemIsNamedAfterTheActionsClass() {
    QWidgetAction action(nullptr);
    m_widget->addAction(&action);
    observe();
    QCOMPARE(item(0)->concreteType(), text("QWidgetAction"));
    QCOMPARE(item(0)->standardType().name(), text("MenuItem"));
}

void MenuObserverTest::itemRectanglesAreInTheWidgetsOwnCoordinates() {
    QWidget window;
    window.resize(700, 500);
    m_widget->setParent(&window);
    m_widget->setGeometry(100, 50, 500, 400);
    QAction* const first = addAction("First");
    QAction* const second = addAction("Second");
    observe();
    QVERIFY(item(0)->geometry().isValid());
    QCOMPARE(item(0)->geometry().rect(), actionGeometry(m_widget.get(), first));
    QCOMPARE(item(1)->geometry().rect(), actionGeometry(m_widget.get(), second));
    const QPoint start = item(0)->geometry().rect().topLeft();
    QVERIFY(start.x() >= 0 && start.x() < 20);
    QVERIFY(start.y() >= 0 && start.y() < 20);
    QVERIFY(!item(0)->geometry().rect().isEmpty());
    QVERIFY(item(0)->geometry() != item(1)->geometry());
    m_observer.reset();
    m_widget->setParent(nullptr);
}

void MenuObserverTest::laterChangesOfActionsAreNotFollowed() {
    QAction* const action = addAction("Before");
    observe();
    const QString before = printed();
    QMenu menu;
    action->setText(text("After, and much longer"));
    action->setMenu(&menu);
    QCOMPARE(printed(), before);
    action->setMenu(nullptr);
}

void MenuObserverTest::laterActionsGetNoItem() {
    addAction("One");
    observe();
    QAction* const later = addAction("Later");
    QCOMPARE(m_element->children().size(), 1);
    later->trigger();
    QCOMPARE(m_probe->takeLog(), QStringList());
}

void MenuObserverTest::subMenuHangsBelowTheItemThatOpensIt() {
    QMenu menu(text("&Recent"));
    m_widget->addAction(menu.menuAction());
    observe();
    QCOMPARE(printed().section(QLatin1Char('\n'), 1),
             text("  MenuItem/QAction \"Recent\" (rect) {clicked=0, shown=0}\n"
                  "    Menu/QMenu transparent {shown=0}\n"));
    QStringList records = m_probe->takeRecords();
    records.removeAll(text("kind 10 windowNodeChanged #1 true"));
    QCOMPARE(records, (QStringList{text("kind 1 elementAdded #2 MenuItem/QAction \"Recent\" (rect) "
                                        "{clicked=0, shown=0}"),
                                   text("kind 2 childAdded #1 #2"),
                                   text("kind 1 elementAdded #3 Menu/QMenu transparent"),
                                   text("kind 3 eventRegistered #3 shown"),
                                   text("kind 2 childAdded #2 #3")}));
}

void MenuObserverTest::subMenuThatHasAnElementIsReusedAndLinked() {
    QMenu menu(text("Sub"));
    UIElement* const known = m_probe->tracker().trackWidget(&menu);
    m_widget->addAction(menu.menuAction());
    observe();
    QCOMPARE(item(0)->children(), QList<UIElement*>{known});
    QCOMPARE(known->parent(), item(0));
    QCOMPARE(m_probe->tracker().elementStore().elements().count(known), 1);
}

void MenuObserverTest::menuSharedByTwoActionsHangsBelowBoth() {
    QMenu menu;
    QAction* const first = addAction("First");
    QAction* const second = addAction("Second");
    first->setMenu(&menu);
    second->setMenu(&menu);
    observe();
    UIElement* const shared = m_probe->element(&menu);
    QCOMPARE(item(0)->children(), QList<UIElement*>{shared});
    QCOMPARE(item(1)->children(), QList<UIElement*>{shared});
    QCOMPARE(shared->parent(), item(0));
    first->setMenu(nullptr);
    second->setMenu(nullptr);
}

void MenuObserverTest::worksWithoutAnExporter() {
    QtWidgetsCoverageTracker silent(nullptr);
    addAction("One");
    const std::unique_ptr<UIElement> root(
        silent.createGenericElement(m_widget.get(), StandardType()));
    std::unique_ptr<QtWidgetObserver> observer;
    if (observerMetaObject().className() == QByteArray("Vorsk::UICoverage::QtMenuObserver")) {
        observer = std::make_unique<QtMenuObserver>(qobject_cast<QMenu*>(m_widget.get()),
                                                    root.get(), &silent);
    } else {
        observer = std::make_unique<QtMenuBarObserver>(qobject_cast<QMenuBar*>(m_widget.get()),
                                                       root.get(), &silent);
    }
    QCOMPARE(root->children().size(), 1);
    QCOMPARE(m_probe->takeRecords(), QStringList());
}
