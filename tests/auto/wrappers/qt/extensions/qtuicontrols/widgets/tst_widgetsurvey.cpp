#include "testlib/controlsprobe.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QCommandLinkButton>
#include <QDateEdit>
#include <QDial>
#include <QDialog>
#include <QDockWidget>
#include <QFontComboBox>
#include <QGroupBox>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
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
#include <QToolButton>
#include <QVBoxLayout>

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
    void pagesThatWereNeverVisitedAreFound();
    void aPageThatIsAControlIsBoth();
    void shutDocksAreFound();
    void tabsOfDocksAreFound();
    void dialogsThatWereNeverShownAreFound();
    void aWidgetThatIsNeverShownIsNoWindow();
    void aControlThatIsAWindowIsBoth();
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

QTEST_MAIN(tst_WidgetSurvey)
#include "tst_widgetsurvey.moc"
