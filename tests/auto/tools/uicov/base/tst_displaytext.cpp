// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/displaytext.h"
#include "testlib/testcase.h"

#include <QTest>

class TestDisplayText : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsNotVisibleIsEscaped_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("escaped");
        QTest::newRow("plain") << "Save as"
                               << "Save as";
        QTest::newRow("letters") << QString::fromUtf8("Größe 日本 😀")
                                 << QString::fromUtf8("Größe 日本 😀");
        QTest::newRow("line end") << "a\nb\r\tc"
                                  << "a\\nb\\r\\tc";
        QTest::newRow("backslash") << "a\\n"
                                   << "a\\\\n";
        QTest::newRow("escape sequence") << "\x1b[31mred"
                                         << "\\x1b[31mred";
        QTest::newRow("delete") << QStringLiteral("\x7f") << "\\x7f";
        QTest::newRow("zero") << QString(1, QChar(0)) << "\\x00";
        QTest::newRow("one byte control") << QString(QChar(0x9b)) << "\\x9b";
        QTest::newRow("right to left override") << QString(QChar(0x202e)) << "\\u202e";
        QTest::newRow("line separator") << QString(QChar(0x2028)) << "\\u2028";
        QTest::newRow("zero width space") << QString(QChar(0x200b)) << "\\u200b";
        QTest::newRow("lone surrogate") << QString(QChar(0xd800)) << "\\ud800";
        QTest::newRow("lone surrogates, wrong order")
            << QString(QChar(0xdc00)) + QChar(0xd800) << "\\udc00\\ud800";
        QTest::newRow("null") << QString() << "";
    }

    void whatIsNotVisibleIsEscaped() {
        QFETCH(QString, text);
        QFETCH(QString, escaped);
        QCOMPARE(Uicov::Base::escaped(text), escaped);
    }

    void everyEscapedTextIsVisibleThroughout() {
        for (int unit = 0; unit <= 0xffff; ++unit) {
            const QString escaped = Uicov::Base::escaped(QString(QChar(unit)));
            for (const QChar c : escaped) {
                QVERIFY2(c.isPrint(), qPrintable(QString::number(unit, 16)));
            }
        }
    }

    void widthCountsColumns_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("width");
        QTest::newRow("empty") << QString() << 0;
        QTest::newRow("ascii") << "abc" << 3;
        QTest::newRow("umlaut") << QString::fromUtf8("ä") << 1;
        QTest::newRow("combined") << QString::fromUtf8("a\xcc\x88") << 1;
        QTest::newRow("wide") << QString::fromUtf8("日本") << 4;
        QTest::newRow("emoji") << QString::fromUtf8("😀") << 2;
        QTest::newRow("half width katakana") << QString::fromUtf8("ｱ") << 1;
    }

    void widthCountsColumns() {
        QFETCH(QString, text);
        QFETCH(int, width);
        QCOMPARE(Uicov::Base::displayWidth(text), width);
    }

    void theMiddleIsLost_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("columns");
        QTest::addColumn<QString>("elided");
        QTest::newRow("fits") << "abcdef" << 6 << "abcdef";
        QTest::newRow("too long by one") << "abcdefg" << 6 << QString::fromUtf8("abc…fg");
        QTest::newRow("one column") << "abc" << 1 << QString::fromUtf8("…");
        QTest::newRow("no limit") << "abc" << 0 << "abc";
        QTest::newRow("wide characters stay whole")
            << QString::fromUtf8("日本日本日本") << 6 << QString::fromUtf8("日…本");
        QTest::newRow("pairs stay whole")
            << QString::fromUtf8("😀😀😀😀") << 5 << QString::fromUtf8("😀…😀");
    }

    void theMiddleIsLost() {
        QFETCH(QString, text);
        QFETCH(int, columns);
        QFETCH(QString, elided);
        QCOMPARE(Uicov::Base::elided(text, columns), elided);
    }

    void padding() {
        QCOMPARE(Uicov::Base::padded(QStringLiteral("a"), 3), QStringLiteral("a  "));
        QCOMPARE(Uicov::Base::paddedLeft(QStringLiteral("a"), 3), QStringLiteral("  a"));
        QCOMPARE(Uicov::Base::padded(QStringLiteral("abcd"), 3), QStringLiteral("abcd"));
        QCOMPARE(Uicov::Base::padded(QString::fromUtf8("日"), 3), QString::fromUtf8("日 "));
    }
};

QTEST_GUILESS_MAIN(TestDisplayText)
#include "tst_displaytext.moc"
