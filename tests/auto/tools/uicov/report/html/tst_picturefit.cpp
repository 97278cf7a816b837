// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/picturefit.h"
#include "testlib/testcase.h"

#include <QPainter>
#include <QTest>

using Uicov::Report::Html::PictureFit;

namespace {

const QRect place(20, 10, 60, 24);

/** A button with something like a caption on it. */
QImage button(const QColor& ground, const QColor& ink, int captionX = 10) {
    QImage image(place.size(), QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    painter.setPen(ink);
    painter.drawRect(0, 0, place.width() - 1, place.height() - 1);
    for (int i = 0; i < 6; ++i) {
        painter.fillRect(captionX + i * 6, 7 + i % 3, 3, 10 - i % 2, ink);
    }
    return image;
}

QImage windowWith(const QImage& content) {
    QImage window(120, 60, QImage::Format_RGB32);
    window.fill(QColor(239, 239, 239));
    QPainter(&window).drawImage(place.topLeft(), content);
    return window;
}

} // namespace

class TestPictureFit : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theSamePixels() {
        const QImage own = button(Qt::white, Qt::black);
        const PictureFit fit(windowWith(own), own, place);
        QVERIFY(fit.isSame());
        QVERIFY(!fit.isOther());
    }

    void likenessIsLargeForTheSameThingAndSmallForAnother() {
        const QImage own = button(Qt::white, Qt::black);
        QCOMPARE(PictureFit(windowWith(own), own, place).likeness(), 1.0);
        const QImage pressed = button(QColor(180, 190, 200), QColor(60, 60, 60));
        QVERIFY(PictureFit(windowWith(pressed), own, place).likeness() > 0.6);
        QVERIFY(PictureFit(windowWith(QImage()), own, place).likeness() < 0.25);
        QCOMPARE(PictureFit(windowWith(own), QImage(), place).likeness(), 0.0);
    }

    void anotherStateOfTheSameThing() {
        const QImage before = button(QColor(240, 240, 240), Qt::black);
        const QImage pressed = button(QColor(180, 190, 200), QColor(60, 60, 60));
        const PictureFit fit(windowWith(pressed), before, place);
        QVERIFY(!fit.isSame());
        QVERIFY(!fit.isOther());
    }

    void theWindowHasNothingThere() {
        const PictureFit fit(windowWith(QImage()), button(Qt::white, Qt::black), place);
        QVERIFY(fit.isOther());
    }

    void theWindowHasSomethingElseThere() {
        QImage other(place.size(), QImage::Format_RGB32);
        for (int y = 0; y < other.height(); ++y) {
            for (int x = 0; x < other.width(); ++x) {
                other.setPixelColor(x, y, (x / 9 + y / 5) % 2 == 0 ? Qt::gray : Qt::white);
            }
        }
        const PictureFit fit(windowWith(other), button(Qt::white, Qt::black), place);
        QVERIFY(fit.isOther());
    }

    void whatCannotBeTold_data() {
        QTest::addColumn<QImage>("own");
        QTest::addColumn<QRect>("at");
        QImage blank(place.size(), QImage::Format_RGB32);
        blank.fill(Qt::white);
        QTest::newRow("blank") << blank << place;
        QTest::newRow("null") << QImage() << place;
        QTest::newRow("of another size")
            << button(Qt::white, Qt::black) << place.adjusted(0, 0, 1, 0);
        QTest::newRow("partly outside") << button(Qt::white, Qt::black) << place.translated(80, 0);
    }

    void whatCannotBeTold() {
        QFETCH(QImage, own);
        QFETCH(QRect, at);
        const PictureFit fit(windowWith(QImage()), own, at);
        QVERIFY(!fit.isSame());
        QVERIFY(!fit.isOther());
    }
};

QTEST_GUILESS_MAIN(TestPictureFit)

#include "tst_picturefit.moc"
