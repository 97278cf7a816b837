// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "sessionsteps.h"
#include "testlib/widgetdriver.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QDial>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

using namespace TestLib;

namespace {

/** Where a style draws the arrows is its own business: near the right edge, upper and lower half.
 */
QPoint upArrow(const QWidget* widget) {
    return {widget->width() - 6, widget->height() / 4};
}

QPoint downArrow(const QWidget* widget) {
    return {widget->width() - 6, widget->height() * 3 / 4};
}

/** Clicks a row of the popup as soon as that is open. */
void clickRow(const QComboBox& box, int index) {
    QAbstractItemView* const view = box.view();
    waitUntil([&] { return view->isVisible(); });
    const QPoint at = view->visualRect(box.model()->index(index, 0)).center();
    moveTo(view->viewport(), at);
    click(view->viewport(), at);
}

} // namespace

void comboBoxSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    QComboBox& box = *own.combo;
    s.nothing(text("open the popup of a combo box"), [&] { click(&box); });
    s.step(
        text("choose in the popup"), [&] { clickRow(box, 1); },
        uses({"combo chosen", "two chosen"}));
    s.step(
        text("wheel on a combo box"), [&] { wheel(&box, -1); },
        uses({"combo chosen", "three chosen"}));
    s.step(
        text("a key on a combo box"), [&] { keyOn(&box, Qt::Key_Up); },
        uses({"combo chosen", "two chosen"}));
    s.step(
        text("a letter on a combo box"), [&] { typeInto(&box, text("o")); },
        uses({"combo chosen", "one chosen"}));
    s.step(
        text("return in the popup"),
        [&] {
            keyOn(&box, Qt::Key_Space);
            waitUntil([&] { return box.view()->isVisible(); });
            key(Qt::Key_Down);
            key(Qt::Key_Return);
        },
        uses({"combo chosen", "two chosen"}));
    s.nothing(text("escape in the popup"), [&] {
        keyOn(&box, Qt::Key_Space);
        waitUntil([&] { return box.view()->isVisible(); });
        key(Qt::Key_Down);
        key(Qt::Key_Escape);
    });
    s.nothing(text("wheel on a disabled combo box"), [&] {
        box.setEnabled(false);
        wheel(&box, 1);
        box.setEnabled(true);
    });
}

void editableComboBoxSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    QComboBox& editable = *own.editableCombo;
    s.step(
        text("type into a combo box"),
        [&] {
            editable.lineEdit()->clear();
            typeInto(&editable, text("zz"));
        },
        uses({"editableCombo edited 2"}));
    s.step(
        text("wheel on an editable one"),
        [&] {
            editable.setCurrentIndex(0);
            wheel(&editable, -1);
        },
        uses({"editableCombo chosen", "two chosen"}));
    s.step(
        text("choose in its popup"),
        [&] {
            click(&editable, QPoint(editable.width() - 8, editable.height() / 2));
            clickRow(editable, 2);
        },
        uses({"editableCombo chosen", "three chosen"}));
}

void spinBoxSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    for (QWidget* const spin :
         {static_cast<QWidget*>(own.spin), static_cast<QWidget*>(own.doubleSpin),
          static_cast<QWidget*>(own.date)}) {
        const QString changed = spin->objectName() + text(" changed");
        if (spin != own.date) {
            s.step(text("the upper arrow"), [&] { click(spin, upArrow(spin)); }, {changed});
            s.step(text("the lower arrow"), [&] { click(spin, downArrow(spin)); }, {changed});
        }
        s.step(text("the up key"), [&] { keyOn(spin, Qt::Key_Up); }, {changed});
        s.step(text("the wheel"), [&] { wheel(spin, 1); }, {changed});
    }
    s.step(
        text("type into a spin box"),
        [&] {
            own.spin->selectAll();
            typeInto(own.spin, text("7"));
        },
        uses({"spin changed"}));
    s.nothing(text("the focus leaves a spin box"), [&] { own.push->setFocus(); });
    s.step(
        text("hold an arrow"),
        [&] {
            const int before = own.spin->value();
            press(own.spin, upArrow(own.spin));
            waitUntil([&] { return own.spin->value() > before + 1; });
            release(own.spin, upArrow(own.spin));
        },
        uses({"spin changed"}));
    s.step(
        text("choose in the popup of a date"),
        [&] {
            own.date->setDate(QDate(2020, 5, 15));
            click(own.date, QPoint(own.date->width() - 6, own.date->height() / 2));
            waitUntil([&] { return QApplication::activePopupWidget() != nullptr; });
            key(Qt::Key_Right);
            key(Qt::Key_Return);
        },
        uses({"date changed"}));
}

void sliderSteps(Session& s) {
    Stage& stage = s.stage();
    Controls& own = *stage.own;
    s.step(
        text("a key on a slider"), [&] { keyOn(own.slider, Qt::Key_Right); },
        uses({"slider moved"}));
    s.step(
        text("the wheel on a slider"), [&] { wheel(own.slider, 1); }, uses({"slider moved"}));
    s.step(
        text("a page of a slider"),
        [&] {
            own.slider->setValue(0);
            click(own.slider, QPoint(own.slider->width() - 20, own.slider->height() / 2));
        },
        uses({"slider moved"}));
    s.step(
        text("drag a slider"),
        [&] {
            own.slider->setValue(0);
            drag(own.slider, QPoint(6, own.slider->height() / 2),
                 QPoint(90, own.slider->height() / 2));
        },
        uses({"slider moved"}));
    s.nothing(text("press a slider's handle"), [&] {
        own.slider->setValue(0);
        click(own.slider, QPoint(6, own.slider->height() / 2));
    });
    s.step(
        text("a key on a dial"), [&] { keyOn(own.dial, Qt::Key_Up); }, uses({"dial moved"}));
    s.step(
        text("the wheel on a dial"), [&] { wheel(own.dial, 1); }, uses({"dial moved"}));
    s.step(
        text("drag a dial"), [&] { drag(own.dial, QPoint(15, 40), QPoint(45, 20)); },
        uses({"dial moved"}));
    s.nothing(text("the wheel on a disabled dial"), [&] {
        own.dial->setEnabled(false);
        wheel(own.dial, 1);
        own.dial->setEnabled(true);
    });
}
