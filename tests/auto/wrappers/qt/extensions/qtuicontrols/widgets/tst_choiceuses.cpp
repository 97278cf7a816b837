// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "usesfixture.h"

#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QComboBox>
#include <QPushButton>
#include <QStringListModel>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>

using namespace TestLib;

class tst_ChoiceUses : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatAComboBoxAnnounces();
    void anEntryIsChosen_data();
    void anEntryIsChosen();
    void whatTheProgramChoosesDoesNotCount();
    void entriesOfAModelAreNoOptions();
    void aListThatIsShutAgainChoosesNothing();
    void aTabIsChosen();
    void theCurrentTabCanBeChosen();
    void aDisabledTabIsNotChosen();
    void theOtherButtonChoosesNoTab();
    void closingATabChoosesNone();
    void tabsThatTheProgramChanges();
    void aDayIsChosen();
    void aClientChooses();
};

void tst_ChoiceUses::whatAComboBoxAnnounces() {
    UsesFixture fixture;
    auto* const plain = fixture.add(new QComboBox, "plain");
    auto* const editable = fixture.add(new QComboBox, "editable");
    editable->setEditable(true);
    fixture.show();
    QCOMPARE(UsesFixture::eventsOf(fixture.probe().element(plain)), lines({"chosen"}));
    QCOMPARE(UsesFixture::eventsOf(fixture.probe().element(editable)), lines({"chosen", "edited"}));
}

void tst_ChoiceUses::anEntryIsChosen_data() {
    QTest::addColumn<QString>("way");
    for (const char* const way : {"the list", "keys in the list", "keys", "wheel"}) {
        QTest::newRow(way) << text(way);
    }
}

void tst_ChoiceUses::anEntryIsChosen() {
    QFETCH(QString, way);
    UsesFixture fixture;
    auto* const box = fixture.add(new QComboBox, "box");
    box->addItems(lines({"one", "two", "three"}));
    fixture.show();
    const QStringList counted = fixture.counted([&] {
        if (way == text("keys")) {
            keyOn(box, Qt::Key_Down);
            return;
        }
        if (way == text("wheel")) {
            wheel(box, -1);
            return;
        }
        click(box);
        QVERIFY(QTest::qWaitFor([&] { return box->view()->isVisible(); }));
        if (way == text("the list")) {
            const QModelIndex second = box->model()->index(1, 0);
            // What comes up below the mouse takes a click only after a while.
            QVERIFY(QTest::qWaitFor([&] {
                click(box->view()->viewport(), box->view()->visualRect(second).center());
                return !box->view()->isVisible();
            }));
        } else {
            key(Qt::Key_Down);
            key(Qt::Key_Return);
        }
    });
    QCOMPARE(box->currentIndex(), 1);
    QCOMPARE(counted, lines({"box chosen", "two chosen"}));
}

void tst_ChoiceUses::whatTheProgramChoosesDoesNotCount() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton, "button");
    auto* const first = fixture.add(new QComboBox, "first");
    auto* const second = fixture.add(new QComboBox, "second");
    for (QComboBox* const box : {first, second}) {
        box->addItems(lines({"one", "two", "three"}));
    }
    connect(button, &QPushButton::clicked, first, [first] { first->setCurrentIndex(2); });
    connect(first, QOverload<int>::of(&QComboBox::activated), second, &QComboBox::setCurrentIndex);
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(button); }), lines({"button clicked"}));
    QCOMPARE(fixture.counted([&] { keyOn(first, Qt::Key_Up); }),
             lines({"first chosen", "two chosen"}));
    QCOMPARE(second->currentIndex(), 1);
}

void tst_ChoiceUses::entriesOfAModelAreNoOptions() {
    UsesFixture fixture;
    QStringListModel model(lines({"one", "two"}));
    auto* const box = fixture.add(new QComboBox, "box");
    box->setModel(&model);
    fixture.show();
    QCOMPARE(fixture.counted([&] { keyOn(box, Qt::Key_Down); }), lines({"box chosen"}));
    QCOMPARE(fixture.probe().count(text("Option")), 0);
}

void tst_ChoiceUses::aListThatIsShutAgainChoosesNothing() {
    UsesFixture fixture;
    auto* const box = fixture.add(new QComboBox, "box");
    box->addItems(lines({"one", "two"}));
    fixture.show();
    click(box);
    QVERIFY(QTest::qWaitFor([&] { return box->view()->isVisible(); }));
    key(Qt::Key_Down);
    key(Qt::Key_Escape);
    QVERIFY(QTest::qWaitFor([&] { return !box->view()->isVisible(); }));
    QCOMPARE(fixture.take(), QStringList());
}

namespace {

/** Three tabs, each with an empty page. */
QTabWidget* threeTabs() {
    auto* const tabs = new QTabWidget;
    for (const char* const title : {"A", "B", "C"}) {
        tabs->addTab(new QWidget, text(title));
    }
    return tabs;
}

void clickTab(QTabWidget* tabs, int index, Qt::MouseButton button = Qt::LeftButton) {
    click(tabs->tabBar(), tabs->tabBar()->tabRect(index).center(), button);
}

} // namespace

void tst_ChoiceUses::aTabIsChosen() {
    UsesFixture fixture;
    QTabWidget* const tabs = fixture.add(threeTabs());
    fixture.show();
    QCOMPARE(fixture.counted([&] { clickTab(tabs, 1); }), lines({"B chosen"}));
    QCOMPARE(fixture.counted([&] { keyOn(tabs->tabBar(), Qt::Key_Right); }), lines({"C chosen"}));
    QCOMPARE(fixture.counted([&] { wheel(tabs->tabBar(), 1); }), lines({"B chosen"}));
    QCOMPARE(fixture.counted([&] { keyOn(tabs, Qt::Key_Tab, Qt::ControlModifier); }),
             lines({"C chosen"}));
}

void tst_ChoiceUses::theCurrentTabCanBeChosen() {
    UsesFixture fixture;
    QTabWidget* const tabs = fixture.add(threeTabs());
    fixture.show();
    QCOMPARE(fixture.counted([&] { clickTab(tabs, 0); }), lines({"A chosen"}));
}

void tst_ChoiceUses::aDisabledTabIsNotChosen() {
    UsesFixture fixture;
    QTabWidget* const tabs = fixture.add(threeTabs());
    tabs->setTabEnabled(1, false);
    fixture.show();
    QCOMPARE(fixture.counted([&] { clickTab(tabs, 1); }), QStringList());
}

void tst_ChoiceUses::theOtherButtonChoosesNoTab() {
    UsesFixture fixture;
    QTabWidget* const tabs = fixture.add(threeTabs());
    fixture.show();
    QCOMPARE(fixture.counted([&] { clickTab(tabs, 1, Qt::RightButton); }), QStringList());
}

void tst_ChoiceUses::closingATabChoosesNone() {
    UsesFixture fixture;
    QTabWidget* const tabs = fixture.add(threeTabs());
    tabs->setTabsClosable(true);
    connect(tabs, &QTabWidget::tabCloseRequested, tabs, &QTabWidget::removeTab);
    fixture.show();
    QWidget* const close = tabs->tabBar()->tabButton(0, QTabBar::RightSide);
    close->setObjectName(text("close"));
    const auto* const b = fixture.probe().find(text("Tab"), text("B"));
    click(close);
    fixture.take();
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(tabs->tabText(0), text("B"));
    QCOMPARE(ControlsProbe::usage(b, "chosen"), 0);
}

void tst_ChoiceUses::tabsThatTheProgramChanges() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton, "button");
    QTabWidget* const tabs = fixture.add(threeTabs());
    connect(button, &QPushButton::clicked, tabs, [tabs] { tabs->setCurrentIndex(2); });
    fixture.show();
    QCOMPARE(fixture.counted([&] { tabs->setCurrentIndex(1); }), QStringList());
    QCOMPARE(fixture.counted([&] { click(button); }), lines({"button clicked"}));
    QCOMPARE(tabs->currentIndex(), 2);
}

void tst_ChoiceUses::aDayIsChosen() {
    UsesFixture fixture;
    auto* const calendar = fixture.add(new QCalendarWidget, "calendar");
    calendar->setSelectedDate(QDate(2020, 5, 15));
    fixture.show();
    auto* const view = calendar->findChild<QAbstractItemView*>();
    QVERIFY(view != nullptr);
    QCOMPARE(fixture.counted([&] { keyOn(view, Qt::Key_Right); }), lines({"calendar chosen"}));
    QCOMPARE(calendar->selectedDate(), QDate(2020, 5, 16));
    const QStringList activated = fixture.counted([&] { keyOn(view, Qt::Key_Return); });
    QVERIFY2(activated.contains(text("calendar activated")),
             qPrintable(activated.join(QLatin1Char(','))));
    auto* const next = calendar->findChild<QToolButton*>(text("qt_calendar_nextmonth"));
    QCOMPARE(fixture.counted([&] { click(next); }), lines({"calendar chosen"}));
    QCOMPARE(fixture.counted([&] { calendar->showNextYear(); }), QStringList());
}

void tst_ChoiceUses::aClientChooses() {
    UsesFixture fixture;
    QTabWidget* const tabs = fixture.add(threeTabs());
    fixture.show();
    QCOMPARE(fixture.countedByClient([&] { tabs->tabBar()->setCurrentIndex(1); }),
             lines({"B chosen"}));
}

int main(int argc, char** argv) {
    HostApplication application(argc, argv);
    tst_ChoiceUses test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_choiceuses.moc"
