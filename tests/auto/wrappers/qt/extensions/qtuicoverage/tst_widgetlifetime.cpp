// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/keepfreed.h"
#include "testlib/samestorage.h"
#include "testlib/testcase.h"
#include "testlib/widgetsprobe.h"
#include "uiabstraction/uielement.h"

#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QLibrary>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QWidgetAction>

#include <functional>
#include <memory>

#include <dlfcn.h>

using namespace Vorsk::UICoverage;
using TestLib::WidgetsProbe;
using Vorsk::UIAbstraction::UIElement;

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

/** A widget in a menu, whose code runs when the menu is laid out. */
class AskedForItsSize : public QWidget {
public:
    using QWidget::QWidget;
    QSize sizeHint() const override {
        if (whenAsked) {
            whenAsked();
        }
        return {20, 20};
    }
    std::function<void()> whenAsked;
};

/** The last widget in a menu, whose code runs when the menu is visible and not yet laid out. */
class LastShown : public QWidget {
public:
    using QWidget::QWidget;
    std::function<void()> whenShown;

protected:
    void showEvent(QShowEvent*) override { whenShown(); }
};

/** Two buttons in a menu; laying the menu out deletes one of them. */
struct DeadlyMenu {
    explicit DeadlyMenu(bool deletesFirst)
        : deletesTheFirst(deletesFirst)
        , first(new QPushButton(&menu))
        , second(new QPushButton(&menu))
        , asked(new AskedForItsSize)
        , action(nullptr) {
        first->setObjectName(text("first"));
        second->setObjectName(text("second"));
        action.setDefaultWidget(asked);
        menu.addAction(&action);
        last = new LastShown(&menu);
        menu.resize(200, 200);
    }

    /** Does the work while the menu is visible and has to be laid out. */
    void show(const std::function<void()>& work) {
        last->whenShown = [this, work] {
            // What is hidden is not laid out but only noted.
            menu.setAttribute(Qt::WA_WState_Visible, false);
            menu.addAction(text("Another"));
            menu.setAttribute(Qt::WA_WState_Visible);
            asked->whenAsked = [this] { delete (deletesTheFirst ? first : second); };
            work();
            asked->whenAsked = nullptr;
        };
        menu.show();
    }

    bool deletesTheFirst;
    QMenu menu;
    QPointer<QPushButton> first;
    QPointer<QPushButton> second;
    AskedForItsSize* asked;
    QWidgetAction action;
    LastShown* last = nullptr;
};

} // namespace

/** Widgets that come, go and hang together in ways that a tracker has to survive. */
class tst_WidgetLifetime : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("fusion")); }

    void init() {
        TestCase::init();
        m_probe = std::make_unique<WidgetsProbe>(WidgetsProbe::Pictures::Off,
                                                 TestLib::TreePrinter::Sizes::Hidden);
    }

    void cleanup() {
        m_probe.reset();
        TestCase::cleanup();
    }

    void widgetThatCutItsConnectionsAndDiedIsForgotten() {
        TestLib::SameStorage<QDialog> storage;
        QDialog* const dialog = storage.make();
        dialog->show();
        m_probe->show(dialog);
        const QPointer<UIElement> element = m_probe->element(dialog);
        dialog->disconnect();
        storage.destroy();
        QCOMPARE(m_probe->element(dialog), nullptr);
        QVERIFY(!element.isNull());
    }

    void newWidgetAtTheAddressOfOneThatCutItsConnectionsIsNew() {
        TestLib::SameStorage<QPushButton> storage;
        QPushButton* const button = storage.make(text("Old"));
        button->show();
        m_probe->show(button);
        UIElement* const oldElement = m_probe->element(button);
        button->disconnect();
        QCOMPARE(storage.make(text("New")), button);
        button->show();
        m_probe->show(button);
        QVERIFY(m_probe->element(button) != oldElement);
        QCOMPARE(m_probe->tree(button),
                 text("Button/QPushButton \"New\" (rect) {clicked=0, shown=1}\n"));
        button->click();
        QCOMPARE(m_probe->usage(button, "clicked"), 1);
        QCOMPARE(oldElement->usage().value(Vorsk::UIAbstraction::UIEvent(text("clicked"))), 0);
        QCOMPARE(m_probe->tracker().elementStore().elements(),
                 QList<UIElement*>{m_probe->element(button)});
    }

    void widgetOfAnotherClassAtTheAddressGetsItsOwnObserver() {
        // Of equal size, so that one can stand where the other stood.
        static_assert(sizeof(QPushButton) == sizeof(QCheckBox), "must fit");
        TestLib::SameStorage<QPushButton> storage;
        QPushButton* const button = storage.make();
        button->show();
        m_probe->show(button);
        button->disconnect();
        storage.destroy();
        auto* const checkBox = new (static_cast<void*>(button)) QCheckBox;
        checkBox->show();
        m_probe->show(checkBox);
        QCOMPARE(m_probe->tree(checkBox), text("CheckBox/QCheckBox (rect) {checked=0, clicked=0, "
                                               "shown=1, unchecked=0}\n"));
        checkBox->setChecked(true);
        QCOMPARE(m_probe->usage(checkBox, "checked"), 1);
        checkBox->~QCheckBox();
        QVERIFY(m_probe->tracker().elementStore().elements().isEmpty());
    }

    void parentThatCutItsConnectionsIsNotTakenForAnOldOne() {
        TestLib::SameStorage<QDialog> storage;
        QDialog* const dialog = storage.make();
        m_probe->show(dialog);
        const UIElement* const oldElement = m_probe->element(dialog);
        dialog->disconnect();
        storage.make();
        QPushButton button(dialog);
        m_probe->show(&button);
        QVERIFY(m_probe->element(&button)->parent() != oldElement);
        QCOMPARE(m_probe->element(&button)->parent(), m_probe->element(dialog));
        QVERIFY(oldElement->children().isEmpty());
    }

    void menuThatCutItsConnectionsTakesItsActionsAlong() {
        TestLib::SameStorage<QMenu> storage;
        QMenu* const menu = storage.make();
        menu->addAction(text("Old"));
        menu->show();
        m_probe->show(menu);
        menu->disconnect();
        storage.make();
        QAction* const action = menu->addAction(text("New"));
        menu->show();
        m_probe->show(menu);
        m_probe->press(menu, menu->actionGeometry(action).center());
        action->trigger();
        QCOMPARE(m_probe->tree(menu),
                 text("Menu/QMenu window (rect) {shown=1}\n"
                      "  MenuItem/QAction \"New\" (rect) {clicked=2, shown=1}\n"));
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    void actionDeletedWhileItsMenuIsOpen() {
        QMenu menu;
        QAction* const first = menu.addAction(text("One"));
        QAction* const second = menu.addAction(text("Two"));
        m_probe->start();
        menu.popup(QPoint(0, 0));
        UIElement* const element = m_probe->element(&menu);
        delete first;
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(second).center());
        QCOMPARE(TestLib::TreePrinter(TestLib::TreePrinter::Sizes::Hidden).print(*element),
                 text("Menu/QMenu window (rect) {shown=1}\n"
                      "  MenuItem/QAction \"One\" (rect) {clicked=0, shown=1}\n"
                      "  MenuItem/QAction \"Two\" (rect) {clicked=2, shown=1}\n"));
        menu.popup(QPoint(0, 0));
        QCOMPARE(element->children().at(0)->usage().first(), 0);
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    void actionDeletedInItsOwnTriggeredSlot() {
        QMenu menu;
        auto* const action = menu.addAction(text("One"));
        connect(action, &QAction::triggered, this, [action] { delete action; });
        m_probe->start();
        menu.popup(QPoint(0, 0));
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
        QVERIFY(menu.actions().isEmpty());
        // The press, and what the menu says before the action's own slot is run.
        QCOMPARE(m_probe->tree(&menu),
                 text("Menu/QMenu window (rect) {shown=1}\n"
                      "  MenuItem/QAction \"One\" (rect) {clicked=2, shown=1}\n"));
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    void windowDeletedInAClickedSlot() {
        auto* const window = new QDialog;
        auto* const button = new QPushButton(text("Close"), window);
        new QCheckBox(window);
        connect(button, &QPushButton::clicked, window, [window] { delete window; });
        m_probe->start();
        window->show();
        UIElement* const element = m_probe->element(window);
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(m_probe->element(window), nullptr);
        QCOMPARE(m_probe->element(button), nullptr);
        QCOMPARE(element->children().size(), 2);
        QVERIFY(m_probe->tracker().elementStore().elements().isEmpty());
    }

    void widgetDeletedWhileTheMenuAroundItIsLaidOut_data() {
        QTest::addColumn<bool>("withPictures");
        QTest::newRow("without pictures") << false;
        QTest::newRow("with pictures") << true;
    }

    void widgetDeletedWhileTheMenuAroundItIsLaidOut() {
        QFETCH(bool, withPictures);
        m_probe->tracker().setTakeScreenshotsOfElements(withPictures);
        const TestLib::KeepFreed keepFreed;
        DeadlyMenu deadly(true);
        QWidget* const address = deadly.first;
        deadly.show([&] { m_probe->show(deadly.first); });
        QVERIFY(deadly.first.isNull());
        QCOMPARE(m_probe->element(address), nullptr);
        // Its element was made before the menu was looked at; nothing is done with a dead widget.
        QCOMPARE(m_probe->takeRecords().filter(text("#1")),
                 (QStringList{text("kind 1 elementAdded #1 Button/QPushButton {shown=0}"),
                              text("kind 11 usageIncreased #1 shown=1")}));
        QVERIFY(m_probe->element(&deadly.menu) != nullptr);
    }

    void actionDeletedWhileItsMenuIsLaidOut_data() {
        QTest::addColumn<bool>("isFirst");
        QTest::newRow("the one whose place is asked for") << true;
        QTest::newRow("one that comes later") << false;
    }

    void actionDeletedWhileItsMenuIsLaidOut() {
        QFETCH(bool, isFirst);
        const TestLib::KeepFreed keepFreed;
        DeadlyMenu deadly(true);
        const QPointer<QAction> victim(new QAction(text("Victim"), &deadly.menu));
        bool isDying = false; // its death has the menu laid out again
        deadly.menu.insertAction(isFirst ? &deadly.action : nullptr, victim);
        deadly.show([&] {
            deadly.asked->whenAsked = [&] {
                if (!isDying) {
                    isDying = true;
                    delete victim;
                }
            };
            m_probe->show(&deadly.menu);
        });
        QVERIFY(victim.isNull());
        const QString tree = m_probe->tree(&deadly.menu);
        QVERIFY2(!tree.contains(text("Victim")), qPrintable(tree));
        QVERIFY2(tree.contains(text("Another")), qPrintable(tree));
        QVERIFY(m_probe->takeRecords().filter(text("Victim")).isEmpty());
    }

    void childDeletedWhileItIsTracked() {
        const TestLib::KeepFreed keepFreed;
        DeadlyMenu deadly(true);
        QTest::ignoreMessage(QtDebugMsg, "handling 'first'");
        QTest::ignoreMessage(QtDebugMsg, "handling 'second'");
        QTest::ignoreMessage(QtDebugMsg, "handling ''");
        QTest::ignoreMessage(QtDebugMsg, "handling ''");
        deadly.show([&] { m_probe->tracker().trackChildWidgets(&deadly.menu); });
        QVERIFY(deadly.first.isNull());
        QVERIFY(m_probe->element(deadly.second) != nullptr);
    }

    void childDeletedWhileItsSiblingIsTracked() {
        const TestLib::KeepFreed keepFreed;
        DeadlyMenu deadly(false);
        QTest::ignoreMessage(QtDebugMsg, "handling 'first'");
        QTest::ignoreMessage(QtDebugMsg, "handling ''");
        QTest::ignoreMessage(QtDebugMsg, "handling ''");
        deadly.show([&] { m_probe->tracker().trackChildWidgets(&deadly.menu); });
        QVERIFY(deadly.second.isNull());
        QVERIFY(m_probe->element(deadly.first) != nullptr);
    }

    void menusThatOpenEachOther() {
        QMenu first(text("First"));
        QMenu second(text("Second"));
        first.addMenu(&second);
        second.addMenu(&first);
        m_probe->start();
        first.show();
        second.show();
        first.hide();
        second.hide();
        first.show();
        QCOMPARE(m_probe->tree(&first),
                 text("Menu/QMenu window (rect) {shown=2}\n"
                      "  MenuItem/QAction \"Second\" (rect) {clicked=0, shown=2}\n"
                      "    Menu/QMenu window (rect) {shown=1}\n"
                      "      MenuItem/QAction \"First\" (rect) {clicked=0, shown=1}\n"));
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    void menuSharedByTwoActionsIsCountedOnce() {
        QMainWindow window;
        QMenu shared(text("Shared"));
        QAction* const first = window.menuBar()->addAction(text("First"));
        QAction* const second = window.menuBar()->addAction(text("Second"));
        first->setMenu(&shared);
        second->setMenu(&shared);
        shared.addAction(text("Item"));
        m_probe->start();
        window.show();
        shared.popup(QPoint(0, 0));
        const UIElement* const element = m_probe->element(&shared);
        QCOMPARE(TestLib::TreePrinter(TestLib::TreePrinter::Sizes::Hidden).print(*element),
                 text("Menu/QMenu window (rect) {shown=1}\n"
                      "  MenuItem/QAction \"Item\" (rect) {clicked=0, shown=1}\n"));
        QCOMPARE(m_probe->tree(window.menuBar()).count(text("\"Item\"")), 2); // once per path
        shared.hide();
        first->setMenu(nullptr);
        second->setMenu(nullptr);
    }

    void menuSharedByTwoMenuBarsIsCountedOnce() {
        QMainWindow first;
        QMainWindow second;
        QMenu shared(text("Shared"));
        first.menuBar()->addMenu(&shared);
        second.menuBar()->addMenu(&shared);
        shared.addAction(text("Item"));
        m_probe->start();
        first.show();
        second.show();
        shared.popup(QPoint(0, 0));
        const UIElement* const element = m_probe->element(&shared);
        QCOMPARE(TestLib::TreePrinter(TestLib::TreePrinter::Sizes::Hidden).print(*element),
                 text("Menu/QMenu window (rect) {shown=1}\n"
                      "  MenuItem/QAction \"Item\" (rect) {clicked=0, shown=1}\n"));
        QCOMPARE(m_probe->tree(first.menuBar()).count(text("\"Item\"")), 1);
        QCOMPARE(m_probe->tree(second.menuBar()).count(text("\"Item\"")), 1);
        // Each of the trees deletes what it holds; the one that both hold must go once.
        shared.hide();
        const QPointer<UIElement> held(m_probe->element(&shared));
        m_probe.reset();
        QVERIFY(held.isNull());
    }

    void widgetMovedToAnotherWindowStaysWhereItWasFirst() {
        QWidget first;
        QWidget second;
        auto* const button = new QPushButton(text("Move"), &first);
        m_probe->start();
        first.show();
        second.show();
        const UIElement* const element = m_probe->element(button);
        QCOMPARE(element->parent(), m_probe->element(&first));
        button->setParent(&second);
        button->show();
        QCOMPARE(m_probe->element(button), element);
        QCOMPARE(element->parent(), m_probe->element(&first));
        m_probe->takeRecords(11);
        button->click();
        QCOMPARE(m_probe->takeRecords(11).size(), 1); // by one observer, as before
    }

    /** Nothing of its code, its class or its texts is used any more. */
    void widgetOfAPluginThatIsUnloaded() {
        QLibrary library(text(PLUGIN_WIDGET));
        const auto make =
            reinterpret_cast<QPushButton* (*)(QWidget*)>(library.resolve("makePluginButton"));
        QVERIFY2(make != nullptr, qPrintable(library.errorString()));
        QDialog dialog;
        m_probe->start();
        dialog.show();
        std::unique_ptr<QPushButton> button(make(&dialog));
        button->show();
        button->click();
        const QPointer<UIElement> element(m_probe->element(button.get()));
        QVERIFY(!element.isNull());
        QVERIFY(m_probe->tree(&dialog).contains(text("PluginButton \"Plugged in\"")));
        const auto giveTitle =
            reinterpret_cast<void (*)(QWidget*)>(library.resolve("giveTitleOfPlugin"));
        QVERIFY(giveTitle != nullptr);
        auto titled = std::make_unique<QDialog>();
        giveTitle(titled.get());
        titled->show();
        const QPointer<UIElement> titledElement(m_probe->element(titled.get()));
        QVERIFY(!titledElement.isNull());
        titled.reset();
        button.reset();
        QVERIFY(library.unload());
        QCOMPARE(dlopen(PLUGIN_WIDGET, RTLD_NOW | RTLD_NOLOAD), nullptr); // gone indeed
        QVERIFY(!element.isNull());
        QCOMPARE(titledElement->text(), text("Plugged in"));
        QPushButton next(text("Next"), &dialog);
        next.show();
        dialog.hide();
        dialog.show();
        const QString tree = m_probe->tree(&dialog);
        QVERIFY2(tree.contains(text("PluginButton \"Plugged in\"")), qPrintable(tree));
        QVERIFY2(tree.contains(text("QPushButton \"Next\"")), qPrintable(tree));
    }

    void twoThousandLevelsOfWidgets() {
        constexpr int levels = 2000;
        QWidget window;
        QWidget* innermost = &window;
        for (int i = 1; i < levels; ++i) {
            innermost = new QWidget(innermost);
        }
        QPushButton button(innermost);
        m_probe->show(&button);
        QCOMPARE(m_probe->tracker().elementStore().elements().size(), levels + 1);
        int depth = 0;
        for (const UIElement* e = m_probe->element(&button); !e->isRoot(); e = e->parent()) {
            ++depth;
        }
        QCOMPARE(depth, levels);
        // Two records for each kind of step: made, registered, and linked from the top down.
        const QStringList links = m_probe->takeRecords(2);
        QCOMPARE(links.size(), levels);
        QCOMPARE(links.first(),
                 QStringLiteral("kind 2 childAdded #%1 #%2").arg(levels + 1).arg(levels));
        QCOMPARE(links.last(), text("kind 2 childAdded #2 #1"));
    }

    void twoThousandButtonsInAWindowThatDies() {
        constexpr int buttons = 2000;
        auto window = std::make_unique<QDialog>();
        for (int i = 0; i < buttons; ++i) {
            new QPushButton(QString::number(i), window.get());
        }
        m_probe->start();
        window->show();
        const QPointer<UIElement> element = m_probe->element(window.get());
        QCOMPARE(element->children().size(), buttons);
        QCOMPARE(m_probe->tracker().elementStore().elements().size(), buttons + 1);
        window.reset();
        QVERIFY(m_probe->tracker().elementStore().elements().isEmpty());
        QCOMPARE(element->children().size(), buttons);
    }

private:
    std::unique_ptr<WidgetsProbe> m_probe;
};

QTEST_MAIN(tst_WidgetLifetime)
#include "tst_widgetlifetime.moc"
