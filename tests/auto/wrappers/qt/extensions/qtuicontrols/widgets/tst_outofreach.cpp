// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "usesfixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFrame>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTest>

using namespace TestLib;

namespace {

/** A press and release there, whatever is there. */
void clickAt(QWidget& window, const QPoint& at) {
    click(&window, at);
}

QPoint placeOf(const QWidget* widget) {
    return widget->mapTo(widget->window(), middleOf(widget));
}

} // namespace

/** A press at the place of something that a person cannot reach there is no use of it. */
class tst_OutOfReach : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void covered();
    void scrolledAway();
    void onAnotherPage();
    void disabled();
    void disabledWithWhatItLiesIn();
    void hidden();
    void behindAMenu();
    void behindTheListOfAComboBox();
    void behindAModalDialog();
};

void tst_OutOfReach::covered() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton, "button");
    fixture.show();
    const QPoint at = placeOf(button);
    QFrame cover(&fixture.window());
    cover.setGeometry(button->geometry());
    cover.show();
    QCOMPARE(fixture.counted([&] { clickAt(fixture.window(), at); }), QStringList());
    cover.hide();
    QCOMPARE(fixture.counted([&] { clickAt(fixture.window(), at); }), lines({"button clicked"}));
}

void tst_OutOfReach::scrolledAway() {
    UsesFixture fixture;
    auto* const area = fixture.add(new QScrollArea);
    auto* const content = new QWidget;
    auto* const button = new QPushButton(content);
    button->setObjectName(text("button"));
    content->resize(200, 5000);
    area->setWidget(content);
    fixture.show();
    const QPoint at = placeOf(button);
    area->verticalScrollBar()->setValue(1000);
    QCOMPARE(fixture.counted([&] { clickAt(fixture.window(), at); }), QStringList());
    area->verticalScrollBar()->setValue(0);
    QCOMPARE(fixture.counted([&] { clickAt(fixture.window(), at); }), lines({"button clicked"}));
}

void tst_OutOfReach::onAnotherPage() {
    UsesFixture fixture;
    auto* const stack = fixture.add(new QStackedWidget);
    for (const char* const name : {"first", "second"}) {
        auto* const button = new QPushButton;
        button->setObjectName(text(name));
        stack->addWidget(button);
    }
    fixture.show();
    const QPoint at = placeOf(stack);
    QCOMPARE(fixture.counted([&] { clickAt(fixture.window(), at); }), lines({"first clicked"}));
    stack->setCurrentIndex(1);
    QCOMPARE(fixture.counted([&] { clickAt(fixture.window(), at); }), lines({"second clicked"}));
}

void tst_OutOfReach::disabled() {
    UsesFixture fixture;
    auto* const box = fixture.add(new QCheckBox(text("Box")), "box");
    box->setFixedSize(box->sizeHint());
    box->setEnabled(false);
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(box); }), QStringList());
    QCOMPARE(fixture.counted([&] { keyOn(box, Qt::Key_Space); }), QStringList());
}

void tst_OutOfReach::disabledWithWhatItLiesIn() {
    UsesFixture fixture;
    auto* const group = fixture.add(new QFrame);
    auto* const box = new QCheckBox(text("Box"), group);
    box->setFixedSize(box->sizeHint()); // only its text takes presses
    box->setObjectName(text("box"));
    group->setEnabled(false);
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(box); }), QStringList());
    group->setEnabled(true);
    QCOMPARE(fixture.counted([&] { click(box); }), lines({"box checked"}));
}

void tst_OutOfReach::hidden() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton, "button");
    fixture.show();
    const QPoint at = placeOf(button);
    button->hide();
    QCOMPARE(fixture.counted([&] { clickAt(fixture.window(), at); }), QStringList());
}

void tst_OutOfReach::behindAMenu() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton, "button");
    fixture.show();
    QMenu menu(&fixture.window());
    menu.addAction(text("One"));
    menu.popup(fixture.window().mapToGlobal(fixture.window().rect().bottomRight()));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    // What is pressed beside a menu shuts it and gets nothing.
    const QPoint beside = menu.mapFromGlobal(button->mapToGlobal(middleOf(button)));
    QCOMPARE(fixture.counted([&] { click(&menu, beside); }), QStringList());
    QVERIFY(!menu.isVisible());
}

void tst_OutOfReach::behindTheListOfAComboBox() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton, "button");
    auto* const combo = fixture.add(new QComboBox, "combo");
    combo->addItems(lines({"a", "b"}));
    fixture.show();
    combo->showPopup();
    QWidget* const popup = QApplication::activePopupWidget();
    QVERIFY(popup != nullptr);
    QVERIFY(QTest::qWaitForWindowExposed(popup));
    const QPoint beside = popup->mapFromGlobal(button->mapToGlobal(middleOf(button)));
    QCOMPARE(fixture.counted([&] { click(popup, beside); }), QStringList());
    QVERIFY(!popup->isVisible());
}

void tst_OutOfReach::behindAModalDialog() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton, "button");
    fixture.show();
    QDialog dialog(&fixture.window());
    dialog.open();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(fixture.counted([&] { click(button); }), QStringList());
    dialog.close();
    QCOMPARE(fixture.counted([&] { click(button); }), lines({"button clicked"}));
}

int main(int argc, char** argv) {
    HostApplication application(argc, argv);
    tst_OutOfReach test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_outofreach.moc"
