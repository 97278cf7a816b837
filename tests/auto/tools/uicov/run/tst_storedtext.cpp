// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/storedtext.h"
#include "testlib/testcase.h"

#include <QTest>

class TestStoredText : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void soundTextsStayAsTheyAre() {
        QVERIFY(Uicov::Runs::storedText(QString()).isNull());
        QVERIFY(!Uicov::Runs::storedText(QStringLiteral("")).isNull());
        for (const QString& text :
             {QStringLiteral("plain"), QString::fromUtf8("\xf0\x9f\x98\x80"), QString(QChar(0)),
              QString(QChar(QChar::ReplacementCharacter))}) {
            QCOMPARE(Uicov::Runs::storedText(text), text);
        }
    }

    void halfPairsAreReplaced_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("sound");
        const QChar high(0xd83d);
        const QChar low(0xde00);
        const QChar other(QChar::ReplacementCharacter);
        QTest::newRow("high alone") << QString(high) << QString(other);
        QTest::newRow("low alone") << QString(low) << QString(other);
        QTest::newRow("wrong way round") << QString(low) + high << QString(other) + other;
        QTest::newRow("two high") << QString(high) + high + low << QString(other) + high + low;
        QTest::newRow("inside") << QStringLiteral("a") + low + QLatin1Char('b')
                                << QStringLiteral("a") + other + QLatin1Char('b');
    }

    void halfPairsAreReplaced() {
        QFETCH(QString, text);
        QFETCH(QString, sound);
        QCOMPARE(Uicov::Runs::storedText(text), sound);
        // UTF-8 has it now.
        QCOMPARE(QString::fromUtf8(sound.toUtf8()), sound);
    }
};

QTEST_GUILESS_MAIN(TestStoredText)
#include "tst_storedtext.moc"
