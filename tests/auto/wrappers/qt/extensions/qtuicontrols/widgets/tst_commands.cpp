// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/hostapplication.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"
#include "usesfixture.h"

#include <QAction>
#include <QActionGroup>
#include <QDialog>
#include <QMainWindow>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWidgetAction>

using namespace TestLib;
using Vorsk::UIControls::Attribute;

class tst_Commands : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void anActionIsOneCommandHoweverOftenItIsListed();
    void whatIsNoCommand();
    void aCommandFollowsItsAction();
    void aCommandThatNothingListsIsHidden();
    void theShortcutOfAMenuThatWasNeverOpened();
    void theWayIsToldBeforeTheUse();
    void anActionIsCountedBeforeTheDialogOfItsSlot_data();
    void anActionIsCountedBeforeTheDialogOfItsSlot();
    void anActionThatDiesInItsSlotIsCounted();
    void aMenuThatRebuildsItselfIsCounted();
    void anAmbiguousShortcutTriggersNothing();
    void whatASlotTriggersDoesNotCount();
    void aShortcutWithoutAnActionIsACommand();

private:
    /** Shows the main window. */
    void show(QMainWindow& window, UsesFixture& fixture);
};

namespace {

void clickInMenuBar(QMenuBar* bar, const QMenu* menu) {
    click(bar, bar->actionGeometry(menu->menuAction()).center());
    QVERIFY(QTest::qWaitFor([&] { return menu->isVisible(); }));
}

} // namespace

void tst_Commands::show(QMainWindow& window, UsesFixture& fixture) {
    window.resize(400, 200);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    fixture.take();
}

void tst_Commands::anActionIsOneCommandHoweverOftenItIsListed() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&File"));
    QAction* const save = menu->addAction(text("&Save\tCtrl+S"));
    save->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_S));
    window.addToolBar(text("Tools"))->addAction(save);
    show(window, fixture);
    QCOMPARE(fixture.probe().count(text("Command")), 1);
    QCOMPARE(fixture.probe().element(save)->text(), text("Save"));
    QCOMPARE(fixture.probe().attribute(save, Attribute::Ways), text("menu toolBar shortcut"));
    QCOMPARE(UsesFixture::eventsOf(fixture.probe().element(save)), lines({"triggered"}));
}

void tst_Commands::whatIsNoCommand() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&File"));
    menu->addSeparator();
    menu->addMenu(text("Sub"));
    auto* const embedding = new QWidgetAction(menu);
    embedding->setDefaultWidget(new QSpinBox);
    menu->addAction(embedding);
    show(window, fixture);
    QCOMPARE(fixture.probe().count(text("Command")), 0);
}

void tst_Commands::aCommandFollowsItsAction() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&File"));
    QAction* const action = menu->addAction(text("&Play"));
    show(window, fixture);
    const auto* const element = fixture.probe().element(action);
    QVERIFY(element != nullptr);
    action->setText(text("&Pause"));
    QCOMPARE(element->text(), text("Pause"));
    action->setEnabled(false);
    QCOMPARE(fixture.probe().attribute(action, Attribute::Enabled), text("false"));
    action->setEnabled(true);
    QCOMPARE(fixture.probe().attribute(action, Attribute::Enabled), QString());
    action->setVisible(false);
    QCOMPARE(fixture.probe().attribute(action, Attribute::Hidden), text("true"));
    action->setVisible(true);
    QCOMPARE(fixture.probe().attribute(action, Attribute::Hidden), QString());
    QCOMPARE(fixture.probe().attribute(action, Attribute::Ways), text("menu"));
    action->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_P));
    QCOMPARE(fixture.probe().attribute(action, Attribute::Ways), text("menu shortcut"));
}

void tst_Commands::aCommandThatNothingListsIsHidden() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&File"));
    auto* const action = new QAction(text("Open"), &window);
    menu->addAction(action);
    show(window, fixture);
    menu->removeAction(action);
    fixture.take();
    QCOMPARE(fixture.probe().attribute(action, Attribute::Hidden), text("true"));
    menu->addAction(action);
    fixture.take();
    QCOMPARE(fixture.probe().attribute(action, Attribute::Hidden), QString());
}

void tst_Commands::theShortcutOfAMenuThatWasNeverOpened() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&File"));
    QAction* const save = menu->addAction(text("&Save"));
    save->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_S));
    show(window, fixture);
    QCOMPARE(fixture.counted([] { key(Qt::Key_S, Qt::ControlModifier); }),
             lines({"Save triggered"}));
    QCOMPARE(fixture.probe().attribute(save, Attribute::UsedWays), text("shortcut"));
}

void tst_Commands::theWayIsToldBeforeTheUse() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&File"));
    QAction* const save = menu->addAction(text("&Save"));
    window.addToolBar(text("Tools"))->addAction(save);
    show(window, fixture);
    QStringList told;
    const auto* const element = fixture.probe().element(save);
    connect(element, &Vorsk::UIAbstraction::UIElement::usageIncreased, this,
            [&] { told += fixture.probe().attribute(save, Attribute::UsedWays); });
    clickInMenuBar(window.menuBar(), menu);
    clickItem(menu, save);
    click(window.findChild<QToolBar*>()->widgetForAction(save));
    QCOMPARE(told, lines({"menu", "menu toolBar"}));
}

void tst_Commands::anActionIsCountedBeforeTheDialogOfItsSlot_data() {
    QTest::addColumn<QString>("way");
    for (const char* const way : {"menu", "shortcut", "toolBar"}) {
        QTest::newRow(way) << text(way);
    }
}

void tst_Commands::anActionIsCountedBeforeTheDialogOfItsSlot() {
    QFETCH(QString, way);
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&File"));
    QAction* const open = menu->addAction(text("&Open"));
    open->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_O));
    window.addToolBar(text("Tools"))->addAction(open);
    show(window, fixture);
    QStringList inside;
    connect(open, &QAction::triggered, this, [&] {
        QDialog dialog;
        auto* const ok = new QPushButton(text("OK"), &dialog);
        connect(ok, &QPushButton::clicked, &dialog, &QDialog::accept);
        UsesFixture::runLater([&] {
            QVERIFY(QTest::qWaitFor([&] { return dialog.isActiveWindow(); }));
            inside = fixture.take();
            click(ok);
        });
        dialog.exec();
    });
    const QStringList after = fixture.counted([&] {
        if (way == text("menu")) {
            clickInMenuBar(window.menuBar(), menu);
            clickItem(menu, open);
        } else if (way == text("shortcut")) {
            key(Qt::Key_O, Qt::ControlModifier);
        } else {
            click(window.findChild<QToolBar*>()->widgetForAction(open));
        }
    });
    QCOMPARE(inside, lines({"Open triggered"}));
    QCOMPARE(after, lines({"OK clicked"}));
    QCOMPARE(fixture.probe().attribute(open, Attribute::UsedWays), way);
}

void tst_Commands::anActionThatDiesInItsSlotIsCounted() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&File"));
    QAction* const action = menu->addAction(text("&Close"));
    show(window, fixture);
    const QPointer<QAction> guard(action);
    connect(action, &QAction::triggered, action, [action] { delete action; });
    QCOMPARE(fixture.counted([&] {
        clickInMenuBar(window.menuBar(), menu);
        clickItem(menu, action);
        key(Qt::Key_F9); // any further input
    }),
             lines({"Close triggered"}));
    QVERIFY(guard.isNull());
}

void tst_Commands::aMenuThatRebuildsItselfIsCounted() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&Recent"));
    const std::function<void()> fill = [&] {
        menu->clear();
        for (const char* const name : {"one", "two"}) {
            QAction* const action = menu->addAction(text(name));
            connect(action, &QAction::triggered, this, [&] { fill(); });
        }
    };
    fill();
    show(window, fixture);
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(fixture.counted([&] {
            clickInMenuBar(window.menuBar(), menu);
            clickItem(menu, menu->actions().at(1));
            key(Qt::Key_F9);
        }),
                 lines({"two triggered"}));
    }
}

void tst_Commands::anAmbiguousShortcutTriggersNothing() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&File"));
    for (const char* const name : {"one", "two"}) {
        menu->addAction(text(name))->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_T));
    }
    show(window, fixture);
    expectWarning(text("QAction::event: Ambiguous shortcut overload: Ctrl+T"));
    QCOMPARE(fixture.counted([] { key(Qt::Key_T, Qt::ControlModifier); }), QStringList());
}

void tst_Commands::whatASlotTriggersDoesNotCount() {
    UsesFixture fixture;
    fixture.show();
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(text("&File"));
    QAction* const all = menu->addAction(text("&All"));
    QAction* const one = menu->addAction(text("&One"));
    one->setCheckable(true);
    auto* const button = new QPushButton(text("button"));
    window.setCentralWidget(button);
    show(window, fixture);
    clickInMenuBar(window.menuBar(), menu);
    clickItem(menu, one); // it is known to be one that a person triggers
    QCOMPARE(fixture.take(), lines({"One triggered"}));
    connect(all, &QAction::triggered, one, &QAction::trigger);
    connect(button, &QPushButton::clicked, one, &QAction::trigger);
    QCOMPARE(fixture.counted([&] {
        clickInMenuBar(window.menuBar(), menu);
        clickItem(menu, all);
    }),
             lines({"All triggered"}));
    QCOMPARE(fixture.counted([&] { click(button); }), lines({"button clicked"}));
    one->trigger();
    QCOMPARE(fixture.take(), QStringList());
}

void tst_Commands::aShortcutWithoutAnActionIsACommand() {
    UsesFixture fixture;
    auto* const early = new QShortcut(QKeySequence(Qt::CTRL + Qt::Key_1), &fixture.window());
    fixture.show();
    QCOMPARE(fixture.probe().line(early, lines({"ways"})),
             text("Command \"Ctrl+1\" ways=shortcut"));
    auto* const late = new QShortcut(QKeySequence(Qt::CTRL + Qt::Key_2), &fixture.window());
    QCOMPARE(fixture.counted([] { key(Qt::Key_1, Qt::ControlModifier); }),
             lines({"Ctrl+1 triggered"}));
    QCOMPARE(fixture.counted([] { key(Qt::Key_2, Qt::ControlModifier); }),
             lines({"Ctrl+2 triggered"}));
    Q_EMIT late->activated();
    QCOMPARE(fixture.take(), QStringList());
}

int main(int argc, char** argv) {
    HostApplication application(argc, argv);
    tst_Commands test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_commands.moc"
