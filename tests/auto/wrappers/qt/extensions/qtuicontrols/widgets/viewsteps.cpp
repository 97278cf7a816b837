// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "sessionsteps.h"
#include "testlib/widgetdriver.h"

#include <QCalendarWidget>
#include <QHeaderView>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolButton>
#include <QTreeWidget>

using namespace TestLib;

void tabSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    QTabBar& bar = *own.tabs->tabBar();
    s.step(
        text("click a tab"), [&] { click(&bar, bar.tabRect(1).center()); },
        uses({"Second chosen"}));
    s.step(
        text("click the tab that is current"), [&] { click(&bar, bar.tabRect(1).center()); },
        uses({"Second chosen"}));
    s.step(
        text("the wheel on the tabs"), [&] { wheel(&bar, -1, bar.tabRect(1).center()); },
        uses({"Third chosen"}));
    s.step(
        text("a key on the tabs"), [&] { keyOn(&bar, Qt::Key_Left); }, uses({"Second chosen"}));
    s.step(
        text("control and tab inside a page"),
        [&] { keyOn(own.tabs->currentWidget(), Qt::Key_Tab, Qt::ControlModifier); },
        uses({"Third chosen"}));
    s.nothing(text("a disabled tab"), [&] {
        bar.setTabEnabled(0, false);
        click(&bar, bar.tabRect(0).center());
        bar.setTabEnabled(0, true);
    });
    s.nothing(text("beside the tabs"),
              [&] { click(own.tabs, QPoint(own.tabs->width() - 4, bar.height() / 2)); });
}

void listSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    QListWidget& list = *own.list;
    const auto item = [&](int index) { return list.visualItemRect(list.item(index)).center(); };
    s.step(
        text("click a row"), [&] { click(list.viewport(), item(1)); },
        uses({"list chosen", "green chosen"}));
    s.step(
        text("a key in a list"), [&] { keyOn(&list, Qt::Key_Down); },
        uses({"list chosen", "blue chosen"}));
    s.step(
        text("return in a list"), [&] { keyOn(&list, Qt::Key_Return); },
        uses({"list activated", "blue chosen"}));
    s.nothing(text("scroll a list"), [&] { wheel(list.viewport(), -1); });
    QTableWidget& table = *own.table;
    const auto cell = [&](int row, int column) {
        return table.visualItemRect(table.item(row, column)).center();
    };
    s.step(
        text("click a cell"), [&] { click(table.viewport(), cell(1, 1)); },
        uses({"table chosen", "b chosen"}));
    s.step(
        text("click the header of a column"),
        [&] { click(table.horizontalHeader()->viewport(), QPoint(10, 8)); },
        uses({"table chosen"}));
    s.step(
        text("tick an item"),
        [&] {
            const QRect rect = table.visualItemRect(table.item(2, 0));
            click(table.viewport(), QPoint(rect.left() + 9, rect.center().y()));
        },
        uses({"2 chosen", "table chosen", "table edited"}));
    s.step(
        text("edit a cell"), [&] { click(table.viewport(), cell(0, 1)); },
        uses({"a chosen", "table chosen"}));
    s.step(
        text("type and press return"),
        [&] {
            key(Qt::Key_F2);
            type(text("q"));
            key(Qt::Key_Return);
        },
        uses({"table edited"}));
    s.nothing(text("escape an editor"), [&] {
        key(Qt::Key_F2);
        type(text("w"));
        key(Qt::Key_Escape);
    });
    s.step(
        text("leave an editor by a click elsewhere"),
        [&] {
            key(Qt::Key_F2);
            type(text("e"));
            click(own.push);
        },
        uses({"push clicked", "table edited"}));
}

void treeSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    QTreeWidget& tree = *own.tree;
    QTreeWidgetItem* const fruit = tree.findItems(text("fruit"), Qt::MatchExactly).constFirst();
    s.step(
        text("open a branch"),
        [&] {
            const QRect rect = tree.visualItemRect(fruit);
            click(tree.viewport(), QPoint(rect.left() - 10, rect.center().y()));
        },
        uses({"tree expanded"}));
    s.step(
        text("click an item of a tree"),
        [&] { click(tree.viewport(), tree.visualItemRect(fruit->child(0)).center()); },
        uses({"apple chosen", "tree chosen"}));
    s.step(
        text("close a branch by key"),
        [&] {
            tree.setCurrentItem(fruit);
            keyOn(&tree, Qt::Key_Left);
        },
        uses({"tree expanded"}));
    s.step(
        text("sort by a header"),
        [&] { click(tree.header()->viewport(), QPoint(20, tree.header()->height() / 2)); },
        uses({"tree sorted"}));
    QCalendarWidget& calendar = *own.calendar;
    s.step(
        text("a key in a calendar"),
        [&] {
            calendar.setFocus();
            key(Qt::Key_Right);
        },
        uses({"calendar chosen"}));
    s.step(
        text("the next month of a calendar"),
        [&] { click(calendar.findChild<QToolButton*>(text("qt_calendar_nextmonth"))); },
        uses({"calendar chosen"}));
    s.step(
        text("a day of a calendar"),
        [&] {
            auto* const view = calendar.findChild<QAbstractItemView*>();
            click(view->viewport(), middleOf(view->viewport()));
        },
        uses({"calendar chosen"}));
}
