// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/framedecoder.h"
#include "recording/recorddecoder.h"
#include "recordstream/elementstream.h"
#include "recordstream/pngheader.h"
#include "testlib/recordingbuilder.h"
#include "testlib/testcase.h"

#include <QImage>
#include <QSize>
#include <QTest>

using RecordingFormat::ArgumentTag;
using TestLib::RecordingBuilder;
using Uicov::Recording::DecodingResult;
using Uicov::Recording::HookArgument;
using Uicov::Recording::HookMessage;
using Uicov::Recording::Record;
using Vorsk::RecordStream::RecordKind;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

namespace {

const QString id = QStringLiteral("{id}");

HookMessage messageOf(qint32 kind, const QByteArray& payload) {
    return HookMessage{7,
                       QStringLiteral("uiCoverageData"),
                       {HookArgument{ArgumentTag::Integer, 4711, {}},
                        HookArgument{ArgumentTag::Integer, 1, {}},
                        HookArgument{ArgumentTag::Integer, kind, {}},
                        HookArgument{ArgumentTag::Bytes, 0, payload}}};
}

template <class... Items>
QByteArray payload(const Items&... items) {
    return RecordingBuilder::payload(id, items...);
}

QByteArray elementPayload() {
    UIElement element(QStringLiteral("QPushButton"), StandardType(QStringLiteral("Button")), id);
    element.setText(QStringLiteral("OK"));
    return payload(element);
}

} // namespace

class TestRecordDecoder : public TestLib::TestCase {
    Q_OBJECT

    Record m_record;

    DecodingResult decode(int kind, const QByteArray& bytes) {
        m_record = Record();
        return Uicov::Recording::decodeRecord(messageOf(kind, bytes), m_record);
    }

private Q_SLOTS:
    void everyKindIsRead() {
        QCOMPARE(decode(1, elementPayload()), DecodingResult::Sound);
        QCOMPARE(m_record.elementId, id);
        QCOMPARE(m_record.element->text(), QStringLiteral("OK"));
        for (const int kind : {2, 3, 6, 7}) {
            QCOMPARE(decode(kind, payload(QStringLiteral("value"))), DecodingResult::Sound);
            QCOMPARE(m_record.kind, static_cast<RecordKind>(kind));
            QCOMPARE(m_record.text, QStringLiteral("value"));
        }
        QCOMPARE(decode(4, payload(QRect(1, 2, 3, 4))), DecodingResult::Sound);
        QCOMPARE(m_record.rect, QRect(1, 2, 3, 4));
        for (const int kind : {8, 9, 10}) {
            QCOMPARE(decode(kind, payload(true)), DecodingResult::Sound);
            QVERIFY(m_record.flag);
        }
        QCOMPARE(decode(11, payload(QStringLiteral("clicked"), qint32{3})), DecodingResult::Sound);
        QCOMPARE(m_record.text, QStringLiteral("clicked"));
        QCOMPARE(m_record.count, 3);
        QCOMPARE(decode(12, payload(QStringLiteral("enabled"), QStringLiteral("false"))),
                 DecodingResult::Sound);
        QCOMPARE(m_record.name, QStringLiteral("enabled"));
        QCOMPARE(m_record.text, QStringLiteral("false"));
        QCOMPARE(decode(12, payload(QStringLiteral("enabled"), QString())), DecodingResult::Sound);
        QVERIFY(m_record.text.isNull());
    }

    void nullAndEmptyTextsStayApart() {
        QCOMPARE(decode(7, payload(QString())), DecodingResult::Sound);
        QVERIFY(m_record.text.isNull());
        QCOMPARE(decode(7, payload(QString::fromLatin1(""))), DecodingResult::Sound);
        QVERIFY(!m_record.text.isNull());
    }

    void picturesAreKeptAsTheyAre() {
        QImage image(20, 10, QImage::Format_RGB32);
        image.fill(Qt::red);
        QCOMPARE(decode(5, payload(image)), DecodingResult::Sound);
        QCOMPARE(Vorsk::RecordStream::pngSize(m_record.picture), QSize(20, 10));
        QCOMPARE(QImage::fromData(m_record.picture), image);
        QCOMPARE(decode(5, payload(QImage())), DecodingResult::Sound);
        QVERIFY(m_record.picture.isEmpty());
    }

    void aPictureThatIsNoneIsDamage() {
        QCOMPARE(decode(5, payload(qint32{1})), DecodingResult::Damaged);
        QCOMPARE(decode(5, payload(qint32{1}) + "not a picture at all, however long"),
                 DecodingResult::Damaged);
        QCOMPARE(decode(5, payload(qint32{2})), DecodingResult::Damaged);
    }

    void everyTruncationAndATrailingByteIsDamage_data() {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("elementAdded") << 1 << elementPayload();
        QTest::newRow("childAdded") << 2 << payload(QStringLiteral("child"));
        QTest::newRow("eventRegistered") << 3 << payload(QStringLiteral("clicked"));
        QTest::newRow("geometryChanged") << 4 << payload(QRect(1, 2, 3, 4));
        QTest::newRow("imageChanged") << 5 << payload(QImage());
        QTest::newRow("standardTypeChanged") << 6 << payload(QStringLiteral("Button"));
        QTest::newRow("textChanged") << 7 << payload(QStringLiteral("text"));
        QTest::newRow("transparentNodeChanged") << 8 << payload(true);
        QTest::newRow("subgraphTransparentChanged") << 9 << payload(false);
        QTest::newRow("windowNodeChanged") << 10 << payload(true);
        QTest::newRow("usageIncreased") << 11 << payload(QStringLiteral("clicked"), qint32{1});
        QTest::newRow("attributeChanged")
            << 12 << payload(QStringLiteral("enabled"), QStringLiteral("false"));
    }

    void everyTruncationAndATrailingByteIsDamage() {
        QFETCH(int, kind);
        QFETCH(QByteArray, bytes);
        QCOMPARE(decode(kind, bytes), DecodingResult::Sound);
        for (int size = 0; size < bytes.size(); ++size) {
            QCOMPARE(decode(kind, bytes.left(size)), DecodingResult::Damaged);
        }
        QCOMPARE(decode(kind, bytes + '\0'), DecodingResult::Damaged);
    }

    void anElementWithAnotherIdThanTheRecordIsDamage() {
        UIElement element(QString(), StandardType(), QStringLiteral("{other}"));
        QCOMPARE(decode(1, payload(element)), DecodingResult::Damaged);
    }

    void otherKindsAndFormsAreUnknown() {
        for (const int kind : {-1, 0, 13, 1000}) {
            QCOMPARE(decode(kind, payload()), DecodingResult::Unknown);
        }
        HookMessage message = messageOf(7, payload(QString()));
        message.arguments[1].integer = 2;
        QCOMPARE(Uicov::Recording::decodeRecord(message, m_record), DecodingResult::Unknown);
    }

    void otherMessagesAreForeign() {
        HookMessage message = messageOf(7, payload(QString()));
        message.name = QStringLiteral("uicoveragedata");
        QCOMPARE(Uicov::Recording::decodeRecord(message, m_record), DecodingResult::Foreign);
    }

    void otherArgumentsAreDamage() {
        HookMessage message = messageOf(7, payload(QString()));
        message.arguments.removeFirst();
        QCOMPARE(Uicov::Recording::decodeRecord(message, m_record), DecodingResult::Damaged);
        message = messageOf(7, payload(QString()));
        message.arguments[3].tag = ArgumentTag::Variant;
        QCOMPARE(Uicov::Recording::decodeRecord(message, m_record), DecodingResult::Damaged);
    }
};

QTEST_GUILESS_MAIN(TestRecordDecoder)
#include "tst_recorddecoder.moc"
