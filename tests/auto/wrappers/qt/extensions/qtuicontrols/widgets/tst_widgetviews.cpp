// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/controlsprobe.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QToolBox>
#include <QVBoxLayout>
#include <QWindow>
#include <QWizard>

using namespace Vorsk::UIControls;
using TestLib::ControlsProbe;

class tst_WidgetViews : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aWindowIsSeenEachTimeItComesUp();
    void aWindowThatIsHiddenAgainBeforeItIsPaintedIsNotSeen();
    void aTransparentWindowIsNotSeen();
    void aWindowWithoutSizeIsNotSeen();
    void aWindowThatIsOnlyRenderedIsNotSeen();
    void aMinimizedWindowIsNotShowing();
    void aPageIsSeenWhenItIsChosen();
    void aPageOfAHiddenPageIsNotSeen();
    void aDockBehindAnotherIsSeenWhenItIsRaised();
    void aMenuIsSeenWhenItIsOpened();
    void aMenuThatIsOperatedBeforeItIsExposedIsSeen();
    void aSubMenuIsSeenWhenItIsOpened();
    void aPopupIsAView();
    void aToolTipIsNone();
    void aDialogFlagMakesADialog();
    void aWizardsStepsArePages();
    void pagesOfAToolBoxAreSeenAsTheyAreOpened();
    void titlesAreFollowed();
    void pagesAreRenamedWithTheirTabs();
    void aViewThatDiesIsNotShowingAnyMore();
    void aWidgetAtTheAddressOfADeadViewIsAnother();
};

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

void showAndWait(QWidget& window) {
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
}

} // namespace

void tst_WidgetViews::aWindowIsSeenEachTimeItComesUp() {
    ControlsProbe probe;
    QWidget window;
    showAndWait(window);
    QCOMPARE(probe.line(&window, {text("showing")}), text("Window showing=true {seen}"));
    window.hide();
    QCOMPARE(probe.line(&window, {text("showing")}), text("Window showing=false {seen}"));
    showAndWait(window);
    QTRY_COMPARE(probe.line(&window, {text("showing")}), text("Window showing=true {seen=2}"));
}

void tst_WidgetViews::aWindowThatIsHiddenAgainBeforeItIsPaintedIsNotSeen() {
    ControlsProbe probe;
    QWidget window;
    QWidget other;
    window.show();
    window.hide();
    showAndWait(other);
    QTRY_COMPARE(probe.line(&other), text("Window {seen}"));
    QCOMPARE(probe.line(&window), text("Window"));
}

void tst_WidgetViews::aTransparentWindowIsNotSeen() {
    ControlsProbe probe;
    QWidget window;
    window.setWindowOpacity(0);
    showAndWait(window);
    QCOMPARE(probe.line(&window), text("Window"));
    window.setWindowOpacity(1);
    window.update();
    QTRY_COMPARE(probe.line(&window), text("Window {seen}"));
}

void tst_WidgetViews::aWindowWithoutSizeIsNotSeen() {
    ControlsProbe probe;
    QWidget window;
    auto* const tabs = new QTabWidget(&window);
    tabs->addTab(new QWidget, text("Flat"));
    tabs->resize(100, 0);
    window.resize(200, 200);
    showAndWait(window);
    QTRY_COMPARE(probe.line(&window), text("Window {seen}"));
    QCOMPARE(probe.usage(probe.find(text("Page"), text("Flat")), "seen"), 0);
}

void tst_WidgetViews::aWindowThatIsOnlyRenderedIsNotSeen() {
    ControlsProbe probe;
    QWidget window;
    QDialog rendered(&window);
    showAndWait(window);
    QTRY_VERIFY(probe.element(&rendered) != nullptr);
    rendered.grab();
    QCOMPARE(probe.line(&rendered), text("Dialog"));
}

void tst_WidgetViews::aMinimizedWindowIsNotShowing() {
    ControlsProbe probe;
    QWidget window;
    showAndWait(window);
    QTRY_COMPARE(probe.line(&window), text("Window {seen}"));
    window.showMinimized();
    QTRY_COMPARE(probe.attribute(&window, Attribute::Showing), text("false"));
    QCoreApplication::processEvents(); // the platform's own word of it
    window.showNormal();
    window.update(); // which a window system would have it do
    QTRY_COMPARE(probe.line(&window, {text("showing")}), text("Window showing=true {seen=2}"));
}

void tst_WidgetViews::aPageIsSeenWhenItIsChosen() {
    ControlsProbe probe;
    QTabWidget window;
    auto* const first = new QWidget;
    auto* const second = new QWidget;
    window.addTab(first, text("First"));
    window.addTab(second, text("Second"));
    showAndWait(window);
    QTRY_COMPARE(probe.line(first), text("Page \"First\" {seen}"));
    QCOMPARE(probe.line(second), text("Page \"Second\""));
    window.setCurrentIndex(1);
    QTRY_COMPARE(probe.line(second, {text("showing")}),
                 text("Page \"Second\" showing=true {seen}"));
    QCOMPARE(probe.line(first, {text("showing")}), text("Page \"First\" showing=false {seen}"));
    window.setCurrentIndex(0);
    QTRY_COMPARE(probe.line(first), text("Page \"First\" {seen=2}"));
}

void tst_WidgetViews::aPageOfAHiddenPageIsNotSeen() {
    ControlsProbe probe;
    QStackedWidget window;
    auto* const outer = new QStackedWidget;
    auto* const inner = new QWidget;
    outer->addWidget(inner);
    window.addWidget(new QWidget);
    window.addWidget(outer);
    showAndWait(window);
    QCOMPARE(probe.line(inner), text("Page"));
    window.setCurrentIndex(1);
    QTRY_COMPARE(probe.line(inner), text("Page {seen}"));
}

void tst_WidgetViews::aDockBehindAnotherIsSeenWhenItIsRaised() {
    ControlsProbe probe;
    QMainWindow window;
    QDockWidget front(text("Front"));
    QDockWidget back(text("Back"));
    for (QDockWidget* dock : {&front, &back}) {
        dock->setWidget(new QLabel(text("some text")));
        window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    }
    window.tabifyDockWidget(&back, &front);
    front.raise();
    window.resize(400, 300);
    showAndWait(window);
    QTRY_COMPARE(probe.line(&front), text("Page \"Front\" {seen}"));
    QCOMPARE(probe.usage(probe.element(&back), "seen"), 0);
    back.raise();
    QTRY_COMPARE(probe.line(&back), text("Page \"Back\" {seen}"));
    QTRY_COMPARE(probe.attribute(&front, Attribute::Showing), text("false"));
}

void tst_WidgetViews::aMenuIsSeenWhenItIsOpened() {
    ControlsProbe probe;
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("File"));
    menu->addAction(text("Open"));
    showAndWait(window);
    QCOMPARE(probe.line(menu), text("Menu \"File\""));
    menu->popup(QPoint(10, 10));
    QTRY_COMPARE(probe.line(menu), text("Menu \"File\" {seen}"));
    menu->hide();
    QCOMPARE(probe.attribute(menu, Attribute::Showing), text("false"));
}

void tst_WidgetViews::aMenuThatIsOperatedBeforeItIsExposedIsSeen() {
    ControlsProbe probe;
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("File"));
    menu->addAction(text("Open"));
    showAndWait(window);
    menu->popup(QPoint(10, 10));
    QVERIFY(!menu->windowHandle()->isExposed());
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    QVERIFY(!menu->isVisible());
    QCOMPARE(probe.line(menu, {text("showing")}), text("Menu \"File\" showing=false {seen}"));
    QCOMPARE(probe.usage(probe.find(text("Command"), text("Open")), "triggered"), 1);
    QCoreApplication::processEvents();
    QCOMPARE(probe.line(menu), text("Menu \"File\" {seen}"));
}

void tst_WidgetViews::aSubMenuIsSeenWhenItIsOpened() {
    ControlsProbe probe;
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("File"));
    QMenu* const sub = menu->addMenu(text("Recent"));
    sub->addAction(text("a.txt"));
    showAndWait(window);
    menu->popup(QPoint(10, 10));
    QTRY_COMPARE(probe.line(menu), text("Menu \"File\" {seen}"));
    QCOMPARE(probe.line(sub), text("Menu \"Recent\""));
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Right);
    QTRY_COMPARE(probe.line(sub), text("Menu \"Recent\" {seen}"));
    menu->hide();
}

void tst_WidgetViews::aPopupIsAView() {
    ControlsProbe probe;
    QWidget window;
    QWidget popup(&window, Qt::Popup);
    auto* const button = new QPushButton(text("In"), &popup);
    popup.resize(100, 100);
    showAndWait(window);
    QCOMPARE(probe.line(button), text("Button \"In\""));
    popup.show();
    QTRY_COMPARE(probe.line(&popup), text("Popup {seen}"));
    popup.hide();
}

void tst_WidgetViews::aToolTipIsNone() {
    ControlsProbe probe;
    QWidget window;
    QLabel tip(text("tip"), nullptr, Qt::ToolTip);
    showAndWait(window);
    showAndWait(tip);
    QVERIFY(probe.element(&tip) == nullptr);
    QCOMPARE(probe.tree(), text("Window {seen}\n"));
}

void tst_WidgetViews::aDialogFlagMakesADialog() {
    ControlsProbe probe;
    QWidget window(nullptr, Qt::Dialog);
    showAndWait(window);
    QTRY_COMPARE(probe.tree(), text("Dialog {seen}\n"));
}

void tst_WidgetViews::aWizardsStepsArePages() {
    ControlsProbe probe;
    QWizard wizard;
    for (const char* title : {"Begin", "End"}) {
        auto* const page = new QWizardPage;
        page->setTitle(text(title));
        wizard.addPage(page);
    }
    showAndWait(wizard);
    QTRY_COMPARE(probe.line(wizard.page(0), {text("page")}),
                 text("Page \"Begin\" page=Begin {seen}"));
    QCOMPARE(probe.line(wizard.page(1), {text("page")}), text("Page \"End\" page=End"));
    wizard.next();
    QTRY_COMPARE(probe.line(wizard.page(1)), text("Page \"End\" {seen}"));
}

void tst_WidgetViews::pagesOfAToolBoxAreSeenAsTheyAreOpened() {
    ControlsProbe probe;
    QToolBox box;
    auto* const first = new QLabel(text("1"));
    auto* const second = new QLabel(text("2"));
    box.addItem(first, text("First"));
    box.addItem(second, text("Second"));
    box.resize(200, 300);
    showAndWait(box);
    QTRY_COMPARE(probe.line(first), text("Page \"First\" {seen}"));
    QCOMPARE(probe.line(second), text("Page \"Second\""));
    QCOMPARE(probe.attribute(text("Tab"), text("Second"), Attribute::Opens),
             probe.element(second)->id());
    box.setCurrentIndex(1);
    QTRY_COMPARE(probe.line(second), text("Page \"Second\" {seen}"));
}

void tst_WidgetViews::titlesAreFollowed() {
    ControlsProbe probe;
    QWidget window;
    window.setWindowTitle(text("one.txt[*] - Editor"));
    showAndWait(window);
    QCOMPARE(probe.line(&window), text("Window \"one.txt - Editor\" {seen}"));
    window.setWindowTitle(text("two.txt"));
    QCOMPARE(probe.line(&window), text("Window \"two.txt\" {seen}"));
}

void tst_WidgetViews::pagesAreRenamedWithTheirTabs() {
    ControlsProbe probe;
    QTabWidget window;
    auto* const page = new QWidget;
    window.addTab(page, text("Before"));
    showAndWait(window);
    QTRY_COMPARE(probe.line(page, {text("page")}), text("Page \"Before\" page=Before {seen}"));
    window.setTabText(0, text("After"));
    QTRY_COMPARE(probe.line(page, {text("page")}), text("Page \"After\" page=After {seen}"));
}

void tst_WidgetViews::aViewThatDiesIsNotShowingAnyMore() {
    ControlsProbe probe;
    QWidget window;
    auto* const tabs = new QTabWidget(&window);
    tabs->addTab(new QWidget, text("Gone"));
    tabs->resize(200, 200);
    showAndWait(window);
    QTRY_COMPARE(probe.usage(probe.find(text("Page"), text("Gone")), "seen"), 1);
    delete tabs;
    QDialog other;
    showAndWait(other);
    QTRY_COMPARE(probe.attribute(text("Page"), text("Gone"), Attribute::Showing), text("false"));
}

void tst_WidgetViews::aWidgetAtTheAddressOfADeadViewIsAnother() {
    ControlsProbe probe;
    alignas(QDialog) unsigned char memory[sizeof(QDialog)];
    auto* dialog = new (memory) QDialog;
    dialog->setWindowTitle(text("First"));
    showAndWait(*dialog);
    QTRY_COMPARE(probe.line(dialog), text("Dialog \"First\" {seen}"));
    dialog->~QDialog();
    dialog = new (memory) QDialog;
    dialog->setWindowTitle(text("Second"));
    showAndWait(*dialog);
    QTRY_COMPARE(probe.tree(), text("Dialog \"First\" {seen}\nDialog \"Second\" {seen}\n"));
    dialog->~QDialog();
}

QTEST_MAIN(tst_WidgetViews)
#include "tst_widgetviews.moc"
