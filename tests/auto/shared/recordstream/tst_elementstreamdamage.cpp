// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/elementstream.h"
#include "recordstream/payloadreader.h"
#include "recordstream/recordkind.h"
#include "testlib/testcase.h"
#include "uiabstraction/elementwalk.h"
#include "uiabstraction/uielement.h"

#include <QByteArray>
#include <QDataStream>
#include <QImage>
#include <QTest>
#include <QtEndian>

#include <memory>
#include <random>

#include <sys/resource.h>

using Vorsk::RecordStream::PayloadReader;
using Vorsk::RecordStream::readElement;
using Vorsk::RecordStream::readElements;
using Vorsk::RecordStream::readImage;
using Vorsk::RecordStream::streamVersion;
using Vorsk::UIAbstraction::ElementWalk;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

/** The shortest element: 8 texts, 5 counts, an image marker, 3 flags and a geometry. */
constexpr int smallestElement = 8 * 4 + 5 * 4 + 4 + 3 + 17;

QByteArray toBytes(const UIElement& element) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    stream << element;
    return bytes;
}

/** An element with a bit of everything, a child and a grandchild. */
QByteArray soundStream() {
    UIElement root(QStringLiteral("QDialog"), StandardType(QStringLiteral("Dialog")),
                   QStringLiteral("{root}"));
    root.setText(QStringLiteral("Title"));
    root.setWindowNode(true);
    root.setExtraStrings({QStringLiteral("a"), QString(), QStringLiteral("b")});
    QImage image(4, 3, QImage::Format_RGB32);
    image.fill(Qt::green);
    root.setImage(image);
    root.increaseUsage(UIEvent(QStringLiteral("shown")));
    root.registerEvent(UIEvent(QStringLiteral("clicked")));
    auto* child = new UIElement(QStringLiteral("QLabel"), StandardType(), QStringLiteral("c"));
    child->setText(QStringLiteral(""));
    child->addChild(new UIElement(QStringLiteral("X"), StandardType(), QStringLiteral("g")));
    root.addChild(child);
    return toBytes(root);
}

struct Outcome {
    std::unique_ptr<UIElement> element;
    QDataStream::Status status;
    /** Whether the element that is read without a stream is the same, or none is there either. */
    bool isTheSameWithoutStream;
};

Outcome read(const QByteArray& bytes) {
    QDataStream stream(bytes);
    stream.setVersion(streamVersion);
    std::unique_ptr<UIElement> element = readElement(stream);
    PayloadReader reader(bytes);
    const std::unique_ptr<UIElement> other = readElement(reader);
    const bool isTheSame = element && other
                               ? reader.isSound() && toBytes(*element) == toBytes(*other) &&
                                     reader.takeRest().size() == stream.device()->bytesAvailable()
                               : !element && !other && !reader.isSound();
    return {std::move(element), stream.status(), isTheSame};
}

int count(const UIElement& root) {
    int elements = 0;
    ElementWalk walk(&root);
    while (walk.next() != nullptr) {
        ++elements;
    }
    return elements;
}

/** Whether the outcome is one of the two there may be: nothing and an error, or a sound tree. */
bool isConsistent(const Outcome& outcome, const QByteArray& bytes) {
    if (!outcome.isTheSameWithoutStream) {
        return false;
    }
    if (!outcome.element) {
        return outcome.status != QDataStream::Ok;
    }
    const Outcome again = read(toBytes(*outcome.element));
    return outcome.status == QDataStream::Ok && again.element &&
           *again.element == *outcome.element &&
           count(*outcome.element) <= bytes.size() / smallestElement;
}

QByteArray number(qint32 value) {
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

/** Kilobytes that this process ever had in memory at once. */
long peak() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// Where the counts of a plain element stand: all its texts are null.
constexpr int extraStringsCount = 5 * 4;
constexpr int imageMarker = extraStringsCount + 4 + 3 + 4 + 17;
constexpr int attributesCount = imageMarker + 4 + 2 * 4;
constexpr int usageCount = attributesCount + 2 * 4;
constexpr int childrenCount = usageCount + 4;

/** An element whose texts are all null. */
QByteArray plainStream() {
    QByteArray bytes;
    bytes += QByteArray(5 * 4, '\xff') + number(0) + QByteArray(3, '\0') + number(-1) + number(0) +
             number(0) + number(-1) + number(-1) + '\0' + number(0) + number(-1) + number(-1) +
             number(0) + number(0) + number(0) + number(0);
    return bytes;
}

} // namespace

/** What reading elements makes of bytes that no writer wrote. */
class tst_ElementStreamDamage : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void soundStreamsAreRead();
    void everyTruncationGivesNothingAndAnError();
    void everyDamagedByteGivesNothingOrASoundTree_data();
    void everyDamagedByteGivesNothingOrASoundTree();
    void damagedCountsEndAtTheLastByte_data();
    void damagedCountsEndAtTheLastByte();
    void lengthsOfTextsEndAtTheLastByte_data();
    void lengthsOfTextsEndAtTheLastByte();
    void nestingThatNeverEndsGivesNothing();
    void stopsAtTheFirstError();
    void readsNothingFromStreamInError();
    void absurdPictureGivesNothing();
    void imageIsNullAfterAnError_data();
    void imageIsNullAfterAnError();
    void listKeepsWhatCameBeforeDamage_data();
    void listKeepsWhatCameBeforeDamage();
    void noiseGivesNothingOrASoundTree_data();
    void noiseGivesNothingOrASoundTree();
};

void tst_ElementStreamDamage::soundStreamsAreRead() {
    // All below damages these two.
    QCOMPARE(count(*read(soundStream()).element), 3);
    QCOMPARE(read(soundStream()).status, QDataStream::Ok);
    QVERIFY(read(soundStream() + "more").isTheSameWithoutStream);
    QCOMPARE(plainStream().size(), smallestElement);
    QCOMPARE(count(*read(plainStream()).element), 1);
    QVERIFY(toBytes(*read(plainStream()).element) == plainStream());
}

void tst_ElementStreamDamage::everyTruncationGivesNothingAndAnError() {
    const QByteArray sound = soundStream();
    for (int size = 0; size < sound.size(); ++size) {
        const Outcome outcome = read(sound.left(size));
        QVERIFY2(!outcome.element, QByteArray::number(size));
        QVERIFY2(outcome.status != QDataStream::Ok, QByteArray::number(size));
        QVERIFY2(outcome.isTheSameWithoutStream, QByteArray::number(size));
    }
}

void tst_ElementStreamDamage::everyDamagedByteGivesNothingOrASoundTree_data() {
    QTest::addColumn<int>("replacement"); // -1: all bits turned
    for (const int replacement : {0x00, 0x01, 0x7f, 0x80, 0xfe, 0xff, -1}) {
        QTest::addRow("%d", replacement) << replacement;
    }
}

void tst_ElementStreamDamage::everyDamagedByteGivesNothingOrASoundTree() {
    QFETCH(int, replacement);
    const QByteArray sound = soundStream();
    const long before = peak();
    int refused = 0;
    for (int i = 0; i < sound.size(); ++i) {
        QByteArray bytes = sound;
        bytes[i] = static_cast<char>(replacement < 0 ? ~bytes.at(i) : replacement);
        const Outcome outcome = read(bytes);
        QVERIFY2(isConsistent(outcome, bytes), QByteArray::number(i));
        refused += outcome.element ? 0 : 1;
    }
    QVERIFY(refused > 0);
    constexpr long allowed = 512L * 1024; // a sanitizer keeps freed memory for a while
    QVERIFY(peak() - before < allowed);
}

void tst_ElementStreamDamage::damagedCountsEndAtTheLastByte_data() {
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("count");
    const std::pair<const char*, int> counts[] = {{"extraStrings", extraStringsCount},
                                                  {"extraAttributes1", attributesCount},
                                                  {"extraAttributes2", attributesCount + 4},
                                                  {"usage", usageCount},
                                                  {"children", childrenCount}};
    for (const auto& [name, offset] : counts) {
        for (const int damaged : {1, 1000, 0x7fffffff, -1, -2147483647 - 1}) {
            QTest::addRow("%s: %d", name, damaged) << offset << damaged;
        }
    }
}

void tst_ElementStreamDamage::damagedCountsEndAtTheLastByte() {
    QFETCH(int, offset);
    QFETCH(int, count);
    QByteArray bytes = plainStream();
    bytes.replace(offset, 4, number(count));
    const long before = peak();
    const Outcome outcome = read(bytes);
    QVERIFY(!outcome.element);
    QVERIFY(outcome.status != QDataStream::Ok);
    QVERIFY(outcome.isTheSameWithoutStream);
    constexpr long allowed = 64L * 1024;
    QVERIFY(peak() - before < allowed);
}

void tst_ElementStreamDamage::lengthsOfTextsEndAtTheLastByte_data() {
    QTest::addColumn<int>("length");
    for (const int length : {1, 3, 1000, 0x7ffffffe, 0x7fffffff, -2}) {
        QTest::addRow("%d", length) << length;
    }
}

void tst_ElementStreamDamage::lengthsOfTextsEndAtTheLastByte() {
    QFETCH(int, length);
    QByteArray bytes = plainStream();
    bytes.replace(0, 4, number(length));
    const long before = peak();
    const Outcome outcome = read(bytes);
    QVERIFY(!outcome.element);
    QVERIFY(outcome.status != QDataStream::Ok);
    QVERIFY(outcome.isTheSameWithoutStream);
    constexpr long allowed = 64L * 1024;
    QVERIFY(peak() - before < allowed);
}

void tst_ElementStreamDamage::nestingThatNeverEndsGivesNothing() {
    QByteArray one = plainStream();
    one.replace(childrenCount, 4, number(1));
    const Outcome outcome = read(one.repeated(200000));
    QVERIFY(!outcome.element);
    QCOMPARE(outcome.status, QDataStream::ReadPastEnd);
}

void tst_ElementStreamDamage::stopsAtTheFirstError() {
    // An image that is none; behind it attributes that would still be there to read.
    QByteArray bytes = plainStream();
    bytes.replace(imageMarker, 4, number(1) + "no picture");
    bytes += QByteArray(1000, '\0');
    QDataStream stream(bytes);
    stream.setVersion(streamVersion);
    QVERIFY(!readElement(stream));
    QCOMPARE(stream.status(), QDataStream::ReadCorruptData);
    QVERIFY(stream.device()->pos() <= imageMarker + 4 + 8);
}

void tst_ElementStreamDamage::readsNothingFromStreamInError() {
    const QByteArray bytes = soundStream();
    QDataStream stream(bytes);
    stream.setVersion(streamVersion);
    stream.setStatus(QDataStream::ReadCorruptData);
    QVERIFY(!readElement(stream));
    QImage image(1, 1, QImage::Format_Mono);
    QVERIFY(!readImage(stream, image));
    QVERIFY(image.isNull());
    QCOMPARE(stream.device()->pos(), 0);
    QCOMPARE(stream.status(), QDataStream::ReadCorruptData);
}

void tst_ElementStreamDamage::absurdPictureGivesNothing() {
    // As sound a picture as 8,000 by 8,000 pixels in 57 bytes can be: its checksums fit.
    const QByteArray png =
        QByteArray::fromHex("89504e470d0a1a0a 0000000d49484452 00001f4000001f400802000000") +
        QByteArray::fromHex("89933aa3 0000000049454e44ae426082");
    QByteArray bytes = plainStream();
    bytes.replace(imageMarker, 4, number(1) + png);
    const Outcome outcome = read(bytes);
    QVERIFY(!outcome.element);
    QCOMPARE(outcome.status, QDataStream::ReadCorruptData);
}

void tst_ElementStreamDamage::imageIsNullAfterAnError_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("no bytes") << QByteArray();
    QTest::newRow("half a marker") << QByteArray(2, '\0');
    QTest::newRow("marker alone") << number(1);
    QTest::newRow("other marker, no picture") << number(-1);
    QTest::newRow("another format") << number(1) + "GIF89a, then what a GIF has";
}

void tst_ElementStreamDamage::imageIsNullAfterAnError() {
    QFETCH(QByteArray, bytes);
    QDataStream stream(bytes);
    stream.setVersion(streamVersion);
    QImage image(1, 1, QImage::Format_Mono);
    QVERIFY(!readImage(stream, image));
    QVERIFY(image.isNull());
    QVERIFY(stream.status() != QDataStream::Ok);
}

void tst_ElementStreamDamage::listKeepsWhatCameBeforeDamage_data() {
    const QByteArray one = plainStream();
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("size");
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("half a count") << QByteArray(3, '\0') << 0;
    QTest::newRow("negative count") << number(-1) + one << 0;
    QTest::newRow("more announced than there are") << number(3) + one + one << 2;
    QTest::newRow("largest count") << number(0x7fffffff) + one << 1;
    QTest::newRow("torn second") << number(2) + one + one.left(one.size() - 1) << 1;
}

void tst_ElementStreamDamage::listKeepsWhatCameBeforeDamage() {
    QFETCH(QByteArray, bytes);
    QFETCH(int, size);
    bool ok = true;
    const QList<UIElement*> elements = readElements(bytes, &ok);
    QVERIFY(!ok);
    QCOMPARE(elements.size(), size);
    qDeleteAll(elements);
}

void tst_ElementStreamDamage::noiseGivesNothingOrASoundTree_data() {
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 10; ++seed) {
        QTest::addRow("seed %u", seed) << seed;
    }
}

void tst_ElementStreamDamage::noiseGivesNothingOrASoundTree() {
    QFETCH(quint32, seed);
    std::mt19937 random(seed);
    const QByteArray sound = soundStream() + plainStream();
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes = sound;
        for (auto changes = 1 + random() % 6; changes > 0; --changes) {
            const int at = static_cast<int>(random() % static_cast<unsigned>(bytes.size()));
            switch (random() % 3) {
            case 0:
                bytes[at] = static_cast<char>(random() % 256);
                break;
            case 1:
                bytes.remove(at, static_cast<int>(random() % 9));
                break;
            default:
                bytes.insert(at, number(static_cast<qint32>(random() % 5)));
                break;
            }
        }
        QVERIFY2(isConsistent(read(bytes), bytes), bytes.toHex());
    }
}

QTEST_GUILESS_MAIN(tst_ElementStreamDamage)
#include "tst_elementstreamdamage.moc"
