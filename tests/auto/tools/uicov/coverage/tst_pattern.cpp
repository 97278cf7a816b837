// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/pattern.h"
#include "testlib/testcase.h"

#include <QElapsedTimer>
#include <QTest>

using Uicov::Coverage::Pattern;

class TestPattern : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theWholeTextIsMatched_data() {
        QTest::addColumn<QString>("glob");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("matches");
        const auto row = [](const char* glob, const char* text, bool matches) {
            QTest::addRow("%s : %s", glob, text)
                << QString::fromUtf8(glob) << QString::fromUtf8(text) << matches;
        };
        row("", "", true);
        row("", "a", false);
        row("a", "a", true);
        row("a", "ab", false);
        row("a", "A", false);
        row("*", "", true);
        row("*", "a/b > c\nd", true);
        row("a*c", "abc", true);
        row("a*c", "ac", true);
        row("a*c", "acd", false);
        row("?", "é", true);
        row("?", "", false);
        row("[abc]", "b", true);
        row("[abc]", "d", false);
        row("[!abc]", "d", true);
        row("[!abc]", "a", false);
        row("[a-c]", "b", true);
        row("[]]", "]", true);
        row("[^]", "^", true);
        row("[", "[", true);
        row("a[b", "a[b", true);
        row("(a|b)+.", "(a|b)+.", true);
        row("(a|b)", "a", false);
        row("\\d", "\\d", true);
        row("\\d", "1", false);
        row("Window \"P*\"", "Window \"Panel\"", true);
        row("a*b*b", "aXbYb", true);
        row("a*b*bc", "abbbc", true);
        row("*ab*", "aab", true);
        row("*ab", "abab", true);
        row("**a**", "xay", true);
        row("a*a", "a", false);
        row("*[*]*", "x*y", true);
    }

    void theStepsDoNotGrowWithTheNumberOfStars() {
        const Pattern pattern(QStringLiteral("*a").repeated(20) + QStringLiteral("*b"));
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!pattern.matches(QString(20000, QLatin1Char('a'))));
        constexpr qint64 plenty = 20000; // ms; with a step for each way to match it has no end
        QVERIFY(timer.elapsed() < plenty);
        QVERIFY(pattern.matches(QString(20000, QLatin1Char('a')) + QLatin1Char('b')));
    }

    void theWholeTextIsMatched() {
        QFETCH(QString, glob);
        QFETCH(QString, text);
        QFETCH(bool, matches);
        const Pattern pattern(glob);
        QVERIFY(pattern.isSet());
        QCOMPARE(pattern.matches(text), matches);
        QCOMPARE(pattern.glob(), glob);
    }

    void withoutAPatternNothingMatches() {
        QVERIFY(!Pattern().isSet());
        QVERIFY(!Pattern().matches(QString()));
        QVERIFY(Pattern(QString()).isSet()); // given, and empty
    }
};

QTEST_GUILESS_MAIN(TestPattern)
#include "tst_pattern.moc"
