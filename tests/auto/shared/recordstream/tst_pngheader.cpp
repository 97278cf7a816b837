// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/pngheader.h"
#include "recordstream/pngwriter.h"
#include "testlib/testcase.h"

#include <QImage>
#include <QTest>

using Vorsk::RecordStream::fastPng;
using Vorsk::RecordStream::pngSize;
using Vorsk::RecordStream::readPngHeader;

class tst_PngHeader : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void readsWhatTheFirstChunkSays_data() {
        QTest::addColumn<QImage::Format>("format");
        QTest::addColumn<int>("colourType");
        QTest::newRow("without alpha") << QImage::Format_RGB32 << 2;
        QTest::newRow("with alpha") << QImage::Format_ARGB32 << 6;
    }

    void readsWhatTheFirstChunkSays() {
        QFETCH(QImage::Format, format);
        QImage image(20, 10, format);
        image.fill(Qt::red);
        const QByteArray png = fastPng(image);
        const auto header = readPngHeader(png);
        QVERIFY(header.has_value());
        QCOMPARE(header->width, 20U);
        QCOMPARE(header->height, 10U);
        QCOMPARE(int(header->bitDepth), 8);
        QTEST(int(header->colourType), "colourType");
        QCOMPARE(pngSize(png), QSize(20, 10));
    }

    void everyTruncationHasNoHeader() {
        QImage image(1, 1, QImage::Format_RGB32);
        image.fill(Qt::red);
        const QByteArray png = fastPng(image);
        constexpr int headerEnd = 8 + 4 + 4 + 13;
        for (int size = 0; size < headerEnd; ++size) {
            QVERIFY(!readPngHeader(png.left(size)).has_value());
            QVERIFY(pngSize(png.left(size)).isNull());
        }
        QVERIFY(readPngHeader(png.left(headerEnd)).has_value());
    }

    void otherBytesHaveNoHeader() {
        QVERIFY(pngSize(QByteArray(100, 'x')).isNull());
        QByteArray png = QByteArray("\x89PNG\r\n\x1a\n") + QByteArray(100, '\0');
        QVERIFY(!readPngHeader(png).has_value()); // another chunk comes first
    }
};

QTEST_GUILESS_MAIN(tst_PngHeader)
#include "tst_pngheader.moc"
