// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "sessionsteps.h"
#include "testlib/widgetdriver.h"

#include <QAction>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

using namespace TestLib;

namespace {

void openFile(const Stage& stage) {
    QMenuBar* const bar = stage.menuBar();
    click(bar, bar->actionGeometry(stage.fileMenu->menuAction()).center());
    waitUntil([&] { return stage.fileMenu->isVisible(); });
}

void openSub(const Stage& stage) {
    openFile(stage);
    clickItem(stage.fileMenu, stage.subMenu->menuAction());
    waitUntil([&] { return stage.subMenu->isVisible(); });
}

} // namespace

void menuSteps(Session& s) {
    Stage& stage = s.stage();
    s.nothing(text("open a menu and close it"), [&] {
        openFile(stage);
        key(Qt::Key_Escape);
        key(Qt::Key_Escape);
    });
    s.step(
        text("click a menu item"),
        [&] {
            openFile(stage);
            clickItem(stage.fileMenu, stage.open);
        },
        uses({"Open triggered"}));
    s.nothing(text("click a disabled item"), [&] {
        stage.open->setEnabled(false);
        openFile(stage);
        clickItem(stage.fileMenu, stage.open);
        key(Qt::Key_Escape);
        key(Qt::Key_Escape);
        stage.open->setEnabled(true);
    });
    s.step(
        text("return on a menu item"),
        [&] {
            openFile(stage);
            stage.fileMenu->setActiveAction(stage.save);
            key(Qt::Key_Return);
        },
        uses({"Save triggered"}));
    s.step(
        text("a mnemonic in a menu"),
        [&] {
            openFile(stage);
            key(Qt::Key_O);
        },
        uses({"Open triggered"}));
    s.step(
        text("an item of a sub menu"),
        [&] {
            openSub(stage);
            clickItem(stage.subMenu, stage.inSub);
        },
        uses({"Inner triggered"}));
    s.step(
        text("a choice: the other one goes off"),
        [&] {
            openSub(stage);
            clickItem(stage.subMenu, stage.choiceB);
        },
        uses({"choiceB triggered"}));
}

void actionSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    s.step(
        text("the mnemonic of the menu bar"),
        [&] {
            key(Qt::Key_F, Qt::AltModifier);
            waitUntil([&] { return stage.fileMenu->isVisible(); });
            key(Qt::Key_S);
        },
        uses({"Save triggered"}));
    s.step(
        text("an action whose slot triggers another one of its menu"),
        [&] {
            const auto triggering =
                QObject::connect(stage.open, &QAction::triggered, stage.save, &QAction::trigger);
            openFile(stage);
            clickItem(stage.fileMenu, stage.open);
            QObject::disconnect(triggering);
        },
        uses({"Open triggered"}));
    s.step(
        text("an action whose slot deletes it"),
        [&] {
            openFile(stage);
            clickItem(stage.fileMenu, stage.dying);
            QCoreApplication::processEvents();
            click(own.tool); // tells that the action has died
        },
        uses({"Dying triggered", "tool clicked"}));
    s.step(
        text("a tool button of an action"),
        [&] { click(stage.toolBar->widgetForAction(stage.save)); }, uses({"Save triggered"}));
    s.step(
        text("a checkable action in a tool bar"),
        [&] { click(stage.toolBar->widgetForAction(own.checkableAction)); },
        uses({"checkableAction triggered"}));
    s.nothing(text("a disabled action in a tool bar"), [&] {
        own.action->setEnabled(false);
        click(stage.toolBar->widgetForAction(own.action));
        own.action->setEnabled(true);
    });
    s.step(
        text("a context menu that a slot runs"),
        [&] {
            stage.canvas->setContextMenuPolicy(Qt::CustomContextMenu);
            QAction chosen(text("Chosen"), nullptr);
            const auto asking = QObject::connect(
                stage.canvas, &QWidget::customContextMenuRequested, [&](const QPoint& at) {
                    QMenu menu;
                    menu.addAction(&chosen);
                    QTimer::singleShot(0, &menu, [&] { clickItem(&menu, &chosen); });
                    menu.exec(stage.canvas->mapToGlobal(at));
                });
            QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5),
                                    stage.canvas->mapToGlobal(QPoint(5, 5)));
            QCoreApplication::sendEvent(stage.canvas, &event);
            QObject::disconnect(asking);
        },
        uses({"Chosen triggered"}));
}

void shortcutSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    s.step(
        text("the shortcut of an action"), [&] { key(Qt::Key_S, Qt::ControlModifier); },
        uses({"Save triggered"}));
    s.nothing(text("the shortcut of a disabled action"), [&] {
        stage.save->setEnabled(false);
        key(Qt::Key_S, Qt::ControlModifier);
        stage.save->setEnabled(true);
    });
    s.step(
        text("a shortcut without an action"), [&] { key(Qt::Key_J, Qt::ControlModifier); },
        uses({"shortcut triggered"}));
    s.nothing(text("it is disabled"), [&] {
        stage.shortcut->setEnabled(false);
        key(Qt::Key_J, Qt::ControlModifier);
        stage.shortcut->setEnabled(true);
    });
    s.step(
        text("a shortcut whose slot clicks a button"),
        [&] {
            const auto clicking = QObject::connect(stage.shortcut, &QShortcut::activated, own.check,
                                                   &QCheckBox::click);
            key(Qt::Key_J, Qt::ControlModifier);
            QObject::disconnect(clicking);
        },
        uses({"shortcut triggered"}));
    using Vorsk::UIControls::Attribute;
    s.nothing(text("by which ways it was reached"), [&] {
        QCOMPARE(s.probe().attribute(stage.save, Attribute::Ways), text("menu toolBar shortcut"));
        QCOMPARE(s.probe().attribute(stage.save, Attribute::UsedWays),
                 text("menu toolBar shortcut"));
    });
}
