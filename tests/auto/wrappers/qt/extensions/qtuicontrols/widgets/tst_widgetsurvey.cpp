// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/controlsprobe.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QAction>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QCommandLinkButton>
#include <QDateEdit>
#include <QDial>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QFontComboBox>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGroupBox>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTextBrowser>
#include <QToolBar>
#include <QToolBox>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QWizard>

using namespace Vorsk::UIControls;
using TestLib::ControlsProbe;

class tst_WidgetSurvey : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatAClassExtendsDecides_data();
    void whatAClassExtendsDecides();
    void aCheckableGroupBoxIsAControlAndHoldsOthers();
    void aReadOnlyInputIsNone();
    void anInputThatBecomesWritableIsFound();
    void partsAreNone_data();
    void partsAreNone();
    void menusThatWereNeverOpenedAreFound();
    void aMenuIsFoundOnceHoweverItIsReached();
    void aCommandThatAToolBarShowsLiesInTheWindow();
    void aSubMenuLiesInItsMenu();
    void menusThatOpenEachOtherAreFoundOnce();
    void aContextMenuOfActionsIsFound();
    void anActionThatOnlyAShortcutReachesIsFound();
    void aToolButtonOfAnActionIsNoButton();
    void aToolButtonThatOpensAMenuIsAButton();
    void aWidgetInAToolBarIsAControlAndItsActionIsNone();
    void anIconInAnInputIsACommandAndItsClearButtonIsNone();
    void pagesThatWereNeverVisitedAreFound();
    void aPageThatIsAControlIsBoth();
    void shutDocksAreFound();
    void tabsOfDocksAreFound();
    void dialogsThatWereNeverShownAreFound();
    void aWidgetThatIsNeverShownIsNoWindow();
    void aControlThatIsAWindowIsBoth();
    void whatIsAddedLaterIsFound();
    void whatIsAddedToAHiddenPageIsFound();
    void whatIsMovedIntoAWindowIsFound();
    void actionsThatAreAddedLaterAreFound();
    void widgetsInAGraphicsSceneAreFound();
    void windowsInAnMdiAreaAreFound();
    void aWidgetOnAnItemIsAControlAndAnEditorIsNone();
    void rowsOfAScrollAreaAreAGroup();
    void twoAlikeAreNoGroup();
    void namedPanelsAreNoGroup();
    void widgetsOnItemsAreAGroup();
    void rowsThatComeLaterAreOfTheSameGroup();
    void theBoxesOfADialogThatIsMadeFiveTimesAreThree();
};

namespace {

template <class Widget>
QWidget* make() {
    return new Widget;
}

class OwnButton : public QPushButton {
    Q_OBJECT
};

class OwnWidget : public QWidget {
    Q_OBJECT
};

using Maker = QWidget* (*)();

} // namespace

Q_DECLARE_METATYPE(Maker)

void tst_WidgetSurvey::whatAClassExtendsDecides_data() {
    QTest::addColumn<Maker>("maker");
    QTest::addColumn<QString>("expected");

    const auto add = [](const char* name, Maker maker, const char* expected) {
        QTest::newRow(name) << maker << QString::fromLatin1(expected);
    };
    add("push button", make<QPushButton>, "  Button\n");
    add("own button", make<OwnButton>, "  Button\n");
    add("command link", make<QCommandLinkButton>, "  Button\n");
    add("tool button", make<QToolButton>, "  Button\n");
    add("radio button", make<QRadioButton>, "  RadioButton\n");
    add("check box", make<QCheckBox>, "  CheckBox\n");
    add("group box", make<QGroupBox>, "");
    add("combo box", make<QComboBox>, "  ComboBox\n");
    add("font combo box", make<QFontComboBox>, "  ComboBox\n");
    add("line edit", make<QLineEdit>, "  TextInput\n");
    add("text edit", make<QTextEdit>, "  TextInput\n");
    add("plain text edit", make<QPlainTextEdit>, "  TextInput\n");
    add("text browser", make<QTextBrowser>, "");
    add("key sequence", make<QKeySequenceEdit>, "  TextInput\n");
    add("spin box", make<QSpinBox>, "  SpinBox\n");
    add("date edit", make<QDateEdit>, "  SpinBox\n");
    add("slider", make<QSlider>, "  Slider\n");
    add("dial", make<QDial>, "  Dial\n");
    add("scroll bar", make<QScrollBar>, "");
    add("list", make<QListView>, "  List\n");
    add("tree", make<QTreeView>, "  Tree\n");
    add("table", make<QTableView>, "  Table\n");
    add("calendar", make<QCalendarWidget>, "  Table\n");
    add("label", make<QLabel>, "");
    add("splitter", make<QSplitter>, "");
    add("own widget", make<OwnWidget>, "");
}

void tst_WidgetSurvey::whatAClassExtendsDecides() {
    QFETCH(Maker, maker);
    QFETCH(QString, expected);
    ControlsProbe probe;
    QWidget window;
    QVBoxLayout layout(&window);
    layout.addWidget(maker());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(probe.tree(), QStringLiteral("Window {seen}\n") + expected);
}

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

void showAndWait(QWidget& window) {
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
}

/** Has what was posted delivered, as polish requests. */
void deliver() {
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

} // namespace

void tst_WidgetSurvey::aCheckableGroupBoxIsAControlAndHoldsOthers() {
    ControlsProbe probe;
    QWidget window;
    QGroupBox group(text("Pr&oxy"), &window);
    group.setCheckable(true);
    QLineEdit edit(&group);
    showAndWait(window);
    QCOMPARE(probe.tree({text("label")}),
             text("Window {seen}\n  GroupBox \"Proxy\"\n  TextInput label=Proxy\n"));
}

void tst_WidgetSurvey::aReadOnlyInputIsNone() {
    ControlsProbe probe;
    QWidget window;
    QLineEdit line(&window);
    line.setReadOnly(true);
    QTextEdit rich(&window);
    rich.setReadOnly(true);
    QPlainTextEdit plain(&window);
    plain.setReadOnly(true);
    showAndWait(window);
    QCOMPARE(probe.tree(), text("Window {seen}\n"));
}

void tst_WidgetSurvey::anInputThatBecomesWritableIsFound() {
    ControlsProbe probe;
    QWidget window;
    QLineEdit line(&window);
    line.setReadOnly(true);
    showAndWait(window);
    line.setReadOnly(false);
    deliver();
    QTRY_COMPARE(probe.line(&line, {text("enabled")}), text("TextInput"));
    line.setReadOnly(true);
    QCOMPARE(probe.line(&line, {text("enabled")}), text("TextInput enabled=false"));
}

void tst_WidgetSurvey::partsAreNone_data() {
    QTest::addColumn<Maker>("maker");
    QTest::addColumn<QString>("expected");

    QTest::newRow("editor and arrow of a combo box") << Maker([]() -> QWidget* {
        auto* const box = new QComboBox;
        box->setEditable(true);
        box->view(); // has the popup made
        return box;
    }) << text("  ComboBox\n");
    QTest::newRow("popup of a date edit") << Maker([]() -> QWidget* {
        auto* const edit = new QDateEdit;
        edit->setCalendarPopup(true);
        edit->calendarWidget();
        return edit;
    }) << text("  SpinBox\n");
    QTest::newRow("headers and corner of a table")
        << Maker([]() -> QWidget* { return new QTableWidget(3, 3); }) << text("  Table\n");
    QTest::newRow("buttons that scroll tabs") << Maker([]() -> QWidget* {
        auto* const bar = new QTabBar;
        for (int i = 0; i < 3; ++i) {
            bar->addTab(QStringLiteral("a rather long text of a tab %1").arg(i));
        }
        bar->setFixedWidth(60);
        return bar;
    })
                                              << text("  Tab \"a rather long text of a tab 0\"\n"
                                                      "  Tab \"a rather long text of a tab 1\"\n"
                                                      "  Tab \"a rather long text of a tab 2\"\n");
    QTest::newRow("scroll bars and size grip") << Maker([]() -> QWidget* {
        auto* const area = new QScrollArea;
        area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        auto* const status = new QStatusBar(area);
        status->setSizeGripEnabled(true);
        return area;
    }) << QString();
    QTest::newRow("a button's own children") << Maker([]() -> QWidget* {
        auto* const button = new QPushButton;
        new QLineEdit(button);
        return button;
    }) << text("  Button\n");
}

void tst_WidgetSurvey::partsAreNone() {
    QFETCH(Maker, maker);
    QFETCH(QString, expected);
    ControlsProbe probe;
    QWidget window;
    QVBoxLayout layout(&window);
    layout.addWidget(maker());
    showAndWait(window);
    deliver();
    QCOMPARE(probe.tree(), text("Window {seen}\n") + expected);
}

void tst_WidgetSurvey::menusThatWereNeverOpenedAreFound() {
    ControlsProbe probe;
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&File"));
    menu->addAction(text("&Open..."));
    menu->addSeparator();
    menu->addAction(text("&Quit"));
    window.menuBar()->addAction(text("Help"));
    showAndWait(window);
    QCOMPARE(probe.tree({text("ways")}),
             text("Window {seen}\n  Menu \"File\"\n    Command \"Open...\" ways=menu\n"
                  "    Command \"Quit\" ways=menu\n  Command \"Help\" ways=menu\n"));
}

void tst_WidgetSurvey::aMenuIsFoundOnceHoweverItIsReached() {
    ControlsProbe probe;
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("View"));
    QAction* const zoom = menu->addAction(text("Zoom"));
    QToolBar* const bar = window.addToolBar(text("Main"));
    bar->addAction(zoom);
    QToolButton button(&window);
    button.setMenu(menu);
    showAndWait(window);
    QCOMPARE(probe.count(text("Menu")), 1);
    QCOMPARE(probe.count(text("Command")), 1);
    QCOMPARE(probe.attribute(&button, Attribute::Opens), probe.element(menu)->id());
}

void tst_WidgetSurvey::aCommandThatAToolBarShowsLiesInTheWindow() {
    ControlsProbe probe;
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("File"));
    QAction* const open = menu->addAction(text("Open"));
    QAction* const quit = menu->addAction(text("Quit"));
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    window.addAction(quit);
    window.addToolBar(text("Main"))->addAction(open);
    showAndWait(window);
    QCOMPARE(probe.tree({text("ways")}),
             text("Window {seen}\n  Menu \"File\"\n    Command \"Quit\" ways=\"menu shortcut\"\n"
                  "  Command \"Open\" ways=\"menu toolBar\"\n"));
}

void tst_WidgetSurvey::aSubMenuLiesInItsMenu() {
    ControlsProbe probe;
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("File"));
    menu->addMenu(text("Recent"))->addAction(text("a.txt"));
    showAndWait(window);
    QCOMPARE(probe.tree(), text("Window {seen}\n  Menu \"File\"\n    Menu \"Recent\"\n"
                                "      Command \"a.txt\"\n"));
}

void tst_WidgetSurvey::menusThatOpenEachOtherAreFoundOnce() {
    ControlsProbe probe;
    QMainWindow window;
    QMenu one(text("One"));
    QMenu other(text("Other"));
    one.addMenu(&other);
    other.addMenu(&one);
    window.menuBar()->addMenu(&one);
    showAndWait(window);
    QCOMPARE(probe.count(text("Menu")), 2);
}

void tst_WidgetSurvey::aContextMenuOfActionsIsFound() {
    ControlsProbe probe;
    QWidget window;
    QLabel label(&window);
    label.setContextMenuPolicy(Qt::ActionsContextMenu);
    label.addAction(new QAction(text("Copy"), &label));
    QMenu menu(&window);
    menu.addAction(text("Paste"));
    showAndWait(window);
    QCOMPARE(probe.tree({text("ways")}),
             text("Window {seen}\n  Menu\n    Command \"Paste\" ways=contextMenu\n"
                  "  Command \"Copy\" ways=contextMenu\n"));
}

void tst_WidgetSurvey::anActionThatOnlyAShortcutReachesIsFound() {
    ControlsProbe probe;
    QWidget window;
    auto* const reached = new QAction(text("Save"), &window);
    reached->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    window.addAction(reached);
    window.addAction(new QAction(text("Nobody's"), &window));
    showAndWait(window);
    QCOMPARE(probe.tree({text("ways")}), text("Window {seen}\n  Command \"Save\" ways=shortcut\n"));
}

void tst_WidgetSurvey::aToolButtonOfAnActionIsNoButton() {
    ControlsProbe probe;
    QMainWindow window;
    QToolBar* const bar = window.addToolBar(text("Main"));
    QAction* const cut = bar->addAction(text("Cut"));
    QToolButton button(&window);
    button.setDefaultAction(cut);
    QToolButton other(&window);
    other.setDefaultAction(new QAction(text("Own"), &window));
    showAndWait(window);
    QCOMPARE(
        probe.tree({text("ways")}),
        text("Window {seen}\n  Command \"Cut\" ways=toolBar\n  Command \"Own\" ways=toolBar\n"));
}

void tst_WidgetSurvey::aToolButtonThatOpensAMenuIsAButton() {
    ControlsProbe probe;
    QMainWindow window;
    QToolBar* const bar = window.addToolBar(text("Main"));
    QMenu menu(text("Sort"));
    menu.addAction(text("By name"));
    bar->addAction(menu.menuAction());
    auto* const button = qobject_cast<QToolButton*>(bar->widgetForAction(menu.menuAction()));
    button->setPopupMode(QToolButton::InstantPopup);
    showAndWait(window);
    QCOMPARE(probe.attribute(button, Attribute::Opens), probe.element(&menu)->id());
    QCOMPARE(probe.tree(),
             text("Window {seen}\n  Menu \"Sort\"\n    Command \"By name\"\n  Button \"Sort\"\n"));
}

void tst_WidgetSurvey::aWidgetInAToolBarIsAControlAndItsActionIsNone() {
    ControlsProbe probe;
    QMainWindow window;
    QToolBar* const bar = window.addToolBar(text("Main"));
    bar->addWidget(new QSpinBox);
    showAndWait(window);
    QCOMPARE(probe.tree(), text("Window {seen}\n  SpinBox\n"));
}

void tst_WidgetSurvey::anIconInAnInputIsACommandAndItsClearButtonIsNone() {
    ControlsProbe probe;
    QWidget window;
    QLineEdit edit(&window);
    edit.setClearButtonEnabled(true);
    QAction* const find = edit.addAction(QIcon(), QLineEdit::LeadingPosition);
    find->setText(text("Find"));
    showAndWait(window);
    deliver();
    QCOMPARE(probe.tree(), text("Window {seen}\n  TextInput\n  Command \"Find\"\n"));
}

void tst_WidgetSurvey::pagesThatWereNeverVisitedAreFound() {
    ControlsProbe probe;
    QWidget window;
    QVBoxLayout layout(&window);
    auto* const tabs = new QTabWidget;
    for (const char* name : {"&One", "&Two"}) {
        auto* const page = new QWidget;
        new QCheckBox(text("Box of %1").arg(text(name).mid(1)), page);
        tabs->addTab(page, text(name));
    }
    auto* const stack = new QStackedWidget;
    stack->addWidget(new QWidget);
    auto* const second = new QWidget;
    new QPushButton(text("Hidden"), second);
    stack->addWidget(second);
    layout.addWidget(tabs);
    layout.addWidget(stack);
    showAndWait(window);
    QCOMPARE(probe.tree({text("page")}),
             text("Window {seen}\n"
                  "  Page \"One\" page=One {seen}\n    CheckBox \"Box of One\"\n"
                  "  Page \"Two\" page=Two\n    CheckBox \"Box of Two\"\n"
                  "  Tab \"One\"\n  Tab \"Two\"\n"
                  "  Page {seen}\n  Page\n    Button \"Hidden\"\n"));
    QCOMPARE(probe.attribute(text("Tab"), text("Two"), Attribute::Opens),
             probe.find(text("Page"), text("Two"))->id());
}

void tst_WidgetSurvey::aPageThatIsAControlIsBoth() {
    ControlsProbe probe;
    QTabWidget window;
    auto* const tree = new QTreeView;
    window.addTab(new QTextEdit, text("Notes"));
    window.addTab(tree, text("Files"));
    showAndWait(window);
    QCOMPARE(probe.tree({text("hidden")}),
             text("Window {seen}\n  Page \"Notes\" {seen}\n    TextInput\n"
                  "  Page \"Files\"\n    Tree\n  Tab \"Notes\"\n  Tab \"Files\"\n"));
    window.setCurrentWidget(tree);
    QTRY_COMPARE(probe.usage(probe.find(text("Page"), text("Files")), "seen"), 1);
    QCOMPARE(probe.attribute(text("Page"), text("Notes"), Attribute::Showing), text("false"));
}

void tst_WidgetSurvey::shutDocksAreFound() {
    ControlsProbe probe;
    QMainWindow window;
    auto* const dock = new QDockWidget(text("Layers"));
    dock->setWidget(new QListView);
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    dock->hide();
    showAndWait(window);
    QCOMPARE(probe.tree({text("hidden")}), text("Window {seen}\n  Page \"Layers\"\n    List\n"));
    dock->show();
    QTRY_COMPARE(probe.usage(probe.find(text("Page"), text("Layers")), "seen"), 1);
}

void tst_WidgetSurvey::tabsOfDocksAreFound() {
    ControlsProbe probe;
    QMainWindow window;
    QDockWidget one(text("One"));
    QDockWidget other(text("Other"));
    window.addDockWidget(Qt::LeftDockWidgetArea, &one);
    window.addDockWidget(Qt::LeftDockWidgetArea, &other);
    showAndWait(window);
    QCOMPARE(probe.count(text("Tab")), 0);
    window.tabifyDockWidget(&one, &other);
    QTRY_COMPARE(probe.count(text("Tab")), 2);
    QVERIFY(probe.find(text("Tab"), text("Other")) != nullptr);
}

void tst_WidgetSurvey::dialogsThatWereNeverShownAreFound() {
    ControlsProbe probe;
    QWidget window;
    QDialog child(&window);
    child.setWindowTitle(text("Child"));
    new QPushButton(text("OK"), &child);
    QDialog orphan;
    orphan.setWindowTitle(text("Orphan"));
    new QSpinBox(&orphan);
    showAndWait(window);
    deliver();
    QTRY_COMPARE(probe.tree(), text("Window {seen}\nDialog \"Child\"\n  Button \"OK\"\n"
                                    "Dialog \"Orphan\"\n  SpinBox\n"));
}

void tst_WidgetSurvey::aWidgetThatIsNeverShownIsNoWindow() {
    ControlsProbe probe;
    QWidget window;
    QWidget kept;
    new QPushButton(text("Kept"), &kept);
    showAndWait(window);
    deliver();
    QCOMPARE(probe.tree(), text("Window {seen}\n"));
}

void tst_WidgetSurvey::aControlThatIsAWindowIsBoth() {
    ControlsProbe probe;
    QPushButton button(text("Hello"));
    button.setWindowTitle(text("Greeting"));
    showAndWait(button);
    QCOMPARE(probe.tree(), text("Window \"Greeting\" {seen}\n  Button \"Hello\"\n"));
    QCOMPARE(probe.line(&button), text("Button \"Hello\""));
}

void tst_WidgetSurvey::whatIsAddedLaterIsFound() {
    ControlsProbe probe;
    QWidget window;
    QVBoxLayout layout(&window);
    showAndWait(window);
    layout.addWidget(new QPushButton(text("Late")));
    QTRY_COMPARE(probe.tree({text("hidden")}), text("Window {seen}\n  Button \"Late\"\n"));
    // Not even a layout tells of this one.
    auto* const hidden = new QCheckBox(text("Hidden"), &window);
    QTRY_COMPARE(probe.line(hidden, {text("hidden")}), text("CheckBox \"Hidden\" hidden=true"));
    hidden->show();
    QCOMPARE(probe.line(hidden, {text("hidden")}), text("CheckBox \"Hidden\""));
}

void tst_WidgetSurvey::whatIsAddedToAHiddenPageIsFound() {
    ControlsProbe probe;
    QStackedWidget window;
    window.addWidget(new QWidget);
    auto* const page = new QWidget;
    window.addWidget(page);
    showAndWait(window);
    new QLineEdit(page);
    auto* const another = new QWidget;
    new QDial(another);
    window.addWidget(another);
    QTRY_COMPARE(probe.tree(), text("Window {seen}\n  Page {seen}\n  Page\n    TextInput\n"
                                    "  Page\n    Dial\n"));
}

void tst_WidgetSurvey::whatIsMovedIntoAWindowIsFound() {
    ControlsProbe probe;
    QWidget window;
    showAndWait(window);
    auto* const panel = new QWidget;
    auto* const button = new QPushButton(text("In"), panel);
    deliver();
    QVERIFY(probe.element(button) == nullptr);
    panel->setParent(&window);
    panel->show();
    QTRY_COMPARE(probe.tree({text("hidden")}), text("Window {seen}\n  Button \"In\"\n"));
}

void tst_WidgetSurvey::actionsThatAreAddedLaterAreFound() {
    ControlsProbe probe;
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("File"));
    showAndWait(window);
    QAction* const first = menu->addAction(text("First"));
    deliver();
    QTRY_COMPARE(probe.line(first), text("Command \"First\""));
    menu->removeAction(first);
    QTRY_COMPARE(probe.line(first, {text("hidden")}), text("Command \"First\" hidden=true"));
}

void tst_WidgetSurvey::widgetsInAGraphicsSceneAreFound() {
    ControlsProbe probe;
    QWidget window;
    QVBoxLayout layout(&window);
    QGraphicsScene scene;
    auto* const panel = new QWidget;
    new QPushButton(text("In the scene"), panel);
    scene.addWidget(panel);
    layout.addWidget(new QGraphicsView(&scene));
    showAndWait(window);
    QTRY_COMPARE(probe.tree(), text("Window {seen}\n  Button \"In the scene\"\n"));
}

void tst_WidgetSurvey::windowsInAnMdiAreaAreFound() {
    ControlsProbe probe;
    QMainWindow window;
    auto* const area = new QMdiArea;
    window.setCentralWidget(area);
    auto* const panel = new QWidget;
    new QPushButton(text("Inner"), panel);
    area->addSubWindow(panel)->setWindowTitle(text("Document"));
    showAndWait(window);
    QCOMPARE(probe.tree(),
             text("Window {seen}\n  Window \"Document\" {seen}\n    Button \"Inner\"\n"));
}

void tst_WidgetSurvey::aWidgetOnAnItemIsAControlAndAnEditorIsNone() {
    ControlsProbe probe;
    QTableWidget window(2, 2);
    auto* const button = new QPushButton(text("On an item"));
    window.setCellWidget(0, 0, button);
    showAndWait(window);
    window.setItem(1, 1, new QTableWidgetItem(text("Edited")));
    window.setCurrentCell(1, 1);
    window.editItem(window.item(1, 1));
    auto* const editor = window.viewport()->findChild<QLineEdit*>();
    QVERIFY(editor != nullptr);
    deliver();
    QCOMPARE(probe.line(button), text("Button \"On an item\""));
    QVERIFY(probe.element(editor) == nullptr);
}

namespace {

/** A row of data in a list of the application's own. */
class OwnRow : public QWidget {
    Q_OBJECT

public:
    explicit OwnRow(const QString& name) {
        auto* const layout = new QVBoxLayout(this);
        layout->addWidget(new QCheckBox(name));
        layout->addWidget(new QPushButton(QStringLiteral("Remove")));
    }
};

/** A scroll area that is full of them. */
class OwnList : public QScrollArea {
    Q_OBJECT

public:
    explicit OwnList(int rows) {
        auto* const content = new QWidget;
        m_layout = new QVBoxLayout(content);
        setWidget(content);
        setWidgetResizable(true);
        for (int i = 0; i < rows; ++i) {
            addRow();
        }
    }
    OwnRow* addRow() {
        auto* const row = new OwnRow(QString::number(m_layout->count()));
        m_layout->addWidget(row);
        return row;
    }

private:
    QVBoxLayout* m_layout;
};

} // namespace

void tst_WidgetSurvey::rowsOfAScrollAreaAreAGroup() {
    ControlsProbe probe;
    OwnList window(3);
    showAndWait(window);
    const QString box = text("  CheckBox \"%1\" group=OwnRow/QCheckBox\n");
    const QString button = text("  Button \"Remove\" group=OwnRow/QPushButton\n");
    QString expected = text("Window {seen}\n");
    for (int i = 0; i < 3; ++i) {
        expected += box.arg(i) + button;
    }
    QCOMPARE(probe.tree({text("group")}), expected);
}

void tst_WidgetSurvey::twoAlikeAreNoGroup() {
    ControlsProbe probe;
    OwnList window(2);
    showAndWait(window);
    QVERIFY(!probe.tree({text("group")}).contains(text("group")));
}

void tst_WidgetSurvey::namedPanelsAreNoGroup() {
    ControlsProbe probe;
    OwnList window(2);
    window.addRow()->setObjectName(text("limits"));
    showAndWait(window);
    QVERIFY(!probe.tree({text("group")}).contains(text("group")));
}

void tst_WidgetSurvey::widgetsOnItemsAreAGroup() {
    ControlsProbe probe;
    QTableWidget window(2, 2);
    window.setObjectName(text("jobs"));
    for (int row = 0; row < 2; ++row) {
        window.setCellWidget(row, 0, new QPushButton(text("Cancel")));
        window.setCellWidget(row, 1, new OwnRow(QString::number(row)));
    }
    showAndWait(window);
    QCOMPARE(probe.attribute(window.cellWidget(0, 0), Attribute::Group), text("jobs/QPushButton"));
    QCOMPARE(probe.attribute(window.cellWidget(1, 0), Attribute::Group), text("jobs/QPushButton"));
    QCOMPARE(probe.attribute(window.cellWidget(1, 1)->findChild<QPushButton*>(), Attribute::Group),
             text("jobs/OwnRow/QPushButton"));
}

void tst_WidgetSurvey::rowsThatComeLaterAreOfTheSameGroup() {
    ControlsProbe probe;
    OwnList window(1);
    showAndWait(window);
    auto* const first = window.findChild<QCheckBox*>();
    for (int i = 0; i < 3; ++i) {
        auto* const button = window.addRow()->findChild<QPushButton*>();
        QTRY_VERIFY(probe.element(button) != nullptr);
    }
    QCOMPARE(probe.attribute(first, Attribute::Group), text("OwnRow/QCheckBox"));
    QCOMPARE(probe.tree({text("group")}).count(text("group=OwnRow/QPushButton")), 4);
}

void tst_WidgetSurvey::theBoxesOfADialogThatIsMadeFiveTimesAreThree() {
    ControlsProbe probe;
    QWidget window;
    showAndWait(window);
    for (int i = 0; i < 5; ++i) {
        QDialog dialog(&window);
        dialog.setWindowTitle(text("Filter"));
        for (const char* name : {"a", "b", "c"}) {
            new QCheckBox(text(name), &dialog);
        }
        showAndWait(dialog);
    }
    QCOMPARE(probe.tree(), text("Window {seen}\nDialog \"Filter\" {seen=5}\n"
                                "  CheckBox \"a\"\n  CheckBox \"b\"\n  CheckBox \"c\"\n"));
}

QTEST_MAIN(tst_WidgetSurvey)
#include "tst_widgetsurvey.moc"
