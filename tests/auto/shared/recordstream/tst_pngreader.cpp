// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/pngreader.h"
#include "testlib/stderrcapture.h"
#include "testlib/testcase.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QTest>
#include <QtEndian>

using Vorsk::RecordStream::maximumImagePixels;
using Vorsk::RecordStream::readPng;

namespace {

quint32 plainChecksum(const QByteArray& bytes) {
    quint32 value = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        value ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            value = (value & 1U) != 0 ? (value >> 1U) ^ 0xEDB88320U : value >> 1U;
        }
    }
    return ~value;
}

QByteArray number(quint32 value) {
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray chunk(const QByteArray& name, const QByteArray& data) {
    return number(static_cast<quint32>(data.size())) + name + data +
           number(plainChecksum(name + data));
}

QByteArray header(quint32 width, quint32 height, char bitDepth = 8, char colourType = 2) {
    return chunk("IHDR",
                 number(width) + number(height) + bitDepth + colourType + QByteArray(3, '\0'));
}

const QByteArray signature = QByteArrayLiteral("\x89PNG\r\n\x1a\n");

/** Two pixels, red and blue. */
QByteArray redAndBlue() {
    // A deflate stream that stores its bytes: a filter byte and two pixels.
    const QByteArray raw = QByteArray::fromHex("00 ff0000 0000ff");
    return signature + header(2, 1) + chunk("IDAT", qCompress(raw).mid(4)) +
           chunk("IEND", QByteArray());
}

QByteArray encoded(const QImage& image) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

/** A picture that compresses about as well as anything does. */
QByteArray blank(int width, int height, QImage::Format format) {
    QImage image(width, height, format);
    image.fill(0);
    return encoded(image);
}

QImage read(const QByteArray& bytes, qint64* position = nullptr) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImage image = readPng(buffer);
    if (position != nullptr) {
        *position = buffer.pos();
    }
    return image;
}

} // namespace

class tst_PngReader : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void readsPixels();
    void leavesDeviceBehindPicture();
    void readsWhatQtWrites_data();
    void readsWhatQtWrites();
    void takesExtraChunks();
    void refusesEveryTruncation();
    void refusesEveryChangedByte();
    void refusesUnsoundPictures_data();
    void refusesUnsoundPictures();
    void refusesSizesThatTheBytesCannotHold_data();
    void refusesSizesThatTheBytesCannotHold();
    void takesAsManyPixelsAsAreAllowed();
    void takesPicturesThatCompressWell_data();
    void takesPicturesThatCompressWell();
};

void tst_PngReader::readsPixels() {
    const QImage image = read(redAndBlue());
    QCOMPARE(image.size(), QSize(2, 1));
    QCOMPARE(image.pixel(0, 0), qRgb(255, 0, 0));
    QCOMPARE(image.pixel(1, 0), qRgb(0, 0, 255));
}

void tst_PngReader::leavesDeviceBehindPicture() {
    qint64 position = -1;
    QVERIFY(!read(redAndBlue() + "more", &position).isNull());
    QCOMPARE(position, qint64{redAndBlue().size()});
}

void tst_PngReader::readsWhatQtWrites_data() {
    QTest::addColumn<QImage::Format>("format");
    QTest::newRow("Mono") << QImage::Format_Mono;
    QTest::newRow("Indexed8") << QImage::Format_Indexed8;
    QTest::newRow("Grayscale8") << QImage::Format_Grayscale8;
    QTest::newRow("RGB16") << QImage::Format_RGB16;
    QTest::newRow("RGB32") << QImage::Format_RGB32;
    QTest::newRow("ARGB32") << QImage::Format_ARGB32;
    QTest::newRow("ARGB32_Premultiplied") << QImage::Format_ARGB32_Premultiplied;
    QTest::newRow("RGBA64") << QImage::Format_RGBA64;
}

void tst_PngReader::readsWhatQtWrites() {
    QFETCH(QImage::Format, format);
    QImage original(13, 7, QImage::Format_ARGB32);
    for (int y = 0; y < original.height(); ++y) {
        for (int x = 0; x < original.width(); ++x) {
            original.setPixel(x, y, qRgba(x * 19, y * 36, x * y, 255 - x));
        }
    }
    const QByteArray bytes = encoded(original.convertToFormat(format));
    const QImage expected = QImage::fromData(bytes, "PNG");
    QVERIFY(!expected.isNull());
    QCOMPARE(read(bytes), expected);
    QCOMPARE(read(bytes).format(), expected.format());
}

void tst_PngReader::takesExtraChunks() {
    QByteArray bytes = redAndBlue();
    bytes.insert(signature.size() + header(2, 1).size(), chunk("tEXt", QByteArray("Title\0x", 7)));
    const QImage image = read(bytes);
    QCOMPARE(image.pixel(1, 0), qRgb(0, 0, 255));
    QCOMPARE(image.text(QStringLiteral("Title")), QStringLiteral("x"));
}

void tst_PngReader::refusesEveryTruncation() {
    const QByteArray bytes = redAndBlue();
    for (int size = 0; size < bytes.size(); ++size) {
        QVERIFY2(read(bytes.left(size)).isNull(), QByteArray::number(size));
    }
}

void tst_PngReader::refusesEveryChangedByte() {
    const QByteArray sound = redAndBlue();
    for (int i = 0; i < sound.size(); ++i) {
        for (int bit = 0; bit < 8; ++bit) {
            QByteArray bytes = sound;
            bytes[i] = static_cast<char>(bytes.at(i) ^ (1 << bit));
            QVERIFY2(read(bytes).isNull(), QByteArray::number(i));
        }
    }
}

void tst_PngReader::refusesUnsoundPictures_data() {
    const QByteArray data = chunk("IDAT", qCompress(QByteArray(7, '\0')).mid(4));
    const QByteArray end = chunk("IEND", QByteArray());
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("another format") << QByteArray("GIF89a and so on, and so forth");
    QTest::newRow("signature alone") << signature;
    QTest::newRow("no header") << signature + data + end;
    QTest::newRow("short header") << signature + chunk("IHDR", QByteArray(8, '\1')) + data + end;
    QTest::newRow("no end") << signature + header(2, 1) + data;
    QTest::newRow("chunk longer than the rest")
        << signature + header(2, 1) + number(0x7FFFFFFF) + "IDAT" + QByteArray(100, '\0');
    QTest::newRow("chunk of the largest length")
        << signature + header(2, 1) + number(0xFFFFFFFF) + "IDAT" + QByteArray(100, '\0');
    QTest::newRow("no width") << signature + header(0, 1) + data + end;
    QTest::newRow("no height") << signature + header(2, 0) + data + end;
}

void tst_PngReader::refusesUnsoundPictures() {
    QFETCH(QByteArray, bytes);
    QVERIFY(read(bytes).isNull());
}

void tst_PngReader::refusesSizesThatTheBytesCannotHold_data() {
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::newRow("largest numbers") << 0xFFFFFFFFU << 0xFFFFFFFFU;
    QTest::newRow("product beyond 64 bits") << 0x80000000U << 0xFFFFFFFFU;
    QTest::newRow("30,000 by 30,000") << 30000U << 30000U;
    QTest::newRow("one pixel too many") << quint32(maximumImagePixels) + 1 << 1U;
    QTest::newRow("8,000 by 8,000") << 8000U << 8000U;
    QTest::newRow("a million wide") << 1000000U << 1U;
}

void tst_PngReader::refusesSizesThatTheBytesCannotHold() {
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    const QByteArray data = chunk("IDAT", qCompress(QByteArray(100, '\0')).mid(4));
    const QByteArray bytes = signature + header(width, height) + data + chunk("IEND", QByteArray());
    TestLib::StderrCapture capture;
    QVERIFY(read(bytes).isNull());
    // The decoder, which says so when it runs out of pixels, was not asked at all.
    QCOMPARE(capture.take(), QByteArray());
}

void tst_PngReader::takesAsManyPixelsAsAreAllowed() {
    constexpr int side = 8192;
    static_assert(qint64{side} * side == maximumImagePixels);
    QCOMPARE(read(blank(side, side, QImage::Format_Mono)).size(), QSize(side, side));
    QVERIFY(read(blank(side, side + 1, QImage::Format_Mono)).isNull());
}

void tst_PngReader::takesPicturesThatCompressWell_data() {
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<QImage::Format>("format");
    QTest::newRow("Mono") << 4000 << 4000 << QImage::Format_Mono;
    QTest::newRow("RGB32") << 2000 << 2000 << QImage::Format_RGB32;
    QTest::newRow("ARGB32") << 2000 << 2000 << QImage::Format_ARGB32;
    QTest::newRow("one row") << 30000 << 1 << QImage::Format_RGB32;
    QTest::newRow("one column") << 1 << 30000 << QImage::Format_RGB32;
}

void tst_PngReader::takesPicturesThatCompressWell() {
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(QImage::Format, format);
    QCOMPARE(read(blank(width, height, format)).size(), QSize(width, height));
}

QTEST_GUILESS_MAIN(tst_PngReader)
#include "tst_pngreader.moc"
