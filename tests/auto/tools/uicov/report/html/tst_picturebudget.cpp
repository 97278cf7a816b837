// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/pagemodel.h"
#include "report/html/picturebudget.h"
#include "testlib/testcase.h"

#include <QBuffer>
#include <QImage>
#include <QTest>

using Uicov::Report::Html::PageModel;
using Uicov::Report::Html::PictureBudget;

namespace {

/** Without compression, as recordings may have them. */
PageModel::Picture picture(int width, int height, unsigned seed) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            seed = seed * 1664525U + 1013904223U;
            image.setPixel(x, y, (seed >> 8U) | 0xff000000U);
        }
    }
    QByteArray png;
    QBuffer buffer(&png);
    image.save(&buffer, "PNG", 100);
    return {png, image.size(), false};
}

qint64 cost(const PageModel& model) {
    qint64 sum = 0;
    for (const PageModel::Picture& one : model.pictures) {
        sum += PictureBudget::cost(one.png.size());
    }
    return sum;
}

PageModel sample() {
    PageModel model;
    model.pictures = {picture(200, 150, 1), picture(20, 10, 2), picture(100, 100, 3)};
    return model;
}

} // namespace

class TestPictureBudget : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatFitsStaysAsItIs() {
        const PageModel before = sample();
        for (const qint64 limit : {qint64{0}, cost(before), cost(before) + 1}) {
            PageModel model = before;
            PictureBudget budget(limit);
            budget.apply(model);
            QCOMPARE(budget.reduced(), 0);
            QVERIFY(budget.isKept());
            for (int i = 0; i < model.pictures.size(); ++i) {
                QCOMPARE(model.pictures.at(i).png, before.pictures.at(i).png);
            }
        }
    }

    void packingBetterComesFirstAndLosesNothing() {
        PageModel model;
        QImage plain(300, 200, QImage::Format_RGB32);
        plain.fill(Qt::red);
        QByteArray png;
        QBuffer buffer(&png);
        plain.save(&buffer, "PNG", 100);
        model.pictures = {{png, plain.size(), false}};
        PictureBudget budget(cost(model) / 2);
        budget.apply(model);
        QCOMPARE(budget.reduced(), 0);
        QVERIFY(budget.isKept());
        QCOMPARE(QImage::fromData(model.pictures.first().png).convertToFormat(plain.format()),
                 plain);
    }

    void theLargestBecomeSmaller() {
        PageModel model = sample();
        const qint64 limit = cost(model) * 6 / 10;
        PictureBudget budget(limit);
        budget.apply(model);
        QVERIFY(cost(model) <= limit);
        QVERIFY(budget.isKept());
        QVERIFY(model.pictures.at(0).isReduced);
        QVERIFY(!model.pictures.at(1).isReduced);
        const QSize reduced = QImage::fromData(model.pictures.at(0).png).size();
        QVERIFY(reduced.width() < 200);
        QCOMPARE(model.pictures.at(0).size, QSize(200, 150));
        QVERIFY(qAbs(reduced.width() * 150 - reduced.height() * 200) <= 200);
    }

    void whatCannotBeKeptIsTold() {
        PageModel model = sample();
        PictureBudget budget(10);
        budget.apply(model);
        QVERIFY(!budget.isKept());
        QVERIFY(!QImage::fromData(model.pictures.at(0).png).isNull());
    }

    void equalPicturesGiveEqualResults() {
        PageModel first = sample();
        PageModel second = sample();
        PictureBudget(cost(first) / 3).apply(first);
        PictureBudget(cost(second) / 3).apply(second);
        for (int i = 0; i < first.pictures.size(); ++i) {
            QCOMPARE(first.pictures.at(i).png, second.pictures.at(i).png);
        }
    }
};

QTEST_GUILESS_MAIN(TestPictureBudget)

#include "tst_picturebudget.moc"
