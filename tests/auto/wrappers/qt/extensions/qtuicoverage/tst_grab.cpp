// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "tracking/grab.h"

#include <QGraphicsColorizeEffect>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <functional>
#include <limits>

using namespace Vorsk::UICoverage;

namespace {

constexpr int maximum = std::numeric_limits<int>::max();
constexpr int minimum = std::numeric_limits<int>::min();

/** Red on the left half, blue on the right. */
class TwoColours : public QWidget {
public:
    int paints = 0;
    int painted = 0; // pixels of the width; all of them when it is zero

protected:
    void paintEvent(QPaintEvent*) override {
        ++paints;
        const int across = painted == 0 ? width() : painted;
        QPainter painter(this);
        painter.fillRect(QRect(0, 0, across, height()), Qt::blue);
        painter.fillRect(QRect(0, 0, across / 2, height()), Qt::red);
    }
};

} // namespace

/** Of the same name as Qt's own, which is not linked here. */
class QQuickWidget : public TwoColours {
    Q_OBJECT
};

Q_DECLARE_METATYPE(std::function<void(QWidget&)>)

class tst_Grab : public TestLib::TestCase {
    Q_OBJECT

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && watched->isWidgetType() && watched != m_untold) {
            notePaint(static_cast<QWidget*>(watched), *static_cast<const QPaintEvent*>(event));
        }
        return false;
    }

private Q_SLOTS:
    void initTestCase() { qApp->installEventFilter(this); }

    void wholeWidget() {
        TwoColours widget;
        widget.resize(20, 10);
        const QImage image = grabWidget(&widget, QRect(QPoint(0, 0), QSize(-1, -1)));
        QCOMPARE(image.size(), QSize(20, 10));
        QCOMPARE(image.pixelColor(9, 9), QColor(Qt::red));
        QCOMPARE(image.pixelColor(10, 0), QColor(Qt::blue));
    }

    void partOfAWidget() {
        TwoColours widget;
        widget.resize(20, 10);
        const QImage image = grabWidget(&widget, QRect(8, 2, 4, 3));
        QCOMPARE(image.size(), QSize(4, 3));
        QCOMPARE(image.pixelColor(1, 2), QColor(Qt::red));
        QCOMPARE(image.pixelColor(2, 0), QColor(Qt::blue));
    }

    /** Whichever way Qt says what a widget covers, with contents that cover it. */
    void isPixelForPixelWhatQtGrabs_data() {
        QTest::addColumn<std::function<void(QWidget&)>>("prepare");
        const auto add = [](const char* tag, const std::function<void(QWidget&)>& prepare) {
            QTest::newRow(tag) << prepare;
        };
        add("a window", [](QWidget&) {});
        add("opaque", [](QWidget& widget) { widget.setAttribute(Qt::WA_OpaquePaintEvent); });
        add("no background",
            [](QWidget& widget) { widget.setAttribute(Qt::WA_NoSystemBackground); });
        add("translucent",
            [](QWidget& widget) { widget.setAttribute(Qt::WA_TranslucentBackground); });
        add("transparent palette", [](QWidget& widget) {
            QPalette palette = widget.palette();
            palette.setColor(QPalette::Window, Qt::transparent);
            widget.setPalette(palette);
        });
        add("fills itself", [](QWidget& widget) {
            QPalette palette = widget.palette();
            palette.setColor(QPalette::Window, Qt::transparent);
            widget.setPalette(palette);
            widget.setBackgroundRole(QPalette::Base);
            widget.setAutoFillBackground(true);
        });
        add("fills itself with nothing", [](QWidget& widget) {
            widget.setAttribute(Qt::WA_NoSystemBackground);
            widget.setAutoFillBackground(true);
            QPalette palette = widget.palette();
            palette.setBrush(QPalette::Window, Qt::NoBrush);
            widget.setPalette(palette);
        });
        add("effect", [](QWidget& widget) {
            widget.setGraphicsEffect(new QGraphicsColorizeEffect(&widget));
        });
        add("style sheet", [](QWidget& widget) {
            widget.setStyleSheet(QStringLiteral("QPushButton { background: green; margin: 3px }"));
        });
    }

    void isPixelForPixelWhatQtGrabs() {
        QFETCH(std::function<void(QWidget&)>, prepare);
        QWidget window;
        QVBoxLayout layout(&window);
        QPushButton button(QStringLiteral("OK"));
        QListWidget list;
        list.addItems({QStringLiteral("one"), QStringLiteral("two")});
        TwoColours colours;
        colours.setFixedHeight(10);
        QWidget* const children[] = {&button, &list, &colours};
        for (QWidget* child : children) {
            layout.addWidget(child);
        }
        prepare(window);
        window.resize(100, 150);
        const QRect whole(QPoint(0, 0), QSize(-1, -1));
        const auto compare = [&](QWidget& widget) {
            for (const QRect& part : {whole, QRect(5, 6, 20, 10)}) {
                const QImage expected = widget.grab(part).toImage();
                const QImage actual = grabWidget(&widget, part);
                QCOMPARE(actual.hasAlphaChannel(), expected.hasAlphaChannel());
                QCOMPARE(actual.size(), expected.size());
                // What nobody paints is not compared.
                if (expected.hasAlphaChannel() || !widget.testAttribute(Qt::WA_OpaquePaintEvent) ||
                    &widget == &colours) {
                    QCOMPARE(actual, expected);
                }
            }
        };
        compare(window); // hidden: laid out by the first grab
        window.show();
        compare(window);
        for (QWidget* child : children) {
            compare(*child);
        }
    }

    void hiddenWidgetIsLaidOutFirst() {
        QWidget window;
        window.setAttribute(Qt::WA_OpaquePaintEvent);
        QVBoxLayout layout(&window);
        layout.addWidget(new QPushButton(QStringLiteral("OK")));
        window.resize(10, 10); // less than the button has
        const QImage image = grabWidget(&window, QRect(QPoint(0, 0), QSize(-1, -1)));
        QVERIFY(image.width() > 10);
        QCOMPARE(image.size(), window.size());
    }

    void whatAnOpaqueWidgetDoesNotPaintIsBlack_data() {
        QTest::addColumn<QRect>("rectangle");
        QTest::newRow("whole") << QRect(QPoint(0, 0), QSize(-1, -1));
        QTest::newRow("part") << QRect(2, 3, 300, 200);
        QTest::newRow("partly outside") << QRect(200, 100, 300, 200);
    }

    void whatAnOpaqueWidgetDoesNotPaintIsBlack() {
        QFETCH(QRect, rectangle);
        QWidget window; // which paints nothing below its opaque child
        QWidget widget(&window);
        widget.setAttribute(Qt::WA_OpaquePaintEvent);
        window.setAttribute(Qt::WA_OpaquePaintEvent);
        window.resize(400, 300);
        widget.resize(window.size());
        window.show();
        // Used memory, of which a pixmap of that size gets some again.
        for (int i = 0; i < 10; ++i) {
            QPixmap used(widget.size());
            used.fill(QColor(1, 2, 3));
        }
        for (QWidget* const grabbed : {&widget, &window}) {
            const QImage image = grabWidget(grabbed, rectangle);
            QImage black(image.size(), QImage::Format_RGB32);
            black.fill(Qt::black);
            QVERIFY(!image.hasAlphaChannel());
            QCOMPARE(image, black);
        }
    }

    void nothingIsPaintedUnlessAWidgetIsGrabbed() {
        QPixmap picture(20, 10);
        picture.fill(Qt::green);
        QWidget other;
        other.setAttribute(Qt::WA_OpaquePaintEvent);
        other.resize(20, 10);
        other.render(&picture);
        QCOMPARE(picture.toImage().pixelColor(0, 0), QColor(Qt::green));
    }

    /** Qt lets a widget paint as much as is asked for: an item of a menu may be wider than that. */
    void whatIsPaintedOutsideOfTheWidgetStays() {
        TwoColours colours;
        colours.painted = 40;
        colours.resize(20, 10);
        colours.show();
        const QImage image = grabWidget(&colours, QRect(0, 0, 40, 10));
        QCOMPARE(image, colours.grab(QRect(0, 0, 40, 10)).toImage());
        QCOMPARE(image.pixelColor(39, 9), QColor(Qt::blue));
    }

    void whatIsOpaqueAndNotPaintedAtAllIsBlack() {
        QWidget window;
        QWidget child(&window);
        child.setAutoFillBackground(true);
        child.setGeometry(10, 0, 40, 20);
        window.resize(60, 20);
        window.show();
        child.setUpdatesEnabled(false); // as the list of a combo box while that opens it
        for (int i = 0; i < 10; ++i) {
            QPixmap used(window.size());
            used.fill(QColor(1, 2, 3));
        }
        const QImage image = grabWidget(&window, QRect(QPoint(0, 0), QSize(-1, -1)));
        QCOMPARE(image.pixelColor(10, 10), QColor(Qt::black));
        QCOMPARE(image.pixelColor(49, 19), QColor(Qt::black));
        QCOMPARE(image.pixelColor(9, 10), window.palette().color(QPalette::Window));
        QCOMPARE(image.pixelColor(50, 19), window.palette().color(QPalette::Window));
    }

    /** A widget that Qt draws from a picture of its own is sent no Paint event. */
    void whatIsRenderedElsewhereIsLeftAsItIs() {
        QWidget window;
        auto* const rendered = new QQuickWidget;
        rendered->setParent(&window);
        rendered->setAttribute(Qt::WA_OpaquePaintEvent);
        rendered->resize(20, 10);
        window.resize(60, 20);
        window.show();
        m_untold = rendered;
        const QImage image = grabWidget(&window, QRect(QPoint(0, 0), QSize(-1, -1)));
        QCOMPARE(image.pixelColor(0, 0), QColor(Qt::red));
        QCOMPARE(image.pixelColor(19, 9), QColor(Qt::blue));
    }

    void whereNobodyTellsThePictureIsQts() {
        TwoColours colours;
        colours.resize(20, 10);
        m_untold = &colours;
        QCOMPARE(grabWidget(&colours, QRect(QPoint(0, 0), QSize(-1, -1))),
                 colours.grab().toImage());
    }

    void failedGrabIsNullAndPaintsNothing_data() {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QRect>("rectangle");
        const QRect whole(QPoint(0, 0), QSize(-1, -1));
        QTest::newRow("no width") << QSize(0, 10) << whole;
        QTest::newRow("no part") << QSize(20, 10) << QRect();
        QTest::newRow("part outside") << QSize(20, 10) << QRect(30, 0, 5, 5);
        QTest::newRow("more than 64 megapixels") << QSize(QWIDGETSIZE_MAX, 5) << whole;
        QTest::newRow("as large as a widget can be")
            << QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX) << whole;
        QTest::newRow("part of more than 64 megapixels")
            << QSize(20, 10) << QRect(0, 0, 8193, 8193);
    }

    void failedGrabIsNullAndPaintsNothing() {
        QFETCH(QSize, size);
        QFETCH(QRect, rectangle);
        TwoColours widget;
        widget.resize(size);
        QVERIFY(grabWidget(&widget, rectangle).isNull());
        QCOMPARE(widget.paints, 0);
    }

    void copyIsWhatQImageCopies_data() {
        QTest::addColumn<QRect>("rectangle");
        QTest::newRow("inside") << QRect(2, 3, 4, 5);
        QTest::newRow("partly outside") << QRect(-2, 7, 8, 8);
        QTest::newRow("around") << QRect(-3, -4, 30, 20);
        QTest::newRow("just outside on the right") << QRect(20, 0, 3, 3);
        QTest::newRow("just outside on the left") << QRect(-3, 0, 3, 3);
        QTest::newRow("far outside") << QRect(1000, -1000, 3, 3);
        QTest::newRow("null rectangle") << QRect();
        QTest::newRow("no height") << QRect(1, 1, 4, 0);
    }

    void copyIsWhatQImageCopies() {
        QFETCH(QRect, rectangle);
        QCOMPARE(copyImage(picture(), rectangle), picture().copy(rectangle));
    }

    void copyFromTheEndsOfTheNumbersIsEmpty_data() {
        QTest::addColumn<QRect>("rectangle");
        QTest::newRow("largest left") << QRect(maximum - 3, 0, 3, 3);
        QTest::newRow("smallest left") << QRect(minimum, 0, 3, 3);
        QTest::newRow("largest top") << QRect(0, maximum - 3, 3, 3);
        QTest::newRow("smallest top") << QRect(0, minimum, 3, 3);
    }

    void copyFromTheEndsOfTheNumbersIsEmpty() {
        QFETCH(QRect, rectangle);
        const QImage copy = copyImage(picture(), rectangle);
        QCOMPARE(copy.size(), QSize(3, 3));
        QCOMPARE(copy, picture().copy(QRect(1000, 1000, 3, 3)));
    }

    void copyBeyondReasonOrOfNothingIsNull() {
        QVERIFY(copyImage(picture(), QRect(0, 0, 8193, 8193)).isNull());
        QVERIFY(copyImage(QImage(), QRect(0, 0, 3, 3)).isNull());
    }

private:
    const QObject* m_untold = nullptr;

    static QImage picture() {
        QImage image(20, 10, QImage::Format_ARGB32);
        for (int y = 0; y < 10; ++y) {
            for (int x = 0; x < 20; ++x) {
                image.setPixel(x, y, qRgba(x, y, x * y % 256, 255));
            }
        }
        return image;
    }
};

QTEST_MAIN(tst_Grab)
#include "tst_grab.moc"
