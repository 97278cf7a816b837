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
#include <QGroupBox>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMainWindow>
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

QTEST_MAIN(tst_WidgetSurvey)
#include "tst_widgetsurvey.moc"
