// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "sessionsteps.h"
#include "testlib/widgetdriver.h"

#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QGraphicsView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

using namespace TestLib;

void linkAndAreaSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    s.step(
        text("follow a link of a label"),
        [&] { click(stage.link, QPoint(15, stage.link->height() / 2)); },
        uses({"follow me followed"}));
    s.nothing(text("beside the link"),
              [&] { click(stage.link, QPoint(stage.link->width() - 2, 2)); });
    s.step(
        text("follow a link of a browser"),
        [&] {
            click(stage.browser->viewport(), stage.browser->cursorRect().center() + QPoint(8, 0));
        },
        uses({"browse followed"}));
    s.step(
        text("press what takes presses"), [&] { click(stage.canvas); }, uses({"canvas pressed"}));
    s.step(
        text("drag on it"), [&] { drag(stage.canvas, QPoint(10, 10), QPoint(80, 40)); },
        uses({"canvas dragged", "canvas pressed"}));
    s.nothing(text("press what takes none"),
              [&] { click(stage.centralWidget(), QPoint(stage.centralWidget()->width() / 2, 3)); });
    s.step(
        text("press a graphics item"),
        [&] { click(stage.graphics->viewport(), stage.graphics->mapFromScene(10, 10)); },
        uses({" pressed"}));
    s.nothing(text("press beside the graphics items"),
              [&] { click(stage.graphics->viewport(), stage.graphics->mapFromScene(70, 10)); });
    s.step(
        text("a slot that runs a dialog, whose button is clicked"),
        [&] {
            QDialog dialog;
            auto* const ok = new QPushButton(text("OK"), &dialog);
            ok->setObjectName(text("ok"));
            QObject::connect(ok, &QPushButton::clicked, &dialog, &QDialog::accept);
            const auto running = QObject::connect(own.push, &QPushButton::clicked, [&] {
                QTimer::singleShot(0, &dialog, [&] {
                    waitUntil([&] { return dialog.isActiveWindow(); });
                    click(ok);
                });
                dialog.exec();
            });
            click(own.push);
            QObject::disconnect(running);
        },
        uses({"ok clicked", "push clicked"}));
}

void actionWithDialogSteps(Session& s) {
    Stage& stage = s.stage();
    s.step(
        text("an action that runs a dialog counts before it"),
        [&] {
            QDialog dialog;
            int countedInside = -1;
            const auto running = QObject::connect(stage.open, &QAction::triggered, [&] {
                QTimer::singleShot(0, &dialog, [&] {
                    countedInside =
                        ControlsProbe::usage(s.probe().element(stage.open), "triggered");
                    dialog.reject();
                });
                dialog.exec();
            });
            const int before = ControlsProbe::usage(s.probe().element(stage.open), "triggered");
            QMenuBar& bar = *stage.menuBar();
            click(&bar, bar.actionGeometry(stage.fileMenu->menuAction()).center());
            waitUntil([&] { return stage.fileMenu->isVisible(); });
            clickItem(stage.fileMenu, stage.open);
            QObject::disconnect(running);
            QCOMPARE(countedInside, before + 1);
        },
        uses({"Open triggered"}));
}

void dialogSteps(Session& s) {
    QDialog dialog;
    auto* const column = new QVBoxLayout(&dialog);
    auto* const edit = new QLineEdit;
    edit->setObjectName(text("edit"));
    auto* const label = new QLabel(text("&Buddy"));
    auto* const buddy = new QPushButton(text("buddied"));
    buddy->setObjectName(text("buddied"));
    buddy->setAutoDefault(false);
    label->setBuddy(buddy);
    auto* const accept = new QPushButton(text("Accept"));
    accept->setObjectName(text("accept"));
    accept->setDefault(true);
    for (QWidget* const widget : {static_cast<QWidget*>(edit), static_cast<QWidget*>(label),
                                  static_cast<QWidget*>(buddy), static_cast<QWidget*>(accept)}) {
        column->addWidget(widget);
    }
    dialog.show();
    dialog.activateWindow();
    waitUntil([&] { return dialog.isActiveWindow(); });
    s.step(
        text("return in a dialog's text clicks its default button"),
        [&] { keyOn(edit, Qt::Key_Return); }, uses({"accept clicked", "edit confirmed"}));
    s.step(
        text("the mnemonic of a button's label"),
        [&] {
            int clicks = 0;
            const auto counting = QObject::connect(buddy, &QPushButton::clicked, [&] { ++clicks; });
            key(Qt::Key_B, Qt::AltModifier);
            waitUntil([&] { return clicks == 1; });
            QObject::disconnect(counting);
        },
        uses({"buddied clicked"}));
    s.step(
        text("a button that ends its dialog"),
        [&] {
            QObject::connect(accept, &QPushButton::clicked, &dialog, &QDialog::accept);
            click(accept);
        },
        uses({"accept clicked"}));
}

void programSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    for (int i = 0; i < 5; ++i) {
        s.nothing(text("the program changes what a person has operated"), [&] { own.change(); });
        s.nothing(text("it does so in a timer"), [&] {
            bool isDone = false;
            QTimer::singleShot(0, &own, [&] {
                own.change();
                isDone = true;
            });
            waitUntil([&] { return isDone; });
        });
        s.step(
            text("it does so in the slot of another control"),
            [&] {
                auto* const button = stage.findChild<QWidget*>(text("tool"));
                const auto changing = QObject::connect(own.tool, &QToolButton::clicked,
                                                       stage.victims, &Controls::change);
                click(button);
                QObject::disconnect(changing);
            },
            uses({"tool clicked"}));
    }
}
