// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/controlsprobe.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QSpinBox>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

using namespace Vorsk::UIControls;
using TestLib::ControlsProbe;

class tst_ActionSurvey : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void menusThatWereNeverOpenedAreFound();
    void aMenuIsFoundOnceHoweverItIsReached();
    void aCommandThatAToolBarShowsLiesInTheWindow();
    void aSubMenuLiesInItsMenu();
    void anEntryThatOpensASubMenuIsNoCommandInAButtonsMenu();
    void aMenuWithoutATitleIsCalledLikeWhatOpensIt();
    void menusThatOpenEachOtherAreFoundOnce();
    void aContextMenuOfActionsIsFound();
    void anActionThatOnlyAShortcutReachesIsFound();
    void aToolButtonOfAnActionIsNoButton();
    void aToolButtonThatOpensAMenuIsAButton();
    void aWidgetInAToolBarIsAControlAndItsActionIsNone();
    void anIconInAnInputIsACommandAndItsClearButtonIsNone();
    void actionsThatAreAddedLaterAreFound();
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

void tst_ActionSurvey::menusThatWereNeverOpenedAreFound() {
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

void tst_ActionSurvey::aMenuIsFoundOnceHoweverItIsReached() {
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

void tst_ActionSurvey::aCommandThatAToolBarShowsLiesInTheWindow() {
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

void tst_ActionSurvey::aSubMenuLiesInItsMenu() {
    ControlsProbe probe;
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("File"));
    menu->addMenu(text("Recent"))->addAction(text("a.txt"));
    showAndWait(window);
    QCOMPARE(probe.tree(), text("Window {seen}\n  Menu \"File\"\n    Menu \"Recent\"\n"
                                "      Command \"a.txt\"\n"));
}

void tst_ActionSurvey::anEntryThatOpensASubMenuIsNoCommandInAButtonsMenu() {
    ControlsProbe probe;
    QMainWindow window;
    QToolButton button(&window);
    QMenu menu;
    QMenu* const file = menu.addMenu(text("File"));
    file->addAction(text("Open"));
    menu.addAction(text("Quit"));
    button.setMenu(&menu);
    button.setPopupMode(QToolButton::InstantPopup);
    showAndWait(window);
    QCOMPARE(probe.count(text("Command")), 2);

    menu.popup(window.mapToGlobal(QPoint()));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier,
                      menu.actionGeometry(file->menuAction()).center());
    deliver();
    QCOMPARE(probe.count(text("Command")), 2);
    file->hide();
    menu.hide();
}

void tst_ActionSurvey::aMenuWithoutATitleIsCalledLikeWhatOpensIt() {
    ControlsProbe probe;
    QMainWindow window;
    QToolButton button(&window);
    button.setText(text("&More"));
    QMenu ofButton;
    ofButton.addAction(text("Print"));
    button.setMenu(&ofButton);
    QAction options;
    options.setToolTip(text("Search options"));
    QMenu ofAction;
    ofAction.addAction(text("Case sensitive"));
    options.setMenu(&ofAction);
    window.addToolBar(text("Main"))->addAction(&options);
    showAndWait(window);
    QCOMPARE(probe.element(&ofButton)->text(), text("More"));
    QCOMPARE(probe.element(&ofAction)->text(), text("Search options"));
}

void tst_ActionSurvey::menusThatOpenEachOtherAreFoundOnce() {
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

void tst_ActionSurvey::aContextMenuOfActionsIsFound() {
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

void tst_ActionSurvey::anActionThatOnlyAShortcutReachesIsFound() {
    ControlsProbe probe;
    QWidget window;
    auto* const reached = new QAction(text("Save"), &window);
    reached->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    window.addAction(reached);
    window.addAction(new QAction(text("Nobody's"), &window));
    showAndWait(window);
    QCOMPARE(probe.tree({text("ways")}), text("Window {seen}\n  Command \"Save\" ways=shortcut\n"));
}

void tst_ActionSurvey::aToolButtonOfAnActionIsNoButton() {
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

void tst_ActionSurvey::aToolButtonThatOpensAMenuIsAButton() {
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

void tst_ActionSurvey::aWidgetInAToolBarIsAControlAndItsActionIsNone() {
    ControlsProbe probe;
    QMainWindow window;
    QToolBar* const bar = window.addToolBar(text("Main"));
    bar->addWidget(new QSpinBox);
    showAndWait(window);
    QCOMPARE(probe.tree(), text("Window {seen}\n  SpinBox\n"));
}

void tst_ActionSurvey::anIconInAnInputIsACommandAndItsClearButtonIsNone() {
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

void tst_ActionSurvey::actionsThatAreAddedLaterAreFound() {
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

QTEST_MAIN(tst_ActionSurvey)
#include "tst_actionsurvey.moc"
