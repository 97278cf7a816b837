// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "sessionsteps.h"
#include "testlib/widgetdriver.h"

#include <QCheckBox>
#include <QEventLoop>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>

using namespace TestLib;

void pushButtonSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    s.step(
        text("click a push button"), [&] { click(own.push); }, uses({"push clicked"}));
    s.step(
        text("space on a push button"), [&] { keyOn(own.push, Qt::Key_Space); },
        uses({"push clicked"}));
    s.nothing(text("press, leave and release"), [&] {
        press(own.push, middleOf(own.push));
        moveTo(own.push, QPoint(5, own.push->height() + 300));
        release(own.push, QPoint(5, own.push->height() + 300));
    });
    s.step(
        text("press, leave, come back and release"),
        [&] {
            press(own.push, middleOf(own.push));
            moveTo(own.push, QPoint(5, own.push->height() + 300));
            moveTo(own.push, middleOf(own.push));
            release(own.push, middleOf(own.push));
        },
        uses({"push clicked"}));
    s.nothing(text("space and then escape"), [&] {
        own.push->setFocus();
        keyPress(Qt::Key_Space);
        keyPress(Qt::Key_Escape);
        keyRelease(Qt::Key_Escape);
        keyRelease(Qt::Key_Space);
    });
    s.nothing(text("the right button"),
              [&] { click(own.push, middleOf(own.push), Qt::RightButton); });
    s.nothing(text("click a disabled button"), [&] {
        own.push->setEnabled(false);
        click(own.push);
        own.push->setEnabled(true);
    });
    s.nothing(text("click where a hidden button was"), [&] {
        const QPoint at = own.push->mapTo(own.push->window(), middleOf(own.push));
        own.push->setVisible(false);
        QTest::mousePress(stage.windowHandle(), Qt::LeftButton, {}, at);
        QTest::mouseRelease(stage.windowHandle(), Qt::LeftButton, {}, at);
        own.push->setVisible(true);
        QCoreApplication::processEvents();
    });
    s.step(
        text("its shortcut"),
        [&] {
            own.push->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_P));
            int clicks = 0;
            const auto counting =
                QObject::connect(own.push, &QPushButton::clicked, [&] { ++clicks; });
            key(Qt::Key_P, Qt::ControlModifier);
            waitUntil([&] { return clicks == 1; });
            QObject::disconnect(counting);
        },
        uses({"push clicked"}));
    s.step(
        text("a button that cut all its connections"),
        [&] {
            own.push->disconnect();
            click(own.push);
        },
        uses({"push clicked"}));
}

void pushButtonSlotSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    s.step(
        text("hold a button that repeats"),
        [&] {
            int clicks = 0;
            const auto counting =
                QObject::connect(own.repeating, &QPushButton::clicked, [&] { ++clicks; });
            press(own.repeating, middleOf(own.repeating));
            waitUntil([&] { return clicks == 3; });
            release(own.repeating, middleOf(own.repeating));
            QObject::disconnect(counting);
        },
        uses({"repeating clicked"}));
    s.step(
        text("click a tool button"), [&] { click(own.tool); }, uses({"tool clicked"}));
    s.step(
        text("a slot that runs its own event loop"),
        [&] {
            QEventLoop loop;
            const auto running = QObject::connect(own.push, &QPushButton::clicked, [&] {
                QTimer::singleShot(30, &loop, &QEventLoop::quit);
                loop.exec();
            });
            click(own.push);
            QObject::disconnect(running);
        },
        uses({"push clicked"}));
    s.step(
        text("a slot that handles events, with another click among them"),
        [&] {
            const auto running = QObject::connect(own.push, &QPushButton::clicked, [&] {
                click(own.tool);
                QCoreApplication::processEvents();
            });
            click(own.push);
            QObject::disconnect(running);
        },
        uses({"push clicked", "tool clicked"}));
}

void choiceButtonSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    s.step(
        text("check a button"), [&] { click(own.toggle); }, uses({"toggle checked"}));
    s.step(
        text("uncheck it"), [&] { keyOn(own.toggle, Qt::Key_Space); }, uses({"toggle unchecked"}));
    const QPoint mark(8, own.check->height() / 2);
    s.step(
        text("check a box"), [&] { click(own.check, mark); }, uses({"check checked"}));
    s.step(
        text("uncheck it by key"), [&] { keyOn(own.check, Qt::Key_Space); },
        uses({"check unchecked"}));
    s.step(
        text("first state of three"), [&] { click(own.tristate, mark); },
        uses({"tristate partiallyChecked"}));
    s.step(
        text("second state of three"), [&] { click(own.tristate, mark); },
        uses({"tristate checked"}));
    s.step(
        text("third state of three"), [&] { click(own.tristate, mark); },
        uses({"tristate unchecked"}));
    s.step(
        text("choose the other radio button"), [&] { click(own.radioB, mark); },
        uses({"radioB checked"}));
    s.step(
        text("arrow key to the first one"), [&] { keyOn(own.radioB, Qt::Key_Up); },
        uses({"radioA checked"}));
    s.step(
        text("arrow key to the second one"), [&] { key(Qt::Key_Down); }, uses({"radioB checked"}));
    s.step(
        text("the group's box"), [&] { click(own.group, QPoint(10, 8)); },
        uses({"group unchecked"}));
    s.step(
        text("the group's box by key"), [&] { keyOn(own.group, Qt::Key_Space); },
        uses({"group checked"}));
    s.nothing(text("the inside of a group"),
              [&] { click(own.group, QPoint(own.group->width() / 2, own.group->height() - 5)); });
    s.step(
        text("a slot that sets forty others"),
        [&] {
            const auto setting = QObject::connect(own.check, &QCheckBox::clicked, &own,
                                                  [&] { stage.victims->change(); });
            click(own.check, mark);
            QObject::disconnect(setting);
        },
        uses({"check checked"}));
    s.step(
        text("a slot that takes the check back"),
        [&] {
            const auto setting = QObject::connect(own.toggle, &QPushButton::toggled,
                                                  [&] { own.radioA->setChecked(true); });
            click(own.toggle);
            QObject::disconnect(setting);
        },
        uses({"toggle checked"}));
}
