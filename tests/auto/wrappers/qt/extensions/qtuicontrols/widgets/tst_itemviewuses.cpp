// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "usesfixture.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableWidget>
#include <QTest>
#include <QTreeWidget>

using namespace TestLib;

namespace {

QListWidget* threeItems() {
    auto* const list = new QListWidget;
    list->addItems(lines({"a", "b", "c"}));
    return list;
}

void clickItem(QAbstractItemView* view, int row) {
    click(view->viewport(), view->visualRect(view->model()->index(row, 0)).center());
}

} // namespace

class tst_ItemViewUses : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsAnnounced();
    void anItemIsChosen();
    void aPressOnNoItemChoosesNothing();
    void anItemIsActivated();
    void anItemIsTicked();
    void anItemIsEdited_data();
    void anItemIsEdited();
    void anEditThatIsGivenUpDoesNotCount();
    void aBranchIsExpanded();
    void aColumnIsSorted();
    void aHeaderThatDoesNotSort();
    void whatTheProgramChangesDoesNotCount();
    void modelsThatChangeWhileAnItemIsPressed();
    void aModelThatComesLaterIsFollowed();
    void aClientSelects();
};

void tst_ItemViewUses::whatIsAnnounced() {
    UsesFixture fixture;
    QListWidget* const list = fixture.add(threeItems(), "list");
    auto* const tree = fixture.add(new QTreeWidget, "tree");
    auto* const table = fixture.add(new QTableWidget(2, 2), "table");
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSortingEnabled(true);
    fixture.show();
    QCOMPARE(UsesFixture::eventsOf(fixture.probe().element(list)), lines({"activated", "chosen"}));
    QCOMPARE(UsesFixture::eventsOf(fixture.probe().element(tree)),
             lines({"activated", "chosen", "edited", "expanded"}));
    QCOMPARE(UsesFixture::eventsOf(fixture.probe().element(table)),
             lines({"activated", "chosen", "edited", "sorted"}));
}

void tst_ItemViewUses::anItemIsChosen() {
    UsesFixture fixture;
    QListWidget* const list = fixture.add(threeItems(), "list");
    fixture.show();
    QCOMPARE(fixture.counted([&] { clickItem(list, 1); }), lines({"b chosen", "list chosen"}));
    QCOMPARE(fixture.counted([&] { clickItem(list, 1); }), lines({"b chosen", "list chosen"}));
    QCOMPARE(fixture.counted([&] { keyOn(list, Qt::Key_Down); }),
             lines({"c chosen", "list chosen"}));
    QCOMPARE(fixture.counted([&] { keyOn(list, Qt::Key_A); }), lines({"a chosen", "list chosen"}));
}

void tst_ItemViewUses::aPressOnNoItemChoosesNothing() {
    UsesFixture fixture;
    QListWidget* const list = fixture.add(threeItems(), "list");
    fixture.show();
    const QPoint below(5, list->viewport()->height() - 3);
    QVERIFY(!list->indexAt(below).isValid());
    QCOMPARE(fixture.counted([&] { click(list->viewport(), below); }), QStringList());
}

void tst_ItemViewUses::anItemIsActivated() {
    UsesFixture fixture;
    QListWidget* const list = fixture.add(threeItems(), "list");
    list->setCurrentRow(0);
    fixture.show();
    QCOMPARE(fixture.counted([&] { keyOn(list, Qt::Key_Return); }),
             lines({"a chosen", "list activated"}));
}

void tst_ItemViewUses::anItemIsTicked() {
    UsesFixture fixture;
    QListWidget* const list = fixture.add(threeItems(), "list");
    QListWidgetItem* const item = list->item(1);
    item->setCheckState(Qt::Unchecked);
    connect(list, &QListWidget::itemChanged, list, [list](QListWidgetItem* changed) {
        list->item(2)->setCheckState(changed->checkState());
    });
    list->setCurrentRow(1);
    fixture.show();
    QCOMPARE(fixture.counted([&] { keyOn(list, Qt::Key_Space); }),
             lines({"b chosen", "list edited"}));
    QCOMPARE(item->checkState(), Qt::Checked);
    QCOMPARE(fixture.counted([&] { item->setCheckState(Qt::Unchecked); }), QStringList());
}

void tst_ItemViewUses::anItemIsEdited_data() {
    QTest::addColumn<bool>("byReturn");
    QTest::newRow("ended by return") << true;
    QTest::newRow("ended by a press elsewhere") << false;
}

void tst_ItemViewUses::anItemIsEdited() {
    QFETCH(bool, byReturn);
    UsesFixture fixture;
    QListWidget* const list = fixture.add(threeItems(), "list");
    auto* const other = fixture.add(new QLineEdit, "other");
    list->item(0)->setFlags(list->item(0)->flags() | Qt::ItemIsEditable);
    list->setCurrentRow(0);
    fixture.show();
    keyOn(list, Qt::Key_F2);
    auto* const editor = list->viewport()->findChild<QLineEdit*>();
    QVERIFY(editor != nullptr);
    fixture.take();
    type(text("x"));
    QCOMPARE(fixture.take(), QStringList());
    if (byReturn) {
        key(Qt::Key_Return);
    } else {
        click(other);
    }
    QTRY_COMPARE(list->item(0)->text(), text("x"));
    QVERIFY(fixture.take().contains(text("list edited")));
}

void tst_ItemViewUses::anEditThatIsGivenUpDoesNotCount() {
    UsesFixture fixture;
    QListWidget* const list = fixture.add(threeItems(), "list");
    list->item(0)->setFlags(list->item(0)->flags() | Qt::ItemIsEditable);
    list->setCurrentRow(0);
    fixture.show();
    keyOn(list, Qt::Key_F2);
    type(text("x"));
    key(Qt::Key_Escape);
    QVERIFY(!fixture.take().contains(text("list edited")));
    QCOMPARE(list->item(0)->text(), text("a"));
}

void tst_ItemViewUses::aBranchIsExpanded() {
    UsesFixture fixture;
    auto* const tree = fixture.add(new QTreeWidget, "tree");
    auto* const branch = new QTreeWidgetItem(tree, lines({"branch"}));
    new QTreeWidgetItem(branch, lines({"leaf"}));
    tree->setCurrentItem(branch);
    fixture.show();
    QCOMPARE(fixture.counted([&] { keyOn(tree, Qt::Key_Right); }), lines({"tree expanded"}));
    QCOMPARE(fixture.counted([&] { keyOn(tree, Qt::Key_Left); }), lines({"tree expanded"}));
    QCOMPARE(fixture.counted([&] { branch->setExpanded(true); }), QStringList());
}

void tst_ItemViewUses::aColumnIsSorted() {
    UsesFixture fixture;
    auto* const table = fixture.add(new QTableWidget(2, 2), "table");
    table->setSortingEnabled(true);
    fixture.show();
    QHeaderView* const header = table->horizontalHeader();
    const QPoint at(header->sectionViewportPosition(1) + 10, header->height() / 2);
    QVERIFY(fixture.counted([&] { click(header->viewport(), at); }).contains(text("table sorted")));
    QCOMPARE(fixture.counted([&] { table->sortItems(0); }), QStringList());
}

void tst_ItemViewUses::aHeaderThatDoesNotSort() {
    UsesFixture fixture;
    auto* const table = fixture.add(new QTableWidget(2, 2), "table");
    fixture.show();
    QHeaderView* const header = table->horizontalHeader();
    const QPoint at(header->sectionViewportPosition(1) + 10, header->height() / 2);
    QVERIFY(
        !fixture.counted([&] { click(header->viewport(), at); }).contains(text("table sorted")));
}

void tst_ItemViewUses::whatTheProgramChangesDoesNotCount() {
    UsesFixture fixture;
    auto* const button = fixture.add(new QPushButton, "button");
    QListWidget* const list = fixture.add(threeItems(), "list");
    connect(button, &QPushButton::clicked, list, [list] {
        list->setCurrentRow((list->currentRow() + 1) % 3);
        list->item(0)->setCheckState(Qt::Checked);
        list->item(0)->setText(QString::fromLatin1("set"));
        list->selectAll();
    });
    fixture.show();
    QCOMPARE(fixture.counted([&] { click(button); }), lines({"button clicked"}));
    QCOMPARE(fixture.counted([&] { Q_EMIT list->activated(QModelIndex()); }), QStringList());
}

void tst_ItemViewUses::modelsThatChangeWhileAnItemIsPressed() {
    UsesFixture fixture;
    QListWidget* const first = fixture.add(threeItems(), "first");
    QListWidget* const second = fixture.add(new QListWidget, "second");
    second->addItems(lines({"x", "y", "z"}));
    connect(first, &QListWidget::currentRowChanged, second, [second](int row) {
        second->setCurrentRow(row);
        second->item(row)->setCheckState(Qt::Checked);
    });
    fixture.show();
    QCOMPARE(fixture.counted([&] { clickItem(first, 2); }), lines({"c chosen", "first chosen"}));
    QCOMPARE(second->currentRow(), 2);
}

void tst_ItemViewUses::aModelThatComesLaterIsFollowed() {
    UsesFixture fixture;
    QStandardItemModel before;
    QStandardItemModel after;
    before.appendRow(new QStandardItem(text("before")));
    after.appendRow(new QStandardItem(text("one")));
    after.appendRow(new QStandardItem(text("two")));
    auto* const view = fixture.add(new QListView, "view");
    view->setModel(&before);
    fixture.show();
    QCOMPARE(fixture.counted([&] { clickItem(view, 0); }), lines({"view chosen"}));
    view->setModel(&after);
    QCoreApplication::processEvents();
    QCOMPARE(fixture.counted([&] { clickItem(view, 0); }), lines({"view chosen"}));
    QCOMPARE(fixture.counted([&] { keyOn(view, Qt::Key_Down); }), lines({"view chosen"}));
}

void tst_ItemViewUses::aClientSelects() {
    UsesFixture fixture;
    QListWidget* const list = fixture.add(threeItems(), "list");
    fixture.show();
    const QStringList counted = fixture.countedByClient([&] {
        list->selectionModel()->select(list->model()->index(1, 0), QItemSelectionModel::Select);
    });
    QCOMPARE(counted, lines({"list chosen"}));
}

int main(int argc, char** argv) {
    HostApplication application(argc, argv);
    tst_ItemViewUses test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_itemviewuses.moc"
