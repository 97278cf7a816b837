// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "tracking/grab.h"

#include <QPainter>
#include <QTest>
#include <QWidget>

#include <limits>

using namespace Vorsk::UICoverage;

namespace {

constexpr int maximum = std::numeric_limits<int>::max();
constexpr int minimum = std::numeric_limits<int>::min();

/** Red on the left half, blue on the right. */
class TwoColours : public QWidget {
public:
    int paints = 0;

protected:
    void paintEvent(QPaintEvent*) override {
        ++paints;
        QPainter painter(this);
        painter.fillRect(rect(), Qt::blue);
        painter.fillRect(QRect(0, 0, width() / 2, height()), Qt::red);
    }
};

} // namespace

class tst_Grab : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
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
