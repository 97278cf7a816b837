// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/payloadreader.h"
#include "recordstream/payloadwriter.h"
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
using Vorsk::RecordStream::PayloadReader;
using Vorsk::RecordStream::PayloadWriter;
using Vorsk::RecordStream::streamVersion;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIEvent;
using Attributes = QHash<QString, QString>;

namespace {

bool isSame(const QString& a, const QString& b) {
    return a == b && a.isNull() == b.isNull();
}

template <class Value>
bool isSame(const Value& a, const Value& b) {
    return a == b;
}

/** Whether the bytes say the same to a reader as to a QDataStream, whatever came before them. */
template <class Value>
bool isReadAlike(const QByteArray& bytes) {
    QDataStream stream(bytes);
    stream.setVersion(streamVersion);
    Value expected;
    stream >> expected;
    PayloadReader reader("x" + bytes);
    bool before = false;
    Value value;
    reader >> before >> value;
    if (stream.status() != QDataStream::Ok) {
        return !reader.isSound() && !reader.isAtSoundEnd() && isSame(value, Value());
    }
    return before && reader.isSound() && reader.isAtSoundEnd() == stream.atEnd() &&
           isSame(value, expected) && reader.takeRest().size() == stream.device()->bytesAvailable();
}

/** The same for the value's bytes, whole, with more behind them, and cut off anywhere. */
template <class Value>
bool isReadAlikeWhole(const Value& value) {
    const QByteArray bytes = streamed(value);
    bool result = isReadAlike<Value>(bytes) && isReadAlike<Value>(bytes + "more");
    for (int size = 0; size < qMin(bytes.size(), 300); ++size) {
        result = result && isReadAlike<Value>(bytes.left(size));
    }
    return result;
}

} // namespace

/** That values are those which a QDataStream reads; whole elements: tst_elementstreamdamage. */
class tst_PayloadReader : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void truth();
    void number();
    void text_data();
    void text();
    void lengthOfTextThatIsNone_data();
    void lengthOfTextThatIsNone();
    void rectangle();
    void geometry();
    void typeAndEvent();
    void attributes();
    void attributesThatAreMissing();
    void image();
    void imageThatIsNone();
    void nothingIsReadBehindAnError();
    void damageThatOthersFindLasts();
    void restOfNothing();
};

void tst_PayloadReader::truth() {
    QVERIFY(isReadAlikeWhole(true));
    QVERIFY(isReadAlikeWhole(false));
    QVERIFY(isReadAlike<bool>("\x80"));
}

void tst_PayloadReader::number() {
    for (const qint32 number : {0, 1, -1, 0x01020304, std::numeric_limits<qint32>::min(),
                                std::numeric_limits<qint32>::max()}) {
        QVERIFY(isReadAlikeWhole(number));
    }
}

void tst_PayloadReader::text_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("null") << QString();
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("one") << QStringLiteral("x");
    QTest::newRow("beyond Latin") << QStringLiteral("\u00e4\u4e2d\U0001f600");
    QTest::newRow("with a zero in it") << QString(3, QChar(0));
    QTest::newRow("half a pair") << QString(QChar(0xd800));
    QTest::newRow("long") << QString(5000, QChar(0x1234));
}

void tst_PayloadReader::text() {
    QFETCH(QString, text);
    QVERIFY(isReadAlikeWhole(text));
}

void tst_PayloadReader::lengthOfTextThatIsNone_data() {
    QTest::addColumn<QByteArray>("hex");
    QTest::newRow("odd") << QByteArray("00000003 414243");
    QTest::newRow("odd, at the end") << QByteArray("00000003 4142");
    QTest::newRow("beyond the end") << QByteArray("00000006 00410042");
    QTest::newRow("largest int") << QByteArray("7ffffffe 0041");
    QTest::newRow("negative as int") << QByteArray("80000000 0041");
    QTest::newRow("just below null") << QByteArray("fffffffe 0041");
}

void tst_PayloadReader::lengthOfTextThatIsNone() {
    QFETCH(QByteArray, hex);
    QVERIFY(isReadAlike<QString>(QByteArray::fromHex(hex)));
    QString text(QStringLiteral("before"));
    PayloadReader reader(QByteArray::fromHex(hex));
    reader >> text;
    QVERIFY(text.isNull());
    QVERIFY(!reader.isSound());
}

void tst_PayloadReader::rectangle() {
    QVERIFY(isReadAlikeWhole(QRect()));
    QVERIFY(isReadAlikeWhole(QRect(-3, 5, 1000, 70000)));
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    QVERIFY(isReadAlikeWhole(QRect(QPoint(least, least), QPoint(most, most))));
}

void tst_PayloadReader::geometry() {
    for (const bool isValid : {true, false}) {
        const ElementGeometry geometry(QRect(1, 2, 3, 4), isValid);
        PayloadReader reader(streamed(geometry));
        ElementGeometry read;
        reader >> read;
        QVERIFY(reader.isAtSoundEnd());
        QCOMPARE(read.rect(), geometry.rect());
        QCOMPARE(read.isValid(), isValid);
    }
    PayloadReader torn(streamed(ElementGeometry(QRect(1, 2, 3, 4), true)).chopped(1));
    ElementGeometry read;
    torn >> read;
    QVERIFY(!torn.isSound());
    QVERIFY(!read.isValid());
}

void tst_PayloadReader::typeAndEvent() {
    QVERIFY(isReadAlikeWhole(StandardType()));
    QVERIFY(isReadAlikeWhole(StandardType(QStringLiteral("Button"))));
    QVERIFY(isReadAlikeWhole(UIEvent(QStringLiteral("clicked"))));
}

void tst_PayloadReader::attributes() {
    QVERIFY(isReadAlikeWhole(Attributes()));
    Attributes attributes;
    for (int i = 0; i < 5; ++i) {
        attributes.insert(QString::number(i),
                          i % 2 == 0 ? QString() : QString(i, QLatin1Char('v')));
    }
    QVERIFY(isReadAlikeWhole(attributes));
    const QByteArray twice = streamed(Attributes{{QStringLiteral("a"), QStringLiteral("b")}});
    QVERIFY(isReadAlike<Attributes>(QByteArray::fromHex("00000002") + twice.mid(4) + twice.mid(4)));
}

void tst_PayloadReader::attributesThatAreMissing() {
    for (const char* count : {"00000001", "7fffffff", "80000000", "ffffffff"}) {
        QVERIFY(isReadAlike<Attributes>(QByteArray::fromHex(count)));
    }
}

void tst_PayloadReader::image() {
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    PayloadWriter writer;
    writer << QImage() << image << true;
    const QByteArray bytes = writer.take();
    PayloadReader reader(bytes);
    QImage none = image;
    QImage read;
    bool behind = false;
    reader >> none >> read >> behind;
    QVERIFY(none.isNull());
    QCOMPARE(read, image);
    QVERIFY(behind);
    QVERIFY(reader.isAtSoundEnd());
    PayloadReader torn(bytes.chopped(2));
    torn >> none >> read;
    QVERIFY(!torn.isSound());
    QVERIFY(read.isNull());
}

void tst_PayloadReader::imageThatIsNone() {
    QImage image(1, 1, QImage::Format_RGB32);
    PayloadReader reader(QByteArray::fromHex("00000001") + "no picture");
    reader >> image;
    QVERIFY(!reader.isSound());
    QVERIFY(image.isNull());
}

void tst_PayloadReader::nothingIsReadBehindAnError() {
    PayloadReader reader(QByteArray(2, '\1'));
    qint32 number = 7;
    bool truth = true;
    QString text(QStringLiteral("before"));
    QImage image(1, 1, QImage::Format_RGB32);
    Attributes attributes{{QStringLiteral("a"), QStringLiteral("b")}};
    reader >> number >> truth >> text >> image >> attributes;
    QCOMPARE(number, 0);
    QVERIFY(!truth);
    QVERIFY(text.isNull());
    QVERIFY(image.isNull());
    QVERIFY(attributes.isEmpty());
    QVERIFY(!reader.isSound());
}

void tst_PayloadReader::damageThatOthersFindLasts() {
    PayloadReader reader(QByteArray(8, '\0'));
    reader.setDamaged();
    qint32 number = 7;
    reader >> number;
    QCOMPARE(number, 0);
    QVERIFY(!reader.isAtSoundEnd());
}

void tst_PayloadReader::restOfNothing() {
    PayloadReader reader{QByteArray()};
    QVERIFY(reader.isAtSoundEnd());
    QCOMPARE(reader.takeRest(), QByteArray());
}

QTEST_GUILESS_MAIN(tst_PayloadReader)
#include "tst_payloadreader.moc"
