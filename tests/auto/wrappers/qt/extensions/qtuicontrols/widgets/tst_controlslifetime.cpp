// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/samestorage.h"
#include "testlib/testcase.h"
#include "testlib/widgetdriver.h"
#include "uiabstraction/uielement.h"
#include "usesfixture.h"

#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QLibrary>
#include <QMainWindow>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QVBoxLayout>

#include <functional>
#include <memory>

#include <dlfcn.h>

using namespace TestLib;
using Vorsk::UIAbstraction::UIElement;

namespace {

/** Takes presses itself, and does with each what it is told to. */
class Pad : public QWidget {
public:
    std::function<void()> atPress;

protected:
    void mousePressEvent(QMouseEvent* event) override {
        event->accept();
        const std::function<void()> work = atPress;
        if (work) {
            work(); // the pad may be gone afterwards
        }
    }
};

/** Changes what is in it while it is resized, as layouts of the application's own do. */
class Rebuilding : public QWidget {
protected:
    void resizeEvent(QResizeEvent* event) override {
        QWidget::resizeEvent(event);
        delete m_button;
        m_button = new QPushButton(QString::number(width()), this);
        m_button->show();
    }

private:
    QPointer<QPushButton> m_button;
};

} // namespace

/** What dies, moves and comes again while the controls extension watches. */
class tst_ControlsLifetime : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void windowDeletedInAClickedSlot() {
        UsesFixture fixture;
        fixture.show();
        auto* const dialog = new QDialog;
        auto* const button = new QPushButton(text("Close"));
        (new QVBoxLayout(dialog))->addWidget(button);
        const QPointer<QDialog> guard(dialog);
        connect(button, &QPushButton::clicked, dialog, [dialog] { delete dialog; });
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog));
        fixture.take();
        QCOMPARE(fixture.counted([&] { click(button); }), lines({"Close clicked"}));
        QVERIFY(guard.isNull());
        QCOMPARE(fixture.probe().element(dialog), nullptr);
    }

    /** In the press itself, when nothing has been counted of it yet. */
    void widgetsDeletedInTheirOwnPress() {
        UsesFixture fixture;
        auto* const pad = fixture.add(new Pad, "pad");
        auto* const button = fixture.add(new QPushButton(text("Next")), "next");
        pad->setMinimumSize(50, 50);
        fixture.show();
        const QPointer<Pad> guard(pad);
        pad->atPress = [pad] { pad->deleteLater(); };
        fixture.counted([&] { press(pad, QPoint(5, 5)); });
        QTRY_VERIFY(guard.isNull());
        QCOMPARE(fixture.counted([&] { click(button); }), lines({"next clicked"}));
    }

    void dialogThatIsRunAndDeletedInASlot() {
        UsesFixture fixture;
        auto* const opener = fixture.add(new QPushButton, "opener");
        auto* const next = fixture.add(new QPushButton, "next");
        fixture.show();
        QStringList inside;
        connect(opener, &QPushButton::clicked, this, [&] {
            auto dialog = std::make_unique<QDialog>();
            QVBoxLayout layout(dialog.get());
            auto* const box = new QCheckBox(text("Sure"));
            layout.addWidget(box);
            UsesFixture::runLater([&] {
                inside = fixture.counted([&] { click(box, QPoint(5, box->height() / 2)); });
                dialog->accept();
            });
            dialog->exec();
        });
        const QStringList after = fixture.counted([&] { click(opener); });
        QCOMPARE(inside, lines({"Sure checked", "opener clicked"}));
        QCOMPARE(after, QStringList());
        // Nothing that lies on the stack of deliveries is taken for what comes next.
        QCOMPARE(fixture.counted([&] { click(next); }), lines({"next clicked"}));
    }

    void actionDeletedWhileItsMenuIsOpen() {
        UsesFixture fixture;
        fixture.show();
        QMenu menu;
        QAction* const dying = menu.addAction(text("Dying"));
        QAction* const other = menu.addAction(text("Other"));
        menu.popup(QPoint(10, 10));
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        delete dying;
        fixture.take();
        QCOMPARE(fixture.counted([&] { clickItem(&menu, other); }), lines({"Other triggered"}));
    }

    /** An application may cut all connections of an object at once, ours among them. */
    void widgetThatCutItsConnectionsAndDiedIsForgotten() {
        UsesFixture fixture;
        auto* const button = fixture.add(new QPushButton, "button");
        fixture.show();
        QCOMPARE(fixture.counted([&] { click(button); }), lines({"button clicked"}));
        const QPointer<UIElement> element(fixture.probe().element(button));
        QVERIFY(!element.isNull());
        button->disconnect();
        delete button;
        QCOMPARE(fixture.probe().element(button), nullptr);
        QVERIFY(!element.isNull());
    }

    void newWidgetAtTheAddressOfOneThatCutItsConnectionsIsNew() {
        UsesFixture fixture;
        SameStorage<QPushButton> storage;
        QPushButton* const first = storage.make(text("First"));
        fixture.add(first);
        fixture.show();
        const QPointer<UIElement> element(fixture.probe().element(first));
        QVERIFY(!element.isNull());
        QCOMPARE(fixture.counted([&] { click(first); }), lines({"First clicked"}));
        first->disconnect();
        QPushButton* const second = storage.make(text("Second"));
        QCOMPARE(second, first);
        fixture.add(second);
        QTRY_VERIFY(second->isVisible());
        QCOMPARE(fixture.counted([&] { click(second); }), lines({"Second clicked"}));
        QVERIFY(fixture.probe().element(second) != element.data());
        storage.destroy();
    }

    void menuSharedByTwoMenuBarsIsOneView() {
        UsesFixture fixture;
        fixture.show();
        QMainWindow one;
        QMainWindow other;
        QMenu menu(text("&Shared"));
        QAction* const action = menu.addAction(text("Action"));
        one.menuBar()->addMenu(&menu);
        other.menuBar()->addMenu(&menu);
        for (QMainWindow* const window : {&one, &other}) {
            window->show();
            QVERIFY(QTest::qWaitForWindowExposed(window));
        }
        QCOMPARE(fixture.probe().count(text("Command")), 1);
        fixture.take();
        menu.popup(QPoint(10, 10));
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        QCOMPARE(fixture.counted([&] { clickItem(&menu, action); }), lines({"Action triggered"}));
    }

    void menusThatOpenEachOther() {
        UsesFixture fixture;
        fixture.show();
        QMainWindow window;
        QMenu one(text("One"));
        QMenu other(text("Other"));
        one.addMenu(&other);
        other.addMenu(&one);
        QAction* const action = other.addAction(text("Action"));
        window.menuBar()->addMenu(&one);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        fixture.take();
        other.popup(QPoint(10, 10));
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        QCOMPARE(fixture.counted([&] { clickItem(&other, action); }), lines({"Action triggered"}));
        QVERIFY(!fixture.probe().tree().isEmpty());
    }

    void widgetMovedToAnotherWindowIsTheSame() {
        UsesFixture fixture;
        auto* const button = fixture.add(new QPushButton, "button");
        fixture.show();
        const UIElement* const element = fixture.probe().element(button);
        QVERIFY(element);
        QWidget other;
        QVBoxLayout layout(&other);
        layout.addWidget(button);
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        QCOMPARE(fixture.counted([&] { click(button); }), lines({"button clicked"}));
        QCOMPARE(fixture.probe().element(button), element);
    }

    void pageDeletedWhileItShows() {
        UsesFixture fixture;
        auto* const tabs = fixture.add(new QTabWidget, "tabs");
        auto* const page = new QWidget;
        auto* const button = new QPushButton(text("Remove"), page);
        tabs->addTab(page, text("First"));
        tabs->addTab(new QPushButton(text("Stays")), text("Second"));
        fixture.show();
        connect(button, &QPushButton::clicked, page, [page] { page->deleteLater(); });
        QCOMPARE(fixture.counted([&] { click(button); }), lines({"Remove clicked"}));
        QTRY_COMPARE(tabs->count(), 1);
        QCOMPARE(fixture.counted([&] { click(tabs->widget(0)); }), lines({"Stays clicked"}));
    }

    void contentsMadeAnewWhileTheyAreLaidOut() {
        UsesFixture fixture;
        auto* const rebuilding = fixture.add(new Rebuilding, "rebuilding");
        rebuilding->setMinimumSize(100, 60);
        fixture.show();
        for (int width = 200; width < 220; ++width) {
            fixture.window().resize(width, 100);
        }
        QTRY_VERIFY(rebuilding->width() > 190);
        QCoreApplication::processEvents();
        auto* const button = rebuilding->findChild<QPushButton*>();
        QVERIFY(button != nullptr && button->isVisible());
        const QByteArray expected = button->text().toUtf8() + " clicked";
        QCOMPARE(fixture.counted([&] { click(button); }), lines({expected.constData()}));
    }

    /** Nothing of its code, its class or its texts is used any more. */
    void widgetOfAPluginThatIsUnloaded() {
        QLibrary library(text(PLUGIN_WIDGET));
        const auto make =
            reinterpret_cast<QPushButton* (*)(QWidget*)>(library.resolve("makePluginButton"));
        QVERIFY2(make != nullptr, qPrintable(library.errorString()));
        const auto giveTitle =
            reinterpret_cast<void (*)(QWidget*)>(library.resolve("giveTitleOfPlugin"));
        QVERIFY(giveTitle != nullptr);
        UsesFixture fixture;
        auto* const button = fixture.add(make(nullptr));
        fixture.show();
        auto titled = std::make_unique<QDialog>();
        giveTitle(titled.get());
        titled->show();
        QVERIFY(QTest::qWaitForWindowExposed(titled.get()));
        QCOMPARE(fixture.counted([&] { click(button); }), lines({"Plugged in clicked"}));
        const QPointer<UIElement> element(fixture.probe().element(button));
        const QPointer<UIElement> titledElement(fixture.probe().element(titled.get()));
        QVERIFY(!element.isNull() && !titledElement.isNull());
        titled.reset();
        delete button;
        QVERIFY(library.unload());
        QCOMPARE(dlopen(PLUGIN_WIDGET, RTLD_NOW | RTLD_NOLOAD), nullptr); // gone indeed
        QCOMPARE(element->text(), text("Plugged in"));
        QCOMPARE(element->concreteType(), text("PluginButton"));
        QCOMPARE(titledElement->text(), text("Plugged in"));
        auto* const next = fixture.add(new QPushButton(text("Next")));
        QTRY_VERIFY(next->isVisible());
        QCOMPARE(fixture.counted([&] { click(next); }), lines({"Next clicked"}));
        QVERIFY(fixture.probe().tree().contains(text("Plugged in")));
    }
};

QTEST_MAIN(tst_ControlsLifetime)
#include "tst_controlslifetime.moc"
