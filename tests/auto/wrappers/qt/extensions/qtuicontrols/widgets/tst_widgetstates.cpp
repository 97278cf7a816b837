#include "testlib/controlsprobe.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTest>
#include <QVBoxLayout>

using namespace Vorsk::UIControls;
using TestLib::ControlsProbe;

class tst_WidgetStates : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsDisabledIsToldSo();
    void whatAContainerDisablesIsToldSo();
    void whatIsHiddenIsToldSo();
    void whatAContainerHidesIsToldSo();
    void whatIsHiddenTwiceStaysHidden();
    void aHiddenPageHidesNothing();
    void aClosedWindowHidesNothing();
    void tabsAreHiddenWithTheirBar();
    void textsAreFollowed();
    void placeholdersAreFollowed();
    void toolTipsAreFollowed();
    void whatHidesWhatIsTypedIsSensitive();
    void labelsAreReadAgainInAnotherLanguage();
    void whatIsKnownAtFirstSightIsToldAtOnce();
    void namesOfQtAreNone();
};

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

void showAndWait(QWidget& window) {
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
}

/** A window with a box in it that holds a button. */
struct Nested {
    Nested() {
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(box);
        auto* const inner = new QVBoxLayout(box);
        inner->addWidget(button);
        showAndWait(window);
    }

    ControlsProbe probe;
    QWidget window;
    QGroupBox* box = new QGroupBox;
    QPushButton* button = new QPushButton;
};

} // namespace

void tst_WidgetStates::whatIsDisabledIsToldSo() {
    Nested scene;
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::Enabled), QString());
    scene.button->setEnabled(false);
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::Enabled), text("false"));
    scene.button->setEnabled(true);
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::Enabled), QString());
}

void tst_WidgetStates::whatAContainerDisablesIsToldSo() {
    Nested scene;
    scene.box->setEnabled(false);
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::Enabled), text("false"));
    scene.box->setEnabled(true);
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::Enabled), QString());
}

void tst_WidgetStates::whatIsHiddenIsToldSo() {
    Nested scene;
    scene.button->hide();
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::Hidden), text("true"));
    scene.button->show();
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::Hidden), QString());
}

void tst_WidgetStates::whatAContainerHidesIsToldSo() {
    Nested scene;
    scene.box->hide();
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::Hidden), text("true"));
    scene.box->show();
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::Hidden), QString());
}

void tst_WidgetStates::whatIsHiddenTwiceStaysHidden() {
    Nested scene;
    scene.button->hide();
    scene.box->hide();
    scene.box->show();
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::Hidden), text("true"));
    scene.box->hide();
    scene.button->show();
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::Hidden), text("true"));
}

void tst_WidgetStates::aHiddenPageHidesNothing() {
    ControlsProbe probe;
    QStackedWidget window;
    auto* const page = new QWidget;
    auto* const button = new QPushButton(page);
    window.addWidget(page);
    window.addWidget(new QWidget);
    showAndWait(window);
    window.setCurrentIndex(1);
    QVERIFY(!button->isVisible());
    QCOMPARE(probe.attribute(button, Attribute::Hidden), QString());
}

void tst_WidgetStates::aClosedWindowHidesNothing() {
    Nested scene;
    scene.window.close();
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::Hidden), QString());
}

void tst_WidgetStates::tabsAreHiddenWithTheirBar() {
    ControlsProbe probe;
    QTabWidget window;
    window.addTab(new QWidget, text("Only"));
    showAndWait(window);
    QCOMPARE(probe.attribute(text("Tab"), text("Only"), Attribute::Hidden), QString());
    window.tabBar()->hide();
    QCOMPARE(probe.attribute(text("Tab"), text("Only"), Attribute::Hidden), text("true"));
    window.tabBar()->show();
    QCOMPARE(probe.attribute(text("Tab"), text("Only"), Attribute::Hidden), QString());
}

void tst_WidgetStates::textsAreFollowed() {
    Nested scene;
    scene.button->setText(text("&Start"));
    QTRY_COMPARE(scene.probe.line(scene.button), text("Button \"Start\""));
    scene.button->setText(text("S&top"));
    QTRY_COMPARE(scene.probe.line(scene.button), text("Button \"Stop\""));
}

void tst_WidgetStates::placeholdersAreFollowed() {
    ControlsProbe probe;
    QLineEdit edit;
    edit.setPlaceholderText(text("Search"));
    showAndWait(edit);
    QCOMPARE(probe.attribute(&edit, Attribute::Placeholder), text("Search"));
    edit.setPlaceholderText(text("Find"));
    QTRY_COMPARE(probe.attribute(&edit, Attribute::Placeholder), text("Find"));
}

void tst_WidgetStates::toolTipsAreFollowed() {
    Nested scene;
    scene.button->setToolTip(text("Starts it"));
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::ToolTip), text("Starts it"));
    scene.button->setToolTip(QString());
    QCOMPARE(scene.probe.attribute(scene.button, Attribute::ToolTip), QString());
}

void tst_WidgetStates::whatHidesWhatIsTypedIsSensitive() {
    ControlsProbe probe;
    QWidget window;
    QVBoxLayout layout(&window);
    QLineEdit password;
    password.setEchoMode(QLineEdit::Password);
    QLineEdit plain;
    layout.addWidget(&password);
    layout.addWidget(&plain);
    showAndWait(window);
    QCOMPARE(probe.attribute(&password, Attribute::Sensitive), text("true"));
    QCOMPARE(probe.attribute(&plain, Attribute::Sensitive), QString());
    plain.setEchoMode(QLineEdit::NoEcho);
    QTRY_COMPARE(probe.attribute(&plain, Attribute::Sensitive), text("true"));
}

void tst_WidgetStates::labelsAreReadAgainInAnotherLanguage() {
    ControlsProbe probe;
    QWidget window;
    QFormLayout form(&window);
    QLabel label(text("Name"));
    QLineEdit edit;
    form.addRow(&label, &edit);
    showAndWait(window);
    QCOMPARE(probe.attribute(&edit, Attribute::Label), text("Name"));
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&edit, &change);
    label.setText(text("Nom"));
    edit.update();
    QTRY_COMPARE(probe.attribute(&edit, Attribute::Label), text("Nom"));
}

void tst_WidgetStates::whatIsKnownAtFirstSightIsToldAtOnce() {
    ControlsProbe probe;
    QWidget window;
    QCheckBox box(text("&Wrap"), &window);
    box.setObjectName(text("wrap"));
    box.setToolTip(text("tip"));
    box.setAccessibleName(text("Wrap lines"));
    box.setWhatsThis(text("help"));
    box.setEnabled(false);
    box.hide();
    showAndWait(window);
    QCOMPARE(probe.line(&box, {text("objectName"), text("toolTip"), text("accessibleName"),
                               text("description"), text("enabled"), text("hidden")}),
             text("CheckBox \"Wrap\" objectName=wrap toolTip=tip accessibleName=\"Wrap lines\" "
                  "description=help enabled=false hidden=true"));
}

void tst_WidgetStates::namesOfQtAreNone() {
    ControlsProbe probe;
    QLineEdit edit;
    edit.setObjectName(text("qt_spinbox_lineedit"));
    showAndWait(edit);
    QCOMPARE(probe.attribute(&edit, Attribute::ObjectName), QString());
}

QTEST_MAIN(tst_WidgetStates)
#include "tst_widgetstates.moc"
