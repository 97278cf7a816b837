// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/recordingparser.h"
#include "recordingformat/frames.h"
#include "testlib/testcase.h"

#include <QTest>
#include <QVariant>

#include <limits>

class tst_Frames : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void bytes_data();
    void bytes();
    void argumentsComeBack_data();
    void argumentsComeBack();
    void tooManyArguments();
    void tooLarge();
};

void tst_Frames::bytes_data() {
    using RecordingFormat::Severity;
    QTest::addColumn<QByteArray>("actual");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("header") << RecordingFormat::fileHeader()
                            << QByteArray("55495245430d0a1a 00000001");
    // length, checksum, type, time, body
    QTest::newRow("process") << RecordingFormat::processFrame(
                                    0, {{QStringLiteral("pid"), QStringLiteral("7")},
                                        {QStringLiteral("session"), QString()}})
                             << QByteArray("00000028 0344803c 01 0000000000000000 00000002"
                                           "00000003 706964 00000001 37"
                                           "00000007 73657373696f6e 00000000");
    QTest::newRow("message") << RecordingFormat::messageFrame(258, -1, QStringLiteral("n\u00e4"),
                                                              {QVariant(-2),
                                                               QVariant(QByteArray("\x00\xff", 2)),
                                                               QVariant(true)})
                             << QByteArray("0000002c ada05a93 02 0000000000000102 ffffffff"
                                           "00000003 6ec3a4 03"
                                           "01 fffffffe"
                                           "02 00000002 00ff"
                                           "03 00000006 00000001 00 01");
    QTest::newRow("info") << RecordingFormat::logFrame(1, Severity::Info, QStringLiteral("hi"))
                          << QByteArray("00000010 356018b0 03 0000000000000001 01 00000002 6869");
    QTest::newRow("warning, empty")
        << RecordingFormat::logFrame(1, Severity::Warning, QString())
        << QByteArray("0000000e 1c46dcd9 03 0000000000000001 02 00000000");
    QTest::newRow("end") << RecordingFormat::endFrame(Q_UINT64_C(0xFFFFFFFFFFFFFFFF), 3)
                         << QByteArray("00000011 3326c1b1 05 ffffffffffffffff 0000000000000003");
}

void tst_Frames::bytes() {
    QFETCH(QByteArray, actual);
    QFETCH(QByteArray, expected);
    QCOMPARE(actual.toHex(), expected.replace(" ", ""));
}

void tst_Frames::argumentsComeBack_data() {
    QTest::addColumn<QVariant>("argument");
    QTest::newRow("smallest int") << QVariant(std::numeric_limits<int>::min());
    QTest::newRow("largest int") << QVariant(std::numeric_limits<int>::max());
    QTest::newRow("no bytes") << QVariant(QByteArray());
    QTest::newRow("many bytes") << QVariant(QByteArray(100000, 'x'));
    QTest::newRow("text") << QVariant(QStringLiteral("\u4e2d\U0001F600"));
    QTest::newRow("unsigned") << QVariant(4000000000U);
    QTest::newRow("invalid") << QVariant();
    QTest::newRow("list") << QVariant(QVariantList{1, QStringLiteral("a")});
}

void tst_Frames::argumentsComeBack() {
    QFETCH(QVariant, argument);
    const QByteArray frame =
        RecordingFormat::messageFrame(1, 5, QStringLiteral("name"), {argument, QVariant(1)});
    const RecordingParser parsed = RecordingParser::parse(RecordingFormat::fileHeader() + frame);
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.messages().size(), 1);
    QCOMPARE(parsed.messages().first().arguments, (QVariantList{argument, 1}));
}

void tst_Frames::tooManyArguments() {
    QVariantList arguments;
    for (int i = 0; i < 255; ++i) {
        arguments.append(i);
    }
    const QByteArray frame = RecordingFormat::messageFrame(1, 5, QStringLiteral("name"), arguments);
    const RecordingParser parsed = RecordingParser::parse(RecordingFormat::fileHeader() + frame);
    QCOMPARE(parsed.messages().first().arguments.size(), 255);
    arguments.append(255);
    QVERIFY(RecordingFormat::messageFrame(1, 5, QStringLiteral("name"), arguments).isNull());
}

void tst_Frames::tooLarge() {
    // One array counted twice: the frame would be larger than what is allowed, the test is not.
    const QByteArray half(300 * 1024 * 1024, Qt::Uninitialized);
    QVERIFY(RecordingFormat::messageFrame(1, 5, QStringLiteral("name"), {half, half}).isNull());
}

QTEST_GUILESS_MAIN(tst_Frames)
#include "tst_frames.moc"
