// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/bytecursor.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Recording::ByteCursor;

class TestByteCursor : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void readsBigEndianValuesInOrder() {
        ByteCursor cursor(QByteArray::fromHex("ff 00000102 fffffffe 0000000100000002"
                                              "00000003 c3a921 0000"));
        QCOMPARE(cursor.readUInt8(), quint8{255});
        QCOMPARE(cursor.readUInt32(), quint32{0x102});
        QCOMPARE(cursor.readInt32(), -2);
        QCOMPARE(cursor.readUInt64(), quint64{0x100000002});
        QCOMPARE(cursor.readText(), QStringLiteral("é!"));
        QCOMPARE(cursor.remaining(), 2);
        QVERIFY(cursor.isOk());
        QVERIFY(!cursor.isAtSoundEnd());
        QCOMPARE(cursor.readRest(), QByteArray(2, '\0'));
        QVERIFY(cursor.isAtSoundEnd());
    }

    void aValueThatIsNotAllThereEndsEverything() {
        ByteCursor cursor(QByteArray::fromHex("000000"));
        QCOMPARE(cursor.readUInt32(), quint32{0});
        QVERIFY(!cursor.isOk());
        QCOMPARE(cursor.readUInt8(), quint8{0}); // a byte is there, but what would it mean?
        QVERIFY(!cursor.isAtSoundEnd());
    }

    void aLengthBeyondTheEndGivesNothing_data() {
        QTest::addColumn<QByteArray>("hex");
        QTest::newRow("one too many") << QByteArray("00000003 4142");
        QTest::newRow("huge") << QByteArray("ffffffff 4142");
        QTest::newRow("most negative as int") << QByteArray("80000000 4142");
    }

    void aLengthBeyondTheEndGivesNothing() {
        QFETCH(QByteArray, hex);
        ByteCursor cursor(QByteArray::fromHex(hex));
        QCOMPARE(cursor.readBytes(), QByteArray());
        QVERIFY(!cursor.isOk());
    }

    void anEmptyTextIsSound() {
        ByteCursor cursor(QByteArray::fromHex("00000000"));
        QCOMPARE(cursor.readText(), QString());
        QVERIFY(cursor.isAtSoundEnd());
    }
};

QTEST_GUILESS_MAIN(TestByteCursor)
#include "tst_bytecursor.moc"
