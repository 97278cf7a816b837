// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/keepfreed.h"
#include "testlib/samestorage.h"
#include "testlib/testcase.h"
#include "testlib/widgetsprobe.h"
#include "uiabstraction/uielement.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

#include <functional>
#include <memory>

#include <malloc.h>

using namespace Vorsk::UICoverage;
using TestLib::WidgetsProbe;
using Vorsk::UIAbstraction::UIElement;

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

/** Counts its paintings and lets the test do something inside of one of them. */
template <class Widget>
class PaintingWidget : public Widget {
public:
    using Widget::Widget;

    void atPainting(int number, const std::function<void()>& work) {
        m_number = paints + number;
        m_work = work;
    }

    int paints = 0;

protected:
    void paintEvent(QPaintEvent* event) override {
        Widget::paintEvent(event);
        if (++paints == m_number) {
            const std::function<void()> work = m_work;
            work(); // the widget may be gone afterwards
        }
    }

private:
    int m_number = -1;
    std::function<void()> m_work;
};

QString imageOf(int number) {
    return QStringLiteral("kind 5 imageChanged #%1 image").arg(number);
}

} // namespace

/** The tracker's pictures, and what the application's code does while they are made. */
class tst_WidgetPictures : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("fusion")); }

    void init() {
        TestCase::init();
        m_probe = std::make_unique<WidgetsProbe>(WidgetsProbe::Pictures::On,
                                                 TestLib::TreePrinter::Sizes::Hidden);
    }

    void cleanup() {
        m_probe.reset();
        TestCase::cleanup();
    }

    void withoutScreenshotsNothingIsGrabbed() {
        m_probe->tracker().setTakeScreenshotsOfElements(false);
        PaintingWidget<QWidget> widget;
        QMenu menu;
        menu.addAction(text("One"));
        menu.addSeparator();
        widget.show();
        menu.show();
        const int paints = widget.paints;
        m_probe->show(&widget);
        m_probe->show(&menu);
        QCOMPARE(widget.paints, paints);
        QCOMPARE(m_probe->takeRecords(5), QStringList());
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    void withScreenshotsEveryShownWidgetIsGrabbed() {
        PaintingWidget<QWidget> widget;
        QMenu menu;
        menu.addAction(text("One"));
        menu.addSeparator();
        QMenuBar menuBar;
        menuBar.addAction(text("Two"));
        widget.show();
        menuBar.show();
        menu.show(); // last, because another window closes a popup
        const int paints = widget.paints;
        m_probe->show(&widget);
        m_probe->show(&menu);
        m_probe->show(&menuBar);
        QCOMPARE(widget.paints, paints + 1);
        QCOMPARE(m_probe->takeRecords(5).size(), 5);
        QCOMPARE(m_probe->element(&widget)->image().size(), widget.size());
        QCOMPARE(m_probe->takeLog(),
                 QStringList{text("warning: Tried to grab unregistered action: ''")});
        m_probe->tracker().setTakeScreenshotsOfElements(false);
        m_probe->show(&widget);
        QCOMPARE(m_probe->takeRecords(5), QStringList());
    }

    /** Its list says that it is opaque, and is not painted while the popup is shown. */
    void popupOfAComboBoxShowsNoMemoryOfTheApplication() {
        constexpr int filling = 0xA5;
        QComboBox comboBox;
        comboBox.addItems({text("one"), text("two"), text("three")});
        comboBox.show();
        m_probe->start();
        mallopt(M_PERTURB, filling); // new memory holds the complement of each bit
        comboBox.showPopup();
        mallopt(M_PERTURB, 0);
        const UIElement* const popup = m_probe->element(comboBox.view()->window());
        QVERIFY(popup);
        const QImage image = popup->image().convertToFormat(QImage::Format_RGB32);
        QVERIFY(!image.isNull());
        const QRgb memory = 0xFF000000U | 0x010101U * (~filling & 0xFF);
        int found = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                found += image.pixel(x, y) == memory ? 1 : 0;
            }
        }
        QCOMPARE(found, 0);
    }

    void failedGrabWarnsAndStoresThatThereIsNoPicture_data() {
        QTest::addColumn<QSize>("size");
        QTest::newRow("no area") << QSize(0, 0);
        QTest::newRow("no height") << QSize(20, 0);
        // More than 64 megapixels, and not one of them may be asked for.
        QTest::newRow("beyond reason") << QSize(QWIDGETSIZE_MAX, 5);
        QTest::newRow("far beyond reason") << QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    }

    void failedGrabWarnsAndStoresThatThereIsNoPicture() {
        QFETCH(QSize, size);
        QWidget window;
        window.resize(50, 50);
        QPushButton button(QStringLiteral("&\u00dcber"), &window);
        window.show();
        button.resize(size);
        m_probe->show(&button);
        m_probe->show(&button);
        const QString warning = QStringLiteral("warning: Failed to grab widget: '%1'.");
        QStringList log = m_probe->takeLog();
        log = log.filter(QStringLiteral("Failed"));
        QCOMPARE(log, (QStringList{warning.arg(QStringLiteral("\u00dcber")),
                                   warning.arg(QStringLiteral("\u00dcber"))}));
        const QStringList records = m_probe->takeRecords(5);
        QCOMPARE(records.size(), 2);
        QVERIFY(records.at(0).endsWith(QStringLiteral(" no image")));
        QVERIFY(m_probe->element(&button)->image().isNull());
    }

    void widgetDeletedWhileItIsGrabbed() {
        const TestLib::KeepFreed keepFreed;
        auto* const widget = new PaintingWidget<QPushButton>;
        widget->show();
        const QPointer<QWidget> guard(widget);
        widget->atPainting(1, [widget] { delete widget; });
        m_probe->show(widget);
        QVERIFY(guard.isNull());
        QCOMPARE(m_probe->element(widget), nullptr);
        // Neither a picture nor a geometry of what is not there any more.
        QCOMPARE(m_probe->takeRecords(),
                 (QStringList{text("kind 1 elementAdded #1 Button/QPushButton {shown=0}"),
                              text("kind 8 transparentNodeChanged #1 false"),
                              text("kind 7 textChanged #1 null"),
                              text("kind 3 eventRegistered #1 clicked"),
                              text("kind 11 usageIncreased #1 shown=1")}));
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    void widgetAtTheAddressOfOneThatDiedWhileItWasGrabbedGetsNoPictureOfIt() {
        const TestLib::KeepFreed keepFreed;
        TestLib::SameStorage<PaintingWidget<QPushButton>> storage;
        PaintingWidget<QPushButton>* const widget = storage.make();
        widget->show();
        widget->atPainting(1, [&] {
            storage.make();
            m_probe->tracker().setTakeScreenshotsOfElements(false);
            m_probe->show(widget); // is the new one
        });
        m_probe->show(widget);
        QVERIFY(m_probe->element(widget));
        const QStringList records = m_probe->takeRecords();
        QCOMPARE(records.filter(text("elementAdded")).size(), 2);
        QCOMPARE(records.filter(text("imageChanged")), QStringList());
        QVERIFY(m_probe->element(widget)->image().isNull());
    }

    void menuDeletedWhileItIsGrabbed_data() { paintings(); }

    void menuDeletedWhileItIsGrabbed() { widgetWithItemsDeletedWhileItIsGrabbed<QMenu>(); }

    void menuBarDeletedWhileItIsGrabbed_data() { paintings(); }

    void menuBarDeletedWhileItIsGrabbed() { widgetWithItemsDeletedWhileItIsGrabbed<QMenuBar>(); }

    void actionsDeletedWhileTheirMenuIsGrabbed_data() {
        QTest::addColumn<int>("painting");
        QTest::addColumn<int>("action");
        QTest::addColumn<QList<int>>("pictures");
        const QList<int> menuAndTwo{1, 3};
        const QList<int> menuAndOne{1, 2};
        QTest::newRow("first, with the menu") << 1 << 0 << menuAndTwo;
        QTest::newRow("second, with the menu") << 1 << 1 << menuAndOne;
        QTest::newRow("the one that is grabbed") << 2 << 0 << menuAndTwo;
        QTest::newRow("the next one") << 2 << 1 << menuAndOne;
    }

    void actionsDeletedWhileTheirMenuIsGrabbed() {
        QFETCH(int, painting);
        QFETCH(int, action);
        QFETCH(QList<int>, pictures);
        PaintingWidget<QMenu> menu;
        const QList<QAction*> actions{menu.addAction(text("One")), menu.addAction(text("Two"))};
        menu.show();
        menu.atPainting(painting, [actions, action] { delete actions.at(action); });
        m_probe->show(&menu);
        QCOMPARE(menu.actions().size(), 1);
        QStringList expected;
        for (int number : qAsConst(pictures)) {
            expected.append(imageOf(number));
        }
        QCOMPARE(m_probe->takeRecords(5), expected);
        QCOMPARE(m_probe->takeLog(), QStringList());
        QCOMPARE(m_probe->element(&menu)->children().size(), 2);
    }

    void anotherWindowShownWhileAWidgetIsGrabbed() {
        PaintingWidget<QPushButton> button;
        QDialog dialog;
        button.atPainting(1, [&dialog] { dialog.show(); });
        m_probe->start();
        button.show();
        QCOMPARE(m_probe->takeRecords(),
                 (QStringList{
                     text("kind 1 elementAdded #1 Button/QPushButton {shown=0}"),
                     text("kind 8 transparentNodeChanged #1 false"),
                     text("kind 7 textChanged #1 null"), text("kind 3 eventRegistered #1 clicked"),
                     text("kind 11 usageIncreased #1 shown=1"),
                     // inside of the grab
                     text("kind 1 elementAdded #2 Dialog/QDialog {shown=0}"),
                     text("kind 8 transparentNodeChanged #2 false"),
                     text("kind 10 windowNodeChanged #2 true"), text("kind 7 textChanged #2 null"),
                     text("kind 11 usageIncreased #2 shown=1"), imageOf(2),
                     text("kind 4 geometryChanged #2 (rect)"),
                     // and back
                     imageOf(1), text("kind 4 geometryChanged #1 (rect)")}));
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    void sameWidgetShownAgainWhileItIsGrabbed() {
        PaintingWidget<QMenu> menu;
        menu.addAction(text("One"));
        menu.show();
        menu.atPainting(1, [this, &menu] { m_probe->show(&menu); });
        expectWarning(text("QWidget::repaint: Recursive repaint detected")); // Qt's own
        m_probe->show(&menu);
        QCOMPARE(m_probe->tree(&menu),
                 text("Menu/QMenu window (rect) image {shown=2}\n"
                      "  MenuItem/QAction \"One\" (rect) image {clicked=0, shown=2}\n"));
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    void connectionsCutWhileAWidgetIsGrabbed() {
        PaintingWidget<QPushButton> button;
        button.show();
        button.atPainting(1, [&button] { button.disconnect(); });
        m_probe->show(&button);
        QCOMPARE(m_probe->takeRecords(5), QStringList{imageOf(1)});
        button.click(); // cut, and not made anew
        QCOMPARE(m_probe->usage(&button, "clicked"), 0);
    }

private:
    static void paintings() {
        QTest::addColumn<int>("painting");
        QTest::addColumn<int>("pictures");
        QTest::newRow("the whole") << 1 << 0;
        QTest::newRow("its first item") << 2 << 1;
        QTest::newRow("its second item") << 3 << 2;
    }

    template <class Widget>
    void widgetWithItemsDeletedWhileItIsGrabbed() {
        QFETCH(int, painting);
        QFETCH(int, pictures);
        const TestLib::KeepFreed keepFreed;
        // Not the widget's own, so that they outlive it.
        QAction one(text("One"));
        QAction two(text("Two"));
        auto* const widget = new PaintingWidget<Widget>;
        widget->addActions({&one, &two});
        widget->show();
        const QPointer<QWidget> guard(widget);
        widget->atPainting(painting, [widget] { delete widget; });
        m_probe->show(widget);
        QVERIFY(guard.isNull());
        QCOMPARE(m_probe->element(widget), nullptr);
        QStringList expected;
        for (int number = 1; number <= pictures; ++number) {
            expected.append(imageOf(number));
        }
        QCOMPARE(m_probe->takeRecords(5), expected);
        QCOMPARE(m_probe->takeLog(), QStringList());
    }

    std::unique_ptr<WidgetsProbe> m_probe;
};

QTEST_MAIN(tst_WidgetPictures)
#include "tst_widgetpictures.moc"
