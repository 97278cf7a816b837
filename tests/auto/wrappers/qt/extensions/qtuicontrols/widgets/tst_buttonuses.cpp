// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "usesfixture.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolBox>
#include <QToolButton>

using namespace TestLib;

namespace {

/** A button that clicks without having been pressed or released. */
class OwnButton : public QAbstractButton {
    Q_OBJECT

public:
    QSize sizeHint() const override { return {40, 30}; }

protected:
    void paintEvent(QPaintEvent*) override {}
    void mousePressEvent(QMouseEvent*) override { Q_EMIT clicked(false); }
};

} // namespace

class tst_ButtonUses : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatAButtonAnnounces_data();
    void whatAButtonAnnounces();
    void aButtonThatBringsUpAMenuIsClicked_data();
    void aButtonThatBringsUpAMenuIsClicked();
    void aButtonThatDiesInItsSlotIsCounted();
    void aButtonWhoseSlotDisablesItIsCounted();
    void aButtonOfOneOfSeveralIsCheckedAgain();
    void arrowsOfAGroupCheckTheNeighbour();
    void aClassThatClicksByItselfIsCountedOnce();
    void keysOfAMessageBox_data();
    void keysOfAMessageBox();
    void theDefaultButtonCountsOnlyForReturn();
    void aClientPresses();
    void aClientChecks();
    void aClientPressesOnlyOne();
    void whatTheProgramClicksInASlotDoesNotCount();
    void aButtonOfAToolBoxChoosesItsPage();
    void aBoxWithinAGroupIsNotTheGroup();
};

namespace {

using Maker = std::function<QAbstractButton*()>;

QAbstractButton* checkable(QAbstractButton* button) {
    button->setCheckable(true);
    return button;
}

QAbstractButton* tristate() {
    auto* const box = new QCheckBox;
    box->setTristate(true);
    return box;
}

QAbstractButton* pushWithMenu() {
    auto* const button = new QPushButton(text("Menu"));
    auto* const menu = new QMenu(button);
    menu->addAction(text("item"));
    button->setMenu(menu);
    return button;
}

QAbstractButton* toolWithMenu(QToolButton::ToolButtonPopupMode mode) {
    auto* const button = new QToolButton;
    auto* const menu = new QMenu(button);
    menu->addAction(text("item"));
    button->setMenu(menu);
    button->setPopupMode(mode);
    return button;
}

} // namespace

Q_DECLARE_METATYPE(Maker)

void tst_ButtonUses::whatAButtonAnnounces_data() {
    QTest::addColumn<Maker>("maker");
    QTest::addColumn<QStringList>("events");
    QTest::newRow("push") << Maker([] { return new QPushButton; }) << lines({"clicked"});
    QTest::newRow("tool") << Maker([] { return new QToolButton; }) << lines({"clicked"});
    QTest::newRow("checkable") << Maker([] { return checkable(new QPushButton); })
                               << lines({"checked", "unchecked"});
    QTest::newRow("box") << Maker([] { return new QCheckBox; }) << lines({"checked", "unchecked"});
    QTest::newRow("tristate") << Maker(tristate)
                              << lines({"checked", "partiallyChecked", "unchecked"});
    QTest::newRow("radio") << Maker([] { return new QRadioButton; }) << lines({"checked"});
}

void tst_ButtonUses::whatAButtonAnnounces() {
    QFETCH(Maker, maker);
    UsesFixture fixture;
    auto* const button = fixture.add(maker(), "button");
    fixture.show();
    QTEST(UsesFixture::eventsOf(fixture.probe().element(button)), "events");
}

void tst_ButtonUses::aButtonThatBringsUpAMenuIsClicked_data() {
    QTest::addColumn<Maker>("maker");
    QTest::addColumn<bool>("byKey");
    QTest::newRow("push") << Maker(pushWithMenu) << false;
    QTest::newRow("push by key") << Maker(pushWithMenu) << true;
    QTest::newRow("tool") << Maker([] { return toolWithMenu(QToolButton::InstantPopup); }) << false;
    QTest::newRow("arrow of a tool")
        << Maker([] { return toolWithMenu(QToolButton::MenuButtonPopup); }) << false;
    QTest::newRow("held tool") << Maker([] { return toolWithMenu(QToolButton::DelayedPopup); })
                               << false;
}

void tst_ButtonUses::aButtonThatBringsUpAMenuIsClicked() {
    QFETCH(Maker, maker);
    QFETCH(bool, byKey);
    UsesFixture fixture;
    auto* const button = fixture.add(maker(), "button");
    fixture.show();
    const QStringList counted = fixture.counted([&] {
        const OnMenu closing([](QMenu* menu) { menu->close(); });
        const QPoint at(button->width() - 4, button->height() / 2);
        if (byKey) {
            keyOn(button, Qt::Key_Space);
        } else {
            press(button, at);
        }
        QVERIFY(QTest::qWaitFor([&] { return closing.isDone(); }));
        if (!byKey) {
            release(button, at);
        }
    });
    QCOMPARE(counted, lines({"button clicked"}));
}

void tst_ButtonUses::aButtonThatDiesInItsSlotIsCounted() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton, "button");
    fixture.show();
    QPointer<QPushButton> guard(button);
    connect(button, &QPushButton::clicked, button, [button] { delete button; });
    QCOMPARE(fixture.counted([&] { click(button); }), lines({"button clicked"}));
    QVERIFY(guard.isNull());
}

void tst_ButtonUses::aButtonWhoseSlotDisablesItIsCounted() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton, "button");
    fixture.show();
    connect(button, &QPushButton::pressed, button, [button] { button->setText(text("Busy")); });
    connect(button, &QPushButton::released, button, [button] { button->setEnabled(false); });
    QCOMPARE(fixture.counted([&] { click(button); }), lines({"button clicked"}));
    QCOMPARE(fixture.counted([&] { click(button); }), QStringList());
}

void tst_ButtonUses::aButtonOfOneOfSeveralIsCheckedAgain() {
    UsesFixture fixture;
    auto* const radio = fixture.add(new QRadioButton(text("one")), "one");
    auto* const other = fixture.add(new QRadioButton(text("two")), "two");
    fixture.show();
    const QPoint mark(8, radio->height() / 2);
    QCOMPARE(fixture.counted([&] { click(radio, mark); }), lines({"one checked"}));
    QCOMPARE(fixture.counted([&] { click(radio, mark); }), lines({"one checked"}));
    QCOMPARE(fixture.counted([&] { click(other, mark); }), lines({"two checked"}));
}

void tst_ButtonUses::arrowsOfAGroupCheckTheNeighbour() {
    UsesFixture fixture;
    auto* const group = new QButtonGroup(&fixture.window());
    QList<QPushButton*> buttons;
    for (const char* const name : {"one", "two", "three"}) {
        auto* const button = fixture.add(new QPushButton(text(name)), name);
        button->setCheckable(true);
        group->addButton(button);
        buttons.append(button);
    }
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(buttons.at(0)); }), lines({"one checked"}));
    QCOMPARE(fixture.counted([&] { key(Qt::Key_Down); }), lines({"two checked"}));
    // What the arrow's slot clicks is no neighbour of what got the arrow.
    auto* const elsewhere = fixture.add(new QPushButton, "elsewhere");
    connect(buttons.at(2), &QPushButton::clicked, elsewhere, &QPushButton::click);
    QCOMPARE(fixture.counted([&] { key(Qt::Key_Down); }), lines({"three checked"}));
}

void tst_ButtonUses::aClassThatClicksByItselfIsCountedOnce() {
    UsesFixture fixture;
    auto* const button = fixture.add(new OwnButton, "own");
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(button); }), lines({"own clicked"}));
    QCOMPARE(fixture.counted([&] { Q_EMIT button->clicked(); }), QStringList());
}

void tst_ButtonUses::keysOfAMessageBox_data() {
    QTest::addColumn<int>("code");
    QTest::addColumn<QStringList>("counted");
    QTest::newRow("return") << int(Qt::Key_Return) << lines({"yes clicked"});
    QTest::newRow("escape") << int(Qt::Key_Escape) << lines({"no clicked"});
    QTest::newRow("a letter") << int(Qt::Key_Y) << lines({"yes clicked"});
    QTest::newRow("another letter") << int(Qt::Key_N) << lines({"no clicked"});
    QTest::newRow("a letter of none") << int(Qt::Key_X) << QStringList();
}

void tst_ButtonUses::keysOfAMessageBox() {
    QFETCH(int, code);
    UsesFixture fixture;
    fixture.show();
    QMessageBox box(QMessageBox::Question, text("Sure?"), text("Sure?"),
                    QMessageBox::Yes | QMessageBox::No);
    box.button(QMessageBox::Yes)->setText(text("&Yes"));
    box.button(QMessageBox::No)->setText(text("&No"));
    box.button(QMessageBox::Yes)->setObjectName(text("yes"));
    box.button(QMessageBox::No)->setObjectName(text("no"));
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
    box.show();
    box.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    const QStringList counted = fixture.counted([&] {
        key(code);
        if (code != Qt::Key_X) {
            QVERIFY(QTest::qWaitFor([&] { return !box.isVisible(); }));
        }
    });
    QTEST(counted, "counted");
}

void tst_ButtonUses::theDefaultButtonCountsOnlyForReturn() {
    class OwnDialog : public QDialog {
    public:
        QPushButton* button = nullptr;

    protected:
        void keyPressEvent(QKeyEvent* event) override {
            button->click();
            event->accept();
        }
    };
    UsesFixture fixture;
    fixture.show();
    OwnDialog dialog;
    dialog.button = new QPushButton(text("default"), &dialog);
    dialog.button->setObjectName(text("default"));
    dialog.button->setDefault(true);
    dialog.show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    dialog.setFocus();
    QCOMPARE(fixture.counted([&] { key(Qt::Key_F4); }), QStringList());
    QCOMPARE(fixture.counted([&] { key(Qt::Key_Return); }), lines({"default clicked"}));
}

void tst_ButtonUses::aClientPresses() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton, "button");
    fixture.show();
    int clicks = 0;
    connect(button, &QPushButton::clicked, this, [&] { ++clicks; });
    QStringList counted = fixture.countedByClient([&] { button->animateClick(); });
    QVERIFY(QTest::qWaitFor([&] { return clicks == 1; }));
    counted += fixture.take();
    QCOMPARE(counted, lines({"button clicked"}));
    // What follows is the program's again.
    button->click();
    QCOMPARE(fixture.take(), QStringList());
}

void tst_ButtonUses::aClientChecks() {
    UsesFixture fixture;
    auto* const box = fixture.add(new QCheckBox, "box");
    fixture.show();
    QCOMPARE(fixture.countedByClient([&] { box->toggle(); }), lines({"box checked"}));
    box->toggle();
    QCOMPARE(fixture.take(), QStringList());
}

void tst_ButtonUses::aClientPressesOnlyOne() {
    UsesFixture fixture;
    auto* const box = fixture.add(new QCheckBox, "box");
    auto* const other = fixture.add(new QCheckBox, "other");
    fixture.show();
    fixture.countedByClient([] {}); // there is a client
    QCOMPARE(fixture.countedByClient([&] {
        box->toggle();
        other->toggle();
    }),
             lines({"box checked"}));
}

void tst_ButtonUses::whatTheProgramClicksInASlotDoesNotCount() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton, "button");
    auto* const other = fixture.add(new QPushButton, "other");
    fixture.show();
    click(other); // it is connected
    fixture.take();
    connect(button, &QPushButton::pressed, other, &QPushButton::click);
    connect(button, &QPushButton::clicked, other, [other] { other->animateClick(1); });
    QCOMPARE(fixture.counted([&] { click(button); }), lines({"button clicked"}));
    QVERIFY(QTest::qWaitFor([&] { return !other->isDown(); }));
    QCOMPARE(fixture.take(), QStringList());
}

void tst_ButtonUses::aButtonOfAToolBoxChoosesItsPage() {
    UsesFixture fixture;
    auto* const box = fixture.add(new QToolBox, "toolBox");
    box->addItem(new QWidget, text("First"));
    box->addItem(new QWidget, text("Second"));
    fixture.show();
    const QList<QAbstractButton*> buttons = box->findChildren<QAbstractButton*>();
    QCOMPARE(buttons.size(), 2);
    QCOMPARE(fixture.counted([&] { click(buttons.at(1)); }), lines({"Second chosen"}));
}

void tst_ButtonUses::aBoxWithinAGroupIsNotTheGroup() {
    UsesFixture fixture;
    auto* const group = fixture.add(new QGroupBox(text("Group")), "group");
    group->setCheckable(true);
    auto* const box = new QCheckBox(text("inside"), group);
    box->setObjectName(text("inside"));
    box->move(20, 30);
    fixture.show();
    connect(box, &QCheckBox::clicked, group, [group] { group->setChecked(true); });
    QCOMPARE(fixture.counted([&] { click(box, QPoint(8, box->height() / 2)); }),
             lines({"inside checked"}));
}

int main(int argc, char** argv) {
    HostApplication application(argc, argv);
    tst_ButtonUses test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_buttonuses.moc"
