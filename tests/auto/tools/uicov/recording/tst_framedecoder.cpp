// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/framedecoder.h"
#include "testlib/testcase.h"

#include <QTest>

using RecordingFormat::ArgumentTag;
using RecordingFormat::Severity;

class TestFrameDecoder : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void processHasItsPairs() {
        const auto info = Uicov::Recording::decodeProcess(
            QByteArray::fromHex("00000002 00000003 706964 00000002 3432 00000001 78 00000000"));
        QVERIFY(info);
        QCOMPARE(info->size(), 2);
        QCOMPARE(info->value(QStringLiteral("pid")), QStringLiteral("42"));
        QVERIFY(info->contains(QStringLiteral("x")));
    }

    void messageHasArgumentsOfEveryTag() {
        const auto message = Uicov::Recording::decodeMessage(
            QByteArray::fromHex("ffffffff 00000001 6d 03 01fffffffe 02000000020a0b 0300000001 ff"));
        QVERIFY(message);
        QCOMPARE(message->channel, -1);
        QCOMPARE(message->name, QStringLiteral("m"));
        QCOMPARE(message->arguments.size(), 3);
        QCOMPARE(message->arguments.at(0).integer, -2);
        QCOMPARE(message->arguments.at(1).tag, ArgumentTag::Bytes);
        QCOMPARE(message->arguments.at(1).bytes, QByteArray("\x0a\x0b"));
        QCOMPARE(message->arguments.at(2).tag, ArgumentTag::Variant);
        QCOMPARE(message->arguments.at(2).bytes, QByteArray("\xff"));
    }

    void logMarkAndEnd() {
        const auto line = Uicov::Recording::decodeLog(QByteArray::fromHex("02 00000002 6f6b"));
        QVERIFY(line);
        QCOMPARE(line->severity, Severity::Warning);
        QCOMPARE(line->text, QStringLiteral("ok"));
        QCOMPARE(Uicov::Recording::decodeLog(QByteArray::fromHex("01 00000000"))->severity,
                 Severity::Info);
        QCOMPARE(Uicov::Recording::decodeMark(QByteArray::fromHex("00000001 61")).value(),
                 QStringLiteral("a"));
        QCOMPARE(Uicov::Recording::decodeEnd(QByteArray::fromHex("0000000000000102")).value(),
                 quint64{0x102});
        const auto loss =
            Uicov::Recording::decodeLoss(QByteArray::fromHex("0000000000000102 0000000000000003"));
        QVERIFY(loss);
        QCOMPARE(loss->pictures, quint64{0x102});
        QCOMPARE(loss->others, quint64{3});
    }

    void anUnknownSeverityIsAWarning() {
        QCOMPARE(Uicov::Recording::decodeLog(QByteArray::fromHex("09 00000000"))->severity,
                 Severity::Warning);
    }

    /** Whatever is cut off the end or put behind it, there is no result and no reading beyond. */
    void everyTruncationAndEveryTrailingByteGivesNothing() {
        const QByteArray process = QByteArray::fromHex("00000001 00000001 61 00000001 62");
        const QByteArray message =
            QByteArray::fromHex("00000007 00000001 6d 03 0100000001 0200000001aa 0300000001bb");
        const QByteArray log = QByteArray::fromHex("02 00000002 6f6b");
        const QByteArray mark = QByteArray::fromHex("00000001 61");
        const QByteArray end = QByteArray::fromHex("0000000000000001");
        const QByteArray loss = QByteArray(16, '\1');
        for (int size = 0; size <= message.size() + 1; ++size) {
            const auto cut = [size](const QByteArray& whole) {
                return (whole + QByteArray(1, '\0')).left(qMin(size, whole.size() + 1));
            };
            const auto isWhole = [size](const QByteArray& whole) { return size == whole.size(); };
            QCOMPARE(Uicov::Recording::decodeProcess(cut(process)).has_value(), isWhole(process));
            QCOMPARE(Uicov::Recording::decodeMessage(cut(message)).has_value(), isWhole(message));
            QCOMPARE(Uicov::Recording::decodeLog(cut(log)).has_value(), isWhole(log));
            QCOMPARE(Uicov::Recording::decodeMark(cut(mark)).has_value(), isWhole(mark));
            QCOMPARE(Uicov::Recording::decodeEnd(cut(end)).has_value(), isWhole(end));
            QCOMPARE(Uicov::Recording::decodeLoss(cut(loss)).has_value(), isWhole(loss));
        }
    }

    void hugeCountsEndAtOnce() {
        QVERIFY(!Uicov::Recording::decodeProcess(QByteArray::fromHex("ffffffff")));
        QVERIFY(!Uicov::Recording::decodeMessage(QByteArray::fromHex("00000007 00000001 6d ff")));
    }

    void anUnknownArgumentTagGivesNothing() {
        QVERIFY(!Uicov::Recording::decodeMessage(
            QByteArray::fromHex("00000007 00000001 6d 01 0400000000")));
        QVERIFY(!Uicov::Recording::decodeMessage(
            QByteArray::fromHex("00000007 00000001 6d 01 0000000000")));
    }
};

QTEST_GUILESS_MAIN(TestFrameDecoder)
#include "tst_framedecoder.moc"
