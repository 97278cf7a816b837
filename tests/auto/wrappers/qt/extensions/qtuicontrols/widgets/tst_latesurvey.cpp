#include "testlib/controlsprobe.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QCheckBox>
#include <QDial>
#include <QDialog>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTest>
#include <QVBoxLayout>

using namespace Vorsk::UIControls;
using TestLib::ControlsProbe;

class tst_LateSurvey : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsAddedLaterIsFound();
    void whatIsAddedToAHiddenPageIsFound();
    void whatIsMovedIntoAWindowIsFound();
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

void tst_LateSurvey::whatIsAddedLaterIsFound() {
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

void tst_LateSurvey::whatIsAddedToAHiddenPageIsFound() {
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

void tst_LateSurvey::whatIsMovedIntoAWindowIsFound() {
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

void tst_LateSurvey::widgetsInAGraphicsSceneAreFound() {
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

void tst_LateSurvey::windowsInAnMdiAreaAreFound() {
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

void tst_LateSurvey::aWidgetOnAnItemIsAControlAndAnEditorIsNone() {
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

void tst_LateSurvey::rowsOfAScrollAreaAreAGroup() {
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

void tst_LateSurvey::twoAlikeAreNoGroup() {
    ControlsProbe probe;
    OwnList window(2);
    showAndWait(window);
    QVERIFY(!probe.tree({text("group")}).contains(text("group")));
}

void tst_LateSurvey::namedPanelsAreNoGroup() {
    ControlsProbe probe;
    OwnList window(2);
    window.addRow()->setObjectName(text("limits"));
    showAndWait(window);
    QVERIFY(!probe.tree({text("group")}).contains(text("group")));
}

void tst_LateSurvey::widgetsOnItemsAreAGroup() {
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

void tst_LateSurvey::rowsThatComeLaterAreOfTheSameGroup() {
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

void tst_LateSurvey::theBoxesOfADialogThatIsMadeFiveTimesAreThree() {
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

QTEST_MAIN(tst_LateSurvey)
#include "tst_latesurvey.moc"
