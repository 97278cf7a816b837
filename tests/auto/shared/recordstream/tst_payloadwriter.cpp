// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/payloadwriter.h"
#include "recordstream/pngwriter.h"
#include "recordstream/recordkind.h"
#include "testlib/streamed.h"
#include "testlib/testcase.h"
#include "uiabstraction/elementgeometry.h"
#include "uiabstraction/standardtype.h"
#include "uiabstraction/uievent.h"

#include <QByteArray>
#include <QDataStream>
#include <QHash>
#include <QImage>
#include <QRect>
#include <QTest>

#include <limits>

using TestLib::streamed;
using Vorsk::RecordStream::PayloadWriter;
using Vorsk::RecordStream::streamVersion;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIEvent;
using Attributes = QHash<QString, QString>;

namespace {

template <class Value>
QByteArray written(const Value& value) {
    PayloadWriter writer;
    writer << value;
    return writer.payload();
}

} // namespace

/** That the bytes are those of a QDataStream, value by value; whole elements: tst_elementstream. */
class tst_PayloadWriter : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nothing();
    void text_data();
    void text();
    void number_data();
    void number();
    void longNumber();
    void array();
    void memoryIsUsedAgain();
    void memoryThatSomebodyHasIsLeftAlone();
    void truth();
    void rectangle();
    void geometry();
    void typeAndEvent();
    void attributes();
    void nullImage();
    void image_data();
    void image();
    void manyValues();
};

void tst_PayloadWriter::nothing() {
    QCOMPARE(PayloadWriter().payload(), QByteArray());
}

void tst_PayloadWriter::text_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("null") << QString();
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("one") << QStringLiteral("x");
    QTest::newRow("beyond Latin") << QStringLiteral("\u00e4\u4e2d\U0001f600");
    QTest::newRow("with a zero in it") << QString(3, QChar(0));
    QTest::newRow("half a pair") << QString(QChar(0xd800));
    for (const int length : {249, 250, 251, 252, 253, 254, 255, 256, 5000}) {
        QTest::addRow("%d long", length) << QString(length, QChar(0x1234));
    }
}

void tst_PayloadWriter::text() {
    QFETCH(QString, text);
    QCOMPARE(written(text).toHex(), streamed(text).toHex());
}

void tst_PayloadWriter::number_data() {
    QTest::addColumn<qint32>("number");
    QTest::newRow("zero") << 0;
    QTest::newRow("one") << 1;
    QTest::newRow("minus one") << -1;
    QTest::newRow("each byte another") << 0x01020304;
    QTest::newRow("smallest") << std::numeric_limits<qint32>::min();
    QTest::newRow("largest") << std::numeric_limits<qint32>::max();
}

void tst_PayloadWriter::number() {
    QFETCH(qint32, number);
    QCOMPARE(written(number).toHex(), streamed(number).toHex());
}

void tst_PayloadWriter::longNumber() {
    for (const qint64 number : {qint64{0}, qint64{-2}, std::numeric_limits<qint64>::min(),
                                std::numeric_limits<qint64>::max()}) {
        QCOMPARE(written(number).toHex(), streamed(number).toHex());
    }
}

void tst_PayloadWriter::array() {
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray(""), QByteArray("a\0b", 3), QByteArray(3000, 'x')}) {
        QCOMPARE(written(bytes).toHex(), streamed(bytes).toHex());
    }
}

void tst_PayloadWriter::memoryIsUsedAgain() {
    PayloadWriter first;
    first << QString(2000, QLatin1Char('a'));
    QByteArray payload = first.take();
    QCOMPARE(payload, streamed(QString(2000, QLatin1Char('a'))));
    const char* const memory = payload.constData();
    PayloadWriter second(std::move(payload));
    second << QStringLiteral("b");
    payload = second.take();
    QCOMPARE(payload, streamed(QStringLiteral("b")));
    QVERIFY(payload.constData() == memory);
}

void tst_PayloadWriter::memoryThatSomebodyHasIsLeftAlone() {
    PayloadWriter first;
    first << QStringLiteral("a");
    const QByteArray kept = first.take();
    PayloadWriter second(kept);
    second << QStringLiteral("b");
    QCOMPARE(second.take(), streamed(QStringLiteral("b")));
    QCOMPARE(kept, streamed(QStringLiteral("a")));
}

void tst_PayloadWriter::truth() {
    QCOMPARE(written(true), streamed(true));
    QCOMPARE(written(false), streamed(false));
}

void tst_PayloadWriter::rectangle() {
    QCOMPARE(written(QRect()).toHex(), streamed(QRect()).toHex());
    const QRect rectangle(-3, 5, 1000, 70000);
    QCOMPARE(written(rectangle).toHex(), streamed(rectangle).toHex());
}

void tst_PayloadWriter::geometry() {
    const ElementGeometry geometry(QRect(1, 2, 3, 4), true);
    QCOMPARE(written(geometry).toHex(), streamed(geometry).toHex());
    QCOMPARE(written(ElementGeometry()).toHex(), streamed(ElementGeometry()).toHex());
}

void tst_PayloadWriter::typeAndEvent() {
    QCOMPARE(written(StandardType()), streamed(StandardType()));
    const StandardType type(QStringLiteral("Button"));
    QCOMPARE(written(type), streamed(type));
    const UIEvent event(QStringLiteral("clicked"));
    QCOMPARE(written(event), streamed(event));
}

void tst_PayloadWriter::attributes() {
    QCOMPARE(written(Attributes()), streamed(Attributes()));
    Attributes attributes;
    for (int i = 0; i < 40; ++i) {
        attributes.insert(QString::number(i),
                          i % 2 == 0 ? QString() : QString(i, QLatin1Char('v')));
    }
    // Their order is not part of the format.
    QCOMPARE(written(attributes).size(), streamed(attributes).size());
    QDataStream stream(written(attributes));
    stream.setVersion(streamVersion);
    Attributes read;
    stream >> read;
    QCOMPARE(stream.status(), QDataStream::Ok);
    QVERIFY(stream.atEnd());
    QCOMPARE(read, attributes);
    const Attributes one{{QStringLiteral("k"), QStringLiteral("v")}};
    QCOMPARE(written(one).toHex(), streamed(one).toHex());
}

void tst_PayloadWriter::nullImage() {
    QCOMPARE(written(QImage()), streamed(QImage()));
}

void tst_PayloadWriter::image_data() {
    QTest::addColumn<QImage::Format>("format");
    QTest::newRow("as a screen is grabbed") << QImage::Format_ARGB32_Premultiplied;
    QTest::newRow("left to Qt") << QImage::Format_Indexed8;
}

void tst_PayloadWriter::image() {
    QFETCH(QImage::Format, format);
    QImage image(40, 30, format);
    if (format == QImage::Format_Indexed8) {
        image.setColorTable({0xff000000, 0xffff0000});
    }
    image.fill(1);
    QByteArray expected;
    QDataStream stream(&expected, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    Vorsk::RecordStream::writeImage(stream, image);
    QVERIFY(expected.size() > 50);
    QCOMPARE(written(image).toHex(), expected.toHex());
}

void tst_PayloadWriter::manyValues() {
    // Longer and longer, so that every place where memory runs out is met.
    QByteArray expected;
    QDataStream stream(&expected, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    PayloadWriter writer;
    for (int i = 0; i < 3000; ++i) {
        stream << qint32(i) << (i % 3 == 0) << QString(i % 7, QLatin1Char('t'));
        writer << qint32(i) << (i % 3 == 0) << QString(i % 7, QLatin1Char('t'));
        if (i % 500 == 0) {
            QCOMPARE(writer.payload(), expected);
        }
    }
    QCOMPARE(writer.payload(), expected);
}

QTEST_GUILESS_MAIN(tst_PayloadWriter)
#include "tst_payloadwriter.moc"
