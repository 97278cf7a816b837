// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "monkeyrun.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {

constexpr char examples[] = UICOV_EXAMPLES;

/** How often the program is given the chance to show that it does the same alone. */
constexpr int mostRounds = 4;

/** Two extensions, each without pictures and with them. */
constexpr int ways = 4;

QString listed(const QSet<QString>& lines) {
    return QStringList(lines.cbegin(), lines.cend()).join(QLatin1Char('\n'));
}

} // namespace

/**
 * Programs that a monkey uses behave with the extension as they do without it. UICOV_MONKEY=all
 * takes all programs in all ways; otherwise those with a star, in turns. UICOV_MONKEY_SEED says
 * another seed, UICOV_MONKEY_DISPLAY an X server to run on.
 */
class TestMonkey : public TestLib::TestCase {
    Q_OBJECT

    static bool takesAll() { return qgetenv("UICOV_MONKEY") == "all"; }

private Q_SLOTS:
    void theProgramNoticesNothing_data() {
        QTest::addColumn<QString>("program");
        QTest::addColumn<bool>("isClassic");
        QTest::addColumn<bool>("withScreenshots");
        QFile list(QStringLiteral(PROGRAM_LIST));
        QVERIFY(list.open(QIODevice::ReadOnly));
        int number = 0;
        while (!list.atEnd()) {
            QString line = QString::fromUtf8(list.readLine()).trimmed();
            const bool isInSample = line.startsWith(QLatin1String("* "));
            if (line.isEmpty() || line.startsWith(QLatin1Char('#')) ||
                (!isInSample && !takesAll())) {
                continue;
            }
            line = isInSample ? line.mid(2) : line;
            const bool isAbsolute = line.startsWith(QLatin1Char('/'));
            // In turns the ways are: controls, classic, and both of them with pictures.
            for (int way = 0; way < ways; ++way) {
                if (takesAll() || number % ways == way) {
                    const bool isClassic = way % 2 == 1;
                    const bool withScreenshots = way >= 2;
                    QTest::newRow(qPrintable(line + QLatin1String(isClassic ? ", classic" : "") +
                                             QLatin1String(withScreenshots ? ", pictures" : "")))
                        << (isAbsolute ? line : QLatin1String(examples) + line) << isClassic
                        << withScreenshots;
                }
            }
            ++number;
        }
        QVERIFY(number > 0);
    }

    void theProgramNoticesNothing() {
        QFETCH(QString, program);
        QFETCH(bool, isClassic);
        QFETCH(bool, withScreenshots);
        if (!QFile::exists(program)) {
            QSKIP("is not installed");
        }
        bool isNumber = false;
        const int asked = qEnvironmentVariableIntValue("UICOV_MONKEY_SEED", &isNumber);
        MonkeyRun monkey(program, static_cast<quint32>(isNumber ? asked : 1),
                         qEnvironmentVariable("UICOV_MONKEY_DISPLAY"));
        QSet<QString> endsAlone;
        QSet<QString> linesAlone;
        MonkeyRun::Outcome recorded;
        bool isRecorded = false;
        // The moments at which things happen are never quite the same, so what the program does
        // alone is seen only in several rounds; one is enough where nothing differs.
        for (int round = 0; round < mostRounds; ++round) {
            const MonkeyRun::Outcome alone = monkey.alone();
            endsAlone.insert(alone.end);
            linesAlone += alone.lines;
            if (!isRecorded) {
                recorded = monkey.recorded({isClassic, withScreenshots});
                isRecorded = true;
            }
            if (endsAlone.contains(recorded.end) && linesAlone.contains(recorded.lines)) {
                break;
            }
        }
        qInfo("%s%s", qPrintable(recorded.end),
              recorded.isDone ? "" : ", by itself before the monkey was done");
        QVERIFY2(!endsAlone.contains(QStringLiteral("hangs")), "hangs alone, and tells nothing");
        QVERIFY2(endsAlone.contains(recorded.end),
                 qPrintable(recorded.end + QStringLiteral("; alone: ") + listed(endsAlone) +
                            QLatin1Char('\n') + listed(recorded.lines)));
        const QSet<QString> news = recorded.lines - linesAlone;
        QVERIFY2(news.isEmpty(), qPrintable(QStringLiteral("said only with us:\n") + listed(news)));
        QVERIFY2(recorded.recordingProblem.isEmpty(), qPrintable(recorded.recordingProblem));
    }
};

QTEST_GUILESS_MAIN(TestMonkey)
#include "tst_monkey.moc"
