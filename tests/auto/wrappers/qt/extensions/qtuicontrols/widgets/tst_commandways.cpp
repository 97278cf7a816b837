// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"
#include "usesfixture.h"

#include <QAction>
#include <QActionGroup>
#include <QDialog>
#include <QMainWindow>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWidgetAction>

using namespace TestLib;
using Vorsk::UIControls::Attribute;

class tst_CommandWays : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aMenuThatComesUpBelowTheMouseTakesNoRelease();
    void aMenuOfAToolButtonIsReachedByTheToolBar();
    void aToolButtonWithAMenuOfItsAction();
    void aShortcutOfAToolButtonTriggersLater();
    void aWidgetInAMenuIsAControlByItself();
    void aClientTriggers();
    void actionsOfAContextMenuPolicy();

private:
    /** Shows the main window. */
    void show(QMainWindow& window, UsesFixture& fixture);
};

namespace {

void clickInMenuBar(QMenuBar* bar, const QMenu* menu) {
    click(bar, bar->actionGeometry(menu->menuAction()).center());
    QVERIFY(QTest::qWaitFor([&] { return menu->isVisible(); }));
}

} // namespace

void tst_CommandWays::show(QMainWindow& window, UsesFixture& fixture) {
    window.resize(400, 200);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    fixture.take();
}

void tst_CommandWays::aMenuThatComesUpBelowTheMouseTakesNoRelease() {
    UsesFixture fixture;
    auto* const area = fixture.add(new QWidget, "area");
    area->setMinimumSize(200, 200);
    area->setContextMenuPolicy(Qt::CustomContextMenu);
    fixture.show();
    QMenu menu;
    QAction* const item = menu.addAction(text("item"));
    menu.popup(area->mapToGlobal(QPoint(20, 20)));
    QVERIFY(QTest::qWaitFor([&] { return menu.isVisible(); }));
    const QPoint at = menu.actionGeometry(item).center();
    QCOMPARE(fixture.counted([&] { release(&menu, at, Qt::RightButton); }), QStringList());
    QVERIFY(menu.isVisible());
    QCOMPARE(fixture.counted([&] { clickItem(&menu, item); }), lines({"item triggered"}));
    QCOMPARE(fixture.probe().attribute(item, Attribute::UsedWays), text("contextMenu"));
}

void tst_CommandWays::aMenuOfAToolButtonIsReachedByTheToolBar() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    auto* const button = new QToolButton;
    button->setObjectName(text("button"));
    button->setPopupMode(QToolButton::InstantPopup);
    auto* const menu = new QMenu(button);
    QAction* const item = menu->addAction(text("item"));
    button->setMenu(menu);
    window.addToolBar(text("Tools"))->addWidget(button);
    show(window, fixture);
    QCOMPARE(fixture.probe().attribute(item, Attribute::Ways), text("toolBar"));
    QCOMPARE(fixture.counted([&] {
        const OnMenu choosing([&](QMenu* shown) { clickItem(shown, item); });
        click(button);
    }),
             lines({"button clicked", "item triggered"}));
    QCOMPARE(fixture.probe().attribute(item, Attribute::UsedWays), text("toolBar"));
}

void tst_CommandWays::aToolButtonWithAMenuOfItsAction() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QToolBar* const bar = window.addToolBar(text("Tools"));
    QAction* const run = bar->addAction(text("Run"));
    auto* const menu = new QMenu(&window);
    QAction* const item = menu->addAction(text("item"));
    run->setMenu(menu);
    show(window, fixture);
    auto* const button = static_cast<QToolButton*>(bar->widgetForAction(run));
    button->setPopupMode(QToolButton::MenuButtonPopup);
    QCOMPARE(fixture.counted([&] { click(button, QPoint(5, button->height() / 2)); }),
             lines({"Run triggered"}));
    QCOMPARE(fixture.counted([&] {
        const OnMenu choosing([&](QMenu* shown) { clickItem(shown, item); });
        click(button, QPoint(button->width() - 3, button->height() / 2));
    }),
             lines({"Run triggered", "item triggered"}));
}

void tst_CommandWays::aShortcutOfAToolButtonTriggersLater() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QToolBar* const bar = window.addToolBar(text("Tools"));
    QAction* const run = bar->addAction(text("Run"));
    show(window, fixture);
    auto* const button = static_cast<QToolButton*>(bar->widgetForAction(run));
    button->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_R));
    int triggers = 0;
    connect(run, &QAction::triggered, this, [&] { ++triggers; });
    QCOMPARE(fixture.counted([&] {
        key(Qt::Key_R, Qt::ControlModifier);
        QVERIFY(QTest::qWaitFor([&] { return triggers == 1; }));
    }),
             lines({"Run triggered"}));
}

void tst_CommandWays::aWidgetInAMenuIsAControlByItself() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&File"));
    auto* const embedding = new QWidgetAction(menu);
    auto* const spin = new QSpinBox;
    spin->setObjectName(text("spin"));
    embedding->setDefaultWidget(spin);
    menu->addAction(embedding);
    show(window, fixture);
    QCOMPARE(fixture.counted([&] {
        clickInMenuBar(window.menuBar(), menu);
        click(spin, QPoint(spin->width() - 6, spin->height() / 4));
        menu->close();
    }),
             lines({"spin changed"}));
}

void tst_CommandWays::aClientTriggers() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&File"));
    QAction* const save = menu->addAction(text("&Save"));
    show(window, fixture);
    QCOMPARE(fixture.countedByClient([&] { save->trigger(); }), lines({"Save triggered"}));
    save->trigger();
    QCOMPARE(fixture.take(), QStringList());
}

void tst_CommandWays::actionsOfAContextMenuPolicy() {
    UsesFixture fixture;
    auto* const area = fixture.add(new QWidget, "area");
    area->setMinimumSize(100, 100);
    area->setContextMenuPolicy(Qt::ActionsContextMenu);
    auto* const action = new QAction(text("Copy"), area);
    area->addAction(action);
    fixture.show();
    QCOMPARE(fixture.probe().attribute(action, Attribute::Ways), text("contextMenu"));
    QCOMPARE(fixture.counted([&] {
        const OnMenu choosing([&](QMenu* shown) { clickItem(shown, action); });
        askForMenu(area, QPoint(10, 10));
    }),
             lines({"Copy triggered"}));
    QCOMPARE(fixture.probe().attribute(action, Attribute::UsedWays), text("contextMenu"));
}

int main(int argc, char** argv) {
    HostApplication application(argc, argv);
    tst_CommandWays test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_commandways.moc"
