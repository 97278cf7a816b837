// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/pngreader.h"
#include "recordstream/pngwriter.h"
#include "recordstream/recordkind.h"
#include "testlib/testcase.h"

#include <QBuffer>
#include <QByteArray>
#include <QDataStream>
#include <QImage>
#include <QRandomGenerator>
#include <QTest>

using Vorsk::RecordStream::fastPng;
using Vorsk::RecordStream::readPng;
using Vorsk::RecordStream::streamVersion;
using Vorsk::RecordStream::writeImage;

namespace {

QImage noise(int width, int height, QImage::Format format) {
    QRandomGenerator random(1);
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.setPixel(x, y, random.generate());
        }
    }
    return image.convertToFormat(format);
}

QByteArray writtenByUs(const QImage& image) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    writeImage(stream, image);
    return bytes;
}

QByteArray writtenByQt(const QImage& image) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    stream << image;
    return bytes;
}

QImage readByQt(const QByteArray& bytes) {
    QDataStream stream(bytes);
    stream.setVersion(streamVersion);
    QImage image;
    stream >> image;
    return stream.atEnd() ? image : QImage();
}

/** Also what comparing two images does not look at. */
void compareAll(const QImage& actual, const QImage& expected) {
    QCOMPARE(actual, expected);
    QCOMPARE(actual.format(), expected.format());
    QCOMPARE(actual.dotsPerMeterX(), expected.dotsPerMeterX());
    QCOMPARE(actual.dotsPerMeterY(), expected.dotsPerMeterY());
    QCOMPARE(actual.devicePixelRatio(), expected.devicePixelRatio());
    QCOMPARE(actual.offset(), expected.offset());
    QCOMPARE(actual.textKeys(), expected.textKeys());
}

} // namespace

class tst_PngWriter : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void readsBackAsQtsOwn_data();
    void readsBackAsQtsOwn();
    void otherFormatsAreLeftToQt_data();
    void otherFormatsAreLeftToQt();
    void whatOnlyQtWritesIsLeftToQt();
    void aNullImageIsWrittenAsQtDoes();
    void ourReaderTakesIt();
};

void tst_PngWriter::readsBackAsQtsOwn_data() {
    QTest::addColumn<QImage>("image");
    for (const auto format :
         {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_ARGB32_Premultiplied}) {
        for (const QSize size : {QSize(1, 1), QSize(3, 1), QSize(1, 5), QSize(61, 37)}) {
            QTest::addRow("format %d, %d x %d", format, size.width(), size.height())
                << noise(size.width(), size.height(), format);
        }
        QImage transparent(9, 9, format);
        transparent.fill(Qt::transparent);
        QTest::addRow("format %d, transparent", format) << transparent;
        QImage noResolution = noise(4, 4, format);
        noResolution.setDotsPerMeterX(0);
        noResolution.setDotsPerMeterY(0);
        QTest::addRow("format %d, no resolution", format) << noResolution;
        QImage resolution = noise(4, 4, format);
        resolution.setDotsPerMeterX(1234);
        resolution.setDotsPerMeterY(4321);
        QTest::addRow("format %d, resolution", format) << resolution;
        QImage dense = noise(4, 4, format);
        dense.setDevicePixelRatio(2);
        QTest::addRow("format %d, two pixels to a point", format) << dense;
        QTest::addRow("format %d, part of another image", format)
            << noise(20, 20, format).copy(3, 4, 7, 9);
    }
}

void tst_PngWriter::readsBackAsQtsOwn() {
    QFETCH(QImage, image);
    QVERIFY(!fastPng(image).isEmpty());
    const QImage expected = readByQt(writtenByQt(image));
    QVERIFY(!expected.isNull());
    compareAll(readByQt(writtenByUs(image)), expected);
}

void tst_PngWriter::otherFormatsAreLeftToQt_data() {
    QTest::addColumn<int>("format");
    for (const auto format :
         {QImage::Format_Mono, QImage::Format_Indexed8, QImage::Format_RGB16, QImage::Format_RGB888,
          QImage::Format_Grayscale8, QImage::Format_RGBA8888, QImage::Format_RGBA64}) {
        QTest::addRow("format %d", format) << static_cast<int>(format);
    }
}

void tst_PngWriter::otherFormatsAreLeftToQt() {
    QFETCH(int, format);
    const QImage image = noise(5, 5, static_cast<QImage::Format>(format));
    QVERIFY(fastPng(image).isEmpty());
    QCOMPARE(writtenByUs(image), writtenByQt(image));
}

void tst_PngWriter::whatOnlyQtWritesIsLeftToQt() {
    QImage withText = noise(5, 5, QImage::Format_RGB32);
    withText.setText(QStringLiteral("Title"), QStringLiteral("A window"));
    QCOMPARE(writtenByUs(withText), writtenByQt(withText));
    QImage withOffset = noise(5, 5, QImage::Format_RGB32);
    withOffset.setOffset(QPoint(3, 4));
    QCOMPARE(writtenByUs(withOffset), writtenByQt(withOffset));
}

void tst_PngWriter::aNullImageIsWrittenAsQtDoes() {
    QCOMPARE(writtenByUs(QImage()), QByteArray(4, '\0'));
    QVERIFY(fastPng(QImage()).isEmpty());
}

void tst_PngWriter::ourReaderTakesIt() {
    const QImage image = noise(30, 20, QImage::Format_RGB32);
    QByteArray png = fastPng(image);
    QBuffer buffer(&png);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    QCOMPARE(readPng(buffer), image);
    QVERIFY(buffer.atEnd());
}

QTEST_GUILESS_MAIN(tst_PngWriter)
#include "tst_pngwriter.moc"
