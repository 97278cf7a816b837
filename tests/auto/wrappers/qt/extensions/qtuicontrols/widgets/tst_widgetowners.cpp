// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetowners.h"
#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "usesfixture.h"

#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabBar>
#include <QTest>
#include <QToolButton>

using namespace TestLib;
using Vorsk::UIControls::WidgetOwners;

class tst_WidgetOwners : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aPartBelongsToItsControl();
    void whatScrollsBelongsToNone();
    void aPopupBelongsToWhatHasBroughtItUp();
    void theMenuOfACalendarIsItsPart();
    void aMenuOfAButtonIsNoPartOfIt();
    void anItemEditorIsAPartOfItsView();
    void aWidgetUponAnItemIsAControlByItself();
    void aButtonOnATabIsAControlByItself();
    void aButtonOnATabThatComesLaterCounts();
};

void tst_WidgetOwners::aPartBelongsToItsControl() {
    UsesFixture fixture;
    auto* const spin = fixture.add(new QSpinBox, "spin");
    auto* const combo = fixture.add(new QComboBox, "combo");
    combo->setEditable(true);
    auto* const list = fixture.add(new QListWidget, "list");
    fixture.show();
    const WidgetOwners owners(fixture.probe().book());
    QCOMPARE(owners.controlOf(spin), spin);
    QCOMPARE(owners.controlOf(spin->findChild<QLineEdit*>()), spin);
    QCOMPARE(owners.controlOf(combo->lineEdit()), combo);
    QCOMPARE(owners.controlOf(list->viewport()), list);
    QVERIFY(owners.controlOf(&fixture.window()) == nullptr);
    QVERIFY(owners.controlOf(this) == nullptr); // no widget
    QVERIFY(owners.controlOf(nullptr) == nullptr);
}

void tst_WidgetOwners::whatScrollsBelongsToNone() {
    UsesFixture fixture;
    auto* const list = fixture.add(new QListWidget, "list");
    auto* const tabs = fixture.add(new QTabBar, "tabs");
    for (int i = 0; i < 50; ++i) {
        tabs->addTab(text("a tab with a long text"));
    }
    fixture.show();
    const WidgetOwners owners(fixture.probe().book());
    QVERIFY(owners.controlOf(list->verticalScrollBar()) == nullptr);
    const QList<QToolButton*> scrollers = tabs->findChildren<QToolButton*>();
    QCOMPARE(scrollers.size(), 2);
    QToolButton* const scroller = scrollers.last();
    QVERIFY(scroller->isVisible() && scroller->isEnabled());
    QVERIFY(owners.controlOf(scroller) == nullptr);
    QCOMPARE(fixture.counted([&] { click(scroller); }), QStringList());
}

void tst_WidgetOwners::aPopupBelongsToWhatHasBroughtItUp() {
    UsesFixture fixture;
    auto* const combo = fixture.add(new QComboBox, "combo");
    combo->addItems(lines({"a", "b"}));
    auto* const line = fixture.add(new QLineEdit, "line");
    line->setCompleter(new QCompleter(lines({"alpha", "alps"}), line));
    fixture.show();
    const WidgetOwners owners(fixture.probe().book());
    QCOMPARE(owners.controlOf(combo->view()->viewport()), combo);
    typeInto(line, text("al"));
    QCOMPARE(owners.controlOf(line->completer()->popup()->viewport()), line);
}

void tst_WidgetOwners::theMenuOfACalendarIsItsPart() {
    UsesFixture fixture;
    auto* const calendar = fixture.add(new QCalendarWidget, "calendar");
    fixture.show();
    const WidgetOwners owners(fixture.probe().book());
    auto* const menu = calendar->findChild<QMenu*>();
    QVERIFY(menu != nullptr);
    QCOMPARE(owners.controlOfMenu(menu), calendar);
    QCOMPARE(owners.controlOf(menu), calendar);
}

void tst_WidgetOwners::aMenuOfAButtonIsNoPartOfIt() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton(text("More")), "button");
    auto* const menu = new QMenu(button);
    menu->addAction(text("One"));
    button->setMenu(menu);
    fixture.show();
    const WidgetOwners owners(fixture.probe().book());
    QVERIFY(owners.controlOf(menu) == nullptr);
    QVERIFY(owners.controlOfMenu(menu) == nullptr);
}

void tst_WidgetOwners::anItemEditorIsAPartOfItsView() {
    UsesFixture fixture;
    auto* const list = fixture.add(new QListWidget, "list");
    auto* const item = new QListWidgetItem(text("a"), list);
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    fixture.show();
    list->setCurrentItem(item);
    list->editItem(item);
    auto* const editor = list->viewport()->findChild<QLineEdit*>();
    QVERIFY(editor != nullptr);
    const WidgetOwners owners(fixture.probe().book());
    QVERIFY(WidgetOwners::isItemEditor(editor));
    QCOMPARE(WidgetOwners::itemEditorOf(editor), editor);
    QVERIFY(WidgetOwners::itemEditorOf(list) == nullptr);
    QCOMPARE(owners.controlOf(editor), list);
}

void tst_WidgetOwners::aWidgetUponAnItemIsAControlByItself() {
    UsesFixture fixture;
    auto* const list = fixture.add(new QListWidget, "list");
    auto* const item = new QListWidgetItem(list);
    auto* const button = new QPushButton(text("Remove"));
    button->setObjectName(text("remove"));
    list->setItemWidget(item, button);
    fixture.show();
    const WidgetOwners owners(fixture.probe().book());
    QVERIFY(!WidgetOwners::isItemEditor(button));
    QCOMPARE(owners.controlOf(button), button);
}

void tst_WidgetOwners::aButtonOnATabIsAControlByItself() {
    UsesFixture fixture;
    auto* const tabs = fixture.add(new QTabBar, "tabs");
    tabs->addTab(text("One"));
    tabs->addTab(text("Two"));
    tabs->setTabsClosable(true);
    auto* const pin = new QToolButton;
    pin->setObjectName(text("pin"));
    tabs->setTabButton(0, QTabBar::LeftSide, pin);
    connect(tabs, &QTabBar::tabCloseRequested, tabs, &QTabBar::removeTab);
    fixture.show();
    QWidget* const close = tabs->tabButton(1, QTabBar::RightSide);
    QVERIFY(close != nullptr);
    close->setObjectName(text("close"));
    const WidgetOwners owners(fixture.probe().book());
    QCOMPARE(owners.controlOf(close), close);
    QCOMPARE(fixture.probe().attribute(close, ControlsProbe::Attribute::Label), text("Two"));
    QCOMPARE(fixture.counted([&] { click(pin); }), lines({"pin clicked"}));
    const auto* const element = fixture.probe().element(close);
    QCOMPARE(ControlsProbe::usage(element, "clicked"), 0);
    click(close);
    QCOMPARE(tabs->count(), 1);
    QCOMPARE(ControlsProbe::usage(element, "clicked"), 1);
}

void tst_WidgetOwners::aButtonOnATabThatComesLaterCounts() {
    UsesFixture fixture;
    auto* const tabs = fixture.add(new QTabBar, "tabs");
    tabs->setTabsClosable(true);
    tabs->addTab(text("One"));
    fixture.show();
    tabs->addTab(text("Two"));
    QCoreApplication::processEvents();
    fixture.take();
    QWidget* const close = tabs->tabButton(1, QTabBar::RightSide);
    click(close);
    QCOMPARE(ControlsProbe::usage(fixture.probe().element(close), "clicked"), 1);
}

int main(int argc, char** argv) {
    TestLib::HostApplication application(argc, argv);
    tst_WidgetOwners test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_widgetowners.moc"
