// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafile.h"
#include "testlib/commandrunner.h"
#include "testlib/runmaker.h"
#include "testlib/terminalrunner.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using Uicov::Store::DataFile;

/** What all verbs have in common. */
class TestCommand : public TestLib::TestCase {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_formerFolder;

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        qunsetenv("UICOV_FILE");
        qunsetenv("UICOV_CONFIG");
        m_folder = std::make_unique<QTemporaryDir>();
        m_formerFolder = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder->path()));
        for (const char* name : {".uicov", "my file"}) {
            DataFile file;
            QVERIFY(!file.create(QLatin1String(name)));
            QVERIFY(!file.add(TestLib::panelRun()));
            QVERIFY(!file.commit());
        }
    }

    void cleanup() {
        QDir::setCurrent(m_formerFolder);
        TestLib::TestCase::cleanup();
    }

    void onATerminalTheNextCommandIsNamed_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("next");
        const auto row = [](const char* words, const char* next) {
            QTest::newRow(words) << QString::fromLatin1(words)
                                        .replace(QLatin1Char('_'), QLatin1Char(' '))
                                        .split(QLatin1Char(','))
                                 << QByteArray(next);
        };
        row("report", "uicov report -m");
        row("report,-m", "uicov html");
        row("report,my_file", "uicov report -m 'my file'");
        row("json,-o,a.json", "uicov report -m");
        row("junit,-o,a.xml,my_file", "uicov report -m 'my file'");
        row("badge,-o,a.svg", "uicov report -m");
        row("explain,Start", "uicov html");
        row("explain,Start,my_file", "uicov html 'my file'");
        row("dump", "uicov report -m");
        row("dump,my_file", "uicov report -m 'my file'");
        row("erase", "uicov run -- APP");
        row("erase,my_file", "uicov run -o 'my file' -- APP");
        row("html", "xdg-open uicov.html");
        row("combine,-o,b.uicov,my_file", "uicov report -m b.uicov");
    }

    void onATerminalTheNextCommandIsNamed() {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, next);
        TestLib::TerminalRunner terminal;
        QVERIFY(terminal.start(QStringLiteral(UICOV_PROGRAM), arguments, 0));
        QCOMPARE(terminal.finish(), 0);
        QVERIFY2(terminal.output().endsWith("uicov: next: " + next + "\r\n"),
                 terminal.output().constData());
    }

    /** A script's log is not the place for it. */
    void elsewhereAReportSaysNothingBesides() {
        TestLib::CommandRunner runner(QStringLiteral(UICOV_PROGRAM));
        for (const char* verb : {"report", "json", "junit", "badge", "dump"}) {
            QCOMPARE(runner.run({QLatin1String(verb)}), 0);
            QCOMPARE(runner.errors(), QString());
        }
    }
};

QTEST_GUILESS_MAIN(TestCommand)
#include "tst_command.moc"
