#include "qtuicontrols/widgets/partelements.h"
#include "qtuicontrols/widgets/widgetviews.h"
#include "testlib/controlsprobe.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QComboBox>
#include <QListWidget>
#include <QStandardItemModel>
#include <QStringListModel>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTreeWidget>

using namespace Vorsk::UIControls;
using TestLib::ControlsProbe;

class tst_PartElements : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void eachTabHasAnElement();
    void aTabThatMovesKeepsItsElement();
    void aTabThatIsRenamedKeepsItsElement();
    void aTabThatIsInsertedLeavesTheOthersTheirs();
    void aTabThatIsRemovedIsHidden();
    void aPageThatIsTakenOutAndPutBackHasItsTabAgain();
    void tabsOfABareBarAreToldByTheirTexts();
    void tabsAreDisabledAndHidden();
    void aTabThatIsNotThereHasNone();
    void entriesOfAComboBoxAreOptions();
    void aSeparatorIsNoOption();
    void entriesOfAnApplicationsModelAreData();
    void moreThanFiftyAreData();
    void fiftyAreOptions();
    void whatIsAddedLaterIsData();
    void anOptionIsFoundByWhereItStandsNow();
    void itemsOfATreeAreToldByWhatIsAboveThem();
    void itemsOfATableAreOptions();
    void twoOfTheSameNameAreOne();
    void optionsOfAViewWithoutThemAreNone();
};

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

void showAndWait(QWidget& window) {
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
}

/** On the probe's book, for elements that the tracker has not made itself. */
struct Parts {
    explicit Parts(ControlsProbe& probe)
        : views(probe.book())
        , parts(probe.book(), views) {}

    WidgetViews views;
    PartElements parts;
};

/** A control with its element and what is found below it. */
template <class Control>
struct Surveyed {
    explicit Surveyed(Control& control)
        : parts(probe) {
        Description what;
        what.type = ElementType::List;
        element = probe.book().add(&control, what, nullptr);
        parts.parts.surveyOptions(&control, element);
    }

    QStringList options() const {
        QStringList texts;
        for (const auto* option : element->children()) {
            texts.append(option->text());
        }
        return texts;
    }

    ControlsProbe probe;
    Parts parts;
    UIElement* element = nullptr;
};

} // namespace

void tst_PartElements::eachTabHasAnElement() {
    ControlsProbe probe;
    QTabBar bar;
    bar.addTab(text("&One"));
    bar.addTab(text("Two && more"));
    bar.setTabToolTip(1, text("the second"));
    showAndWait(bar);
    QCOMPARE(probe.tree({text("toolTip")}),
             text("Window {seen}\n  Tab \"One\"\n  Tab \"Two & more\" toolTip=\"the second\"\n"));
}

void tst_PartElements::aTabThatMovesKeepsItsElement() {
    ControlsProbe probe;
    Parts own(probe);
    QTabWidget tabs;
    for (const char* name : {"a", "b", "c"}) {
        tabs.addTab(new QWidget, text(name));
    }
    tabs.show();
    own.parts.surveyTabs(tabs.tabBar());
    UIElement* const a = own.parts.tabElement(tabs.tabBar(), 0);
    UIElement* const c = own.parts.tabElement(tabs.tabBar(), 2);
    tabs.tabBar()->moveTab(0, 2);
    QCOMPARE(own.parts.tabElement(tabs.tabBar(), 2), a);
    QCOMPARE(own.parts.tabElement(tabs.tabBar(), 1), c);
}

void tst_PartElements::aTabThatIsRenamedKeepsItsElement() {
    ControlsProbe probe;
    Parts own(probe);
    QTabWidget tabs;
    tabs.addTab(new QWidget, text("a"));
    tabs.addTab(new QWidget, text("b"));
    tabs.show();
    UIElement* const a = own.parts.tabElement(tabs.tabBar(), 0);
    tabs.setTabText(0, text("b"));
    tabs.setTabText(1, text("a"));
    QCOMPARE(own.parts.tabElement(tabs.tabBar(), 0), a);
    QCOMPARE(a->text(), text("b"));
}

void tst_PartElements::aTabThatIsInsertedLeavesTheOthersTheirs() {
    ControlsProbe probe;
    Parts own(probe);
    QTabBar bar;
    bar.addTab(text("a"));
    bar.addTab(text("b"));
    bar.show();
    UIElement* const b = own.parts.tabElement(&bar, 1);
    bar.insertTab(1, text("new"));
    QCOMPARE(own.parts.tabElement(&bar, 2), b);
    QCOMPARE(own.parts.tabElement(&bar, 1)->text(), text("new"));
}

void tst_PartElements::aTabThatIsRemovedIsHidden() {
    ControlsProbe probe;
    Parts own(probe);
    QTabBar bar;
    bar.addTab(text("a"));
    bar.addTab(text("b"));
    bar.show();
    UIElement* const a = own.parts.tabElement(&bar, 0);
    bar.removeTab(0);
    own.parts.surveyTabs(&bar);
    QCOMPARE(probe.book().attribute(a, Attribute::Hidden), text("true"));
    QVERIFY(own.parts.tabElement(&bar, 0) != a);
}

void tst_PartElements::aPageThatIsTakenOutAndPutBackHasItsTabAgain() {
    ControlsProbe probe;
    Parts own(probe);
    QTabWidget tabs;
    auto* const page = new QWidget;
    tabs.addTab(new QWidget, text("a"));
    tabs.addTab(page, text("b"));
    tabs.show();
    UIElement* const b = own.parts.tabElement(tabs.tabBar(), 1);
    for (int i = 0; i < 3; ++i) {
        tabs.removeTab(1);
        own.parts.surveyTabs(tabs.tabBar());
        QCOMPARE(probe.book().attribute(b, Attribute::Hidden), text("true"));
        tabs.addTab(page, text("b"));
        QCOMPARE(own.parts.tabElement(tabs.tabBar(), 1), b);
        QCOMPARE(probe.book().attribute(b, Attribute::Hidden), QString());
    }
}

void tst_PartElements::tabsOfABareBarAreToldByTheirTexts() {
    ControlsProbe probe;
    Parts own(probe);
    QTabBar bar;
    for (const char* name : {"a", "b", "c"}) {
        bar.addTab(text(name));
    }
    bar.show();
    UIElement* const a = own.parts.tabElement(&bar, 0);
    bar.moveTab(0, 2);
    QCOMPARE(own.parts.tabElement(&bar, 2), a);
    // Where only the text has changed, the place tells.
    bar.setTabText(2, text("renamed"));
    QCOMPARE(own.parts.tabElement(&bar, 2), a);
    QCOMPARE(a->text(), text("renamed"));
}

void tst_PartElements::tabsAreDisabledAndHidden() {
    ControlsProbe probe;
    Parts own(probe);
    QTabBar bar;
    bar.addTab(text("a"));
    bar.show();
    UIElement* const a = own.parts.tabElement(&bar, 0);
    bar.setTabEnabled(0, false);
    own.parts.surveyTabs(&bar);
    QCOMPARE(probe.book().attribute(a, Attribute::Enabled), text("false"));
    bar.setTabEnabled(0, true);
    own.parts.surveyTabs(&bar);
    QCOMPARE(probe.book().attribute(a, Attribute::Enabled), QString());
#if QT_VERSION >= QT_VERSION_CHECK(5, 15, 0)
    bar.setTabVisible(0, false);
    own.parts.surveyTabs(&bar);
    QCOMPARE(probe.book().attribute(a, Attribute::Hidden), text("true"));
#endif
}

void tst_PartElements::aTabThatIsNotThereHasNone() {
    ControlsProbe probe;
    Parts own(probe);
    QTabBar bar;
    bar.addTab(text("a"));
    QVERIFY(own.parts.tabElement(&bar, 0) == nullptr); // it lies in nothing that was shown
    bar.show();
    QVERIFY(own.parts.tabElement(&bar, 0) != nullptr);
    QVERIFY(own.parts.tabElement(&bar, 1) == nullptr);
    QVERIFY(own.parts.tabElement(&bar, -1) == nullptr);
}

void tst_PartElements::entriesOfAComboBoxAreOptions() {
    QComboBox box;
    box.addItems({text("red"), text("green"), QString()});
    const Surveyed<QComboBox> surveyed(box);
    QCOMPARE(surveyed.options(), QStringList({text("red"), text("green")}));
}

void tst_PartElements::aSeparatorIsNoOption() {
    QComboBox box;
    box.addItem(text("red"));
    box.insertSeparator(1);
    box.addItem(text("blue"));
    const Surveyed<QComboBox> surveyed(box);
    QCOMPARE(surveyed.options(), QStringList({text("red"), text("blue")}));
}

void tst_PartElements::entriesOfAnApplicationsModelAreData() {
    QStringListModel list({text("red"), text("green")});
    QStandardItemModel items;
    items.appendRow(new QStandardItem(text("red")));
    for (QAbstractItemModel* model : std::initializer_list<QAbstractItemModel*>{&list, &items}) {
        QComboBox box;
        box.setModel(model);
        const Surveyed<QComboBox> surveyed(box);
        QCOMPARE(surveyed.options(), QStringList());
    }
}

void tst_PartElements::moreThanFiftyAreData() {
    QListWidget list;
    for (int i = 0; i < 51; ++i) {
        list.addItem(QString::number(i));
    }
    const Surveyed<QListWidget> surveyed(list);
    QCOMPARE(surveyed.options(), QStringList());
}

void tst_PartElements::fiftyAreOptions() {
    QListWidget list;
    for (int i = 0; i < 50; ++i) {
        list.addItem(QString::number(i));
    }
    const Surveyed<QListWidget> surveyed(list);
    QCOMPARE(surveyed.options().size(), 50);
}

void tst_PartElements::whatIsAddedLaterIsData() {
    QComboBox box;
    box.addItem(text("red"));
    Surveyed<QComboBox> surveyed(box);
    box.addItem(text("added"));
    QVERIFY(surveyed.parts.parts.optionElement(&box, 0) != nullptr);
    QVERIFY(surveyed.parts.parts.optionElement(&box, 1) == nullptr);
}

void tst_PartElements::anOptionIsFoundByWhereItStandsNow() {
    QComboBox box;
    box.addItems({text("red"), text("green")});
    Surveyed<QComboBox> surveyed(box);
    UIElement* const green = surveyed.parts.parts.optionElement(&box, 1);
    QCOMPARE(green->text(), text("green"));
    box.insertItem(0, text("added"));
    QCOMPARE(surveyed.parts.parts.optionElement(&box, 2), green);
    // Filled anew by the program with the same entries.
    box.clear();
    box.addItems({text("green"), text("red")});
    QCOMPARE(surveyed.parts.parts.optionElement(&box, 0), green);
}

void tst_PartElements::itemsOfATreeAreToldByWhatIsAboveThem() {
    QTreeWidget tree;
    auto* const fruit = new QTreeWidgetItem(&tree, {text("fruit")});
    auto* const colour = new QTreeWidgetItem(&tree, {text("colour")});
    auto* const one = new QTreeWidgetItem(fruit, {text("orange")});
    auto* const other = new QTreeWidgetItem(colour, {text("orange")});
    Surveyed<QTreeWidget> surveyed(tree);
    QCOMPARE(surveyed.options(),
             QStringList({text("fruit"), text("orange"), text("colour"), text("orange")}));
    const auto optionOf = [&](QTreeWidgetItem* item) {
        tree.setCurrentItem(item);
        return surveyed.parts.parts.optionElement(&tree, tree.currentIndex());
    };
    QVERIFY(optionOf(one) != nullptr);
    QVERIFY(optionOf(one) != optionOf(other));
}

void tst_PartElements::itemsOfATableAreOptions() {
    QTableWidget table(1, 2);
    table.setItem(0, 0, new QTableWidgetItem(text("left")));
    table.setItem(0, 1, new QTableWidgetItem(text("right")));
    Surveyed<QTableWidget> surveyed(table);
    QCOMPARE(surveyed.options(), QStringList({text("left"), text("right")}));
    QCOMPARE(surveyed.parts.parts.optionElement(&table, table.model()->index(0, 1))->text(),
             text("right"));
}

void tst_PartElements::twoOfTheSameNameAreOne() {
    QComboBox box;
    box.addItems({text("same"), text("same")});
    const Surveyed<QComboBox> surveyed(box);
    QCOMPARE(surveyed.options(), QStringList(text("same")));
}

void tst_PartElements::optionsOfAViewWithoutThemAreNone() {
    QStringListModel model({text("row")});
    QListView view;
    view.setModel(&model);
    Surveyed<QListView> surveyed(view);
    QVERIFY(surveyed.parts.parts.optionElement(&view, model.index(0)) == nullptr);
    QVERIFY(surveyed.parts.parts.optionElement(&view, QModelIndex()) == nullptr);
}

QTEST_MAIN(tst_PartElements)
#include "tst_partelements.moc"
