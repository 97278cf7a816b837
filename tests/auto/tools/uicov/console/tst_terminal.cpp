// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandrunner.h"
#include "testlib/samplerecording.h"
#include "testlib/terminalrunner.h"
#include "testlib/testcase.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using TestLib::CommandRunner;
using TestLib::TerminalRunner;

/** The class decides by what its streams are, so it is tested from outside. */
class TestTerminal : public TestLib::TestCase {
    Q_OBJECT

    const QString m_program = QStringLiteral(UICOV_PROGRAM);

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        qunsetenv("NO_COLOR");
        qputenv("TERM", "xterm");
    }

    void cleanup() {
        qunsetenv("NO_COLOR");
        TestLib::TestCase::cleanup();
    }

    void anErrorIsOneLineWithItsName() {
        CommandRunner runner(m_program);
        QCOMPARE(runner.run({QStringLiteral("report"), QStringLiteral("none.uirec")}), 1);
        QCOMPARE(runner.output(), QString());
        QCOMPARE(runner.errors(), QStringLiteral("uicov: error: none.uirec: there is no such file; "
                                                 "check the path [input-missing]\n"));
    }

    void controlCharactersInAnErrorAreMadeVisible() {
        CommandRunner runner(m_program);
        QCOMPARE(runner.run({QStringLiteral("report"), QStringLiteral("a\n\x1b[31mb")}), 1);
        QVERIFY(runner.errors().startsWith(QStringLiteral("uicov: error: a\\n\\x1b[31mb: ")));
        QCOMPARE(runner.errors().count(QLatin1Char('\n')), 1);
    }

    void onATerminalTheWordIsColoured() {
        TerminalRunner runner;
        QVERIFY(runner.start(m_program, {QStringLiteral("report"), QStringLiteral("none.uirec")}));
        QCOMPARE(runner.finish(), 1);
        QVERIFY2(runner.output().contains("\x1b[1;31merror:\x1b[0m none.uirec"),
                 runner.output().constData());
    }

    void noColorIsObeyed() {
        qputenv("NO_COLOR", "1");
        TerminalRunner runner;
        QVERIFY(runner.start(m_program, {QStringLiteral("report"), QStringLiteral("none.uirec")}));
        QCOMPARE(runner.finish(), 1);
        QVERIFY(runner.output().contains("uicov: error: none.uirec"));
        QVERIFY(!runner.output().contains('\x1b'));
    }

    void aDumbTerminalGetsNoColour() {
        qputenv("TERM", "dumb");
        TerminalRunner runner;
        QVERIFY(runner.start(m_program, {QStringLiteral("report"), QStringLiteral("none.uirec")}));
        QCOMPARE(runner.finish(), 1);
        QVERIFY(!runner.output().contains('\x1b'));
    }

    /** They are there to be copied. */
    void listedNamesAreWholeOnATerminalToo() {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("x.uirec"));
        TestLib::RecordingBuilder recording;
        TestLib::fillSampleRecording(recording);
        QVERIFY(recording.write(path));
        const QStringList arguments{QStringLiteral("report"), QStringLiteral("-m"), path};
        TerminalRunner runner;
        constexpr int columns = 40;
        QVERIFY(runner.start(m_program, arguments, columns));
        QCOMPARE(runner.finish(), 0);
        CommandRunner plain(m_program);
        QCOMPARE(plain.run(arguments), 0);
        const QRegularExpression listed(QStringLiteral("^    (shown|missed) "));
        const QStringList lines = plain.output().split(QLatin1Char('\n')).filter(listed);
        QCOMPARE(lines.size(), 6);
        QCOMPARE(QString::fromUtf8(runner.output()).split(QStringLiteral("\r\n")).filter(listed),
                 lines);
    }
};

QTEST_GUILESS_MAIN(TestTerminal)
#include "tst_terminal.moc"
