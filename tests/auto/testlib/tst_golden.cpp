// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/golden.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using TestLib::compareWithGolden;

class tst_Golden : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void diff_data() {
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("actual");
        QTest::addColumn<QString>("difference");
        const auto row = [](const char* name, const char* expected, const char* actual,
                            const char* difference) {
            QTest::newRow(name) << QString::fromLatin1(expected) << QString::fromLatin1(actual)
                                << QString::fromLatin1(difference);
        };
        row("equal", "a b", "a b", " a, b");
        row("missing", "a b c", "a c", " a,-b, c");
        row("too many", "a c", "a b c", " a,+b, c");
        row("changed", "a b c", "a x c", " a,-b,+x, c");
        row("swapped", "a b", "b a", "-a, b,+a");
        row("more at the end", "a", "a b", " a,+b");
    }

    void diff() {
        QFETCH(QString, expected);
        QFETCH(QString, actual);
        const QLatin1Char space(' ');
        QTEST(TestLib::diff(expected.split(space), actual.split(space)).join(QLatin1Char(',')),
              "difference");
    }

    void equalLinesLeaveNothingBehind() {
        const QTemporaryDir folder;
        const QString actualFolder = folder.filePath(QStringLiteral("actual"));
        const QString golden = write(folder, "one\ntwo\n");
        QCOMPARE(
            compareWithGolden(golden, {QStringLiteral("one"), QStringLiteral("two")}, actualFolder),
            QString());
        QVERIFY(!QFile::exists(actualFolder));
    }

    void differentLinesAreShownAndKept() {
        const QTemporaryDir folder;
        const QString actualFolder = folder.filePath(QStringLiteral("a/b"));
        const QString golden = write(folder, "1\n2\n3\n4\n5\nsix\n");
        const QString kept = actualFolder + QStringLiteral("/golden.txt");
        QStringList lines;
        for (int i = 1; i <= 6; ++i) {
            lines.append(QString::number(i));
        }
        QCOMPARE(compareWithGolden(golden, lines, actualFolder),
                 golden +
                     QStringLiteral(" differs:\n ...\n 3\n 4\n 5\n-six\n+6\n"
                                    "The actual lines are in ") +
                     kept);
        QFile file(kept);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("1\n2\n3\n4\n5\n6\n"));
    }

    void missingGoldenIsADifference() {
        const QTemporaryDir folder;
        const QString golden = folder.filePath(QStringLiteral("none.txt"));
        QVERIFY(
            compareWithGolden(golden, {QStringLiteral("a")}, folder.path() + QStringLiteral("/x"))
                .startsWith(golden));
    }

private:
    static QString write(const QTemporaryDir& folder, const char* content) {
        QFile file(folder.filePath(QStringLiteral("golden.txt")));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(content);
        }
        return file.fileName();
    }
};

QTEST_GUILESS_MAIN(tst_Golden)
#include "tst_golden.moc"
