// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandrunner.h"
#include "testlib/samplerecording.h"
#include "testlib/testcase.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using TestLib::CommandRunner;
using TestLib::RecordingBuilder;

class TestReportCommand : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    CommandRunner m_runner{QStringLiteral(UICOV_PROGRAM)};

    QString path(const char* name) { return m_folder.filePath(QLatin1String(name)); }

    QByteArray contents(const char* name) {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    bool writeFile(const char* name, const QByteArray& bytes) {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }

    int report(const QStringList& arguments) {
        m_runner.setWorkingFolder(m_folder.path());
        return m_runner.run(QStringList{QStringLiteral("report")} + arguments);
    }

private Q_SLOTS:
    void initTestCase() {
        RecordingBuilder whole;
        TestLib::fillSampleRecording(whole);
        QVERIFY(whole.write(path("whole.uirec")));
        RecordingBuilder killed;
        TestLib::fillSampleRecording(killed, false);
        QVERIFY(killed.write(path("killed.uirec")));
        QVERIFY(writeFile("torn.uirec", whole.bytes().chopped(3)));
        QVERIFY(writeFile("empty.uirec", QByteArray()));
        QVERIFY(writeFile("foreign.uirec", "PNG or some such, not ours"));
        RecordingBuilder idle;
        idle.addEnd();
        QVERIFY(idle.write(path("idle.uirec")));
        RecordingBuilder damaged;
        TestLib::fillSampleRecording(damaged, false);
        damaged.addRecord(7, QByteArray("?"));
        damaged.addEnd();
        QVERIFY(damaged.write(path("damaged.uirec")));
    }

    void aSoundRecording() {
        QCOMPARE(report({QStringLiteral("-m"), QStringLiteral("whole.uirec")}), 0);
        QCOMPARE(m_runner.errors(), QString());
        const QStringList lines = m_runner.output().split(QLatin1Char('\n'));
        const QStringList expected{
            QStringLiteral("Window                Elements  Used  Shown  Missed  Cover  Events"),
            QStringLiteral("------------------------------------------------------------------"),
            QStringLiteral("Dialog \"About Panel\"         3     1      1       1    33%     2/5"),
            QStringLiteral("    shown     Button \"Close\"  (never: clicked)"),
            QStringLiteral("    missed    Button \"Licence\"  (never: clicked, shown)"),
            QStringLiteral("Window \"Panel\"              12     8      4       0    67%   18/24"),
            QStringLiteral("    shown     Button \"Stop\"  (never: clicked)"),
            QStringLiteral("    shown     CheckBox \"Heater\"  (never: checked, clicked)"),
            QStringLiteral("    shown     MenuBar > MenuItem \"File\" > Menu > MenuItem \"Quit\"  "
                           "(never: clicked)"),
            QStringLiteral("    shown     MenuBar > MenuItem \"Help\"  (never: clicked)"),
            QStringLiteral("    unopened  MenuBar > MenuItem \"Help\" > Menu"),
            QStringLiteral("    used      TextInput  (never: confirmed)"),
            QStringLiteral("------------------------------------------------------------------"),
            QStringLiteral("TOTAL                       15     9      5       1    60%   20/29"),
        };
        QCOMPARE(lines.mid(0, expected.size()).join(QLatin1Char('\n')),
                 expected.join(QLatin1Char('\n')));
        QVERIFY(m_runner.output().contains(QStringLiteral("\"unchecked\" of 2 check boxes")));
        QVERIFY(m_runner.output().contains(QStringLiteral("Menus never opened: 1;")));
    }

    void theExampleInTheDocumentationIsReal() {
        QCOMPARE(report({QStringLiteral("-m"), QStringLiteral("whole.uirec")}), 0);
        constexpr int shownLines = 6;
        const QString lines = m_runner.output().section(QLatin1Char('\n'), 0, shownLines - 1);
        QFile page(QStringLiteral(UICOV_SOURCE_DIR "/docs/commands/report.md"));
        QVERIFY(page.open(QIODevice::ReadOnly));
        QVERIFY2(QString::fromUtf8(page.readAll()).contains(lines), qPrintable(lines));
    }

    void equalWarningsAreFolded() {
        QCOMPARE(report({QStringLiteral("whole.uirec")}), 0);
        QVERIFY(
            m_runner.output().contains(QStringLiteral("Warnings while recording: 2 (1 different); "
                                                      "list them with --warnings.")));
        QVERIFY(!m_runner.output().contains(QStringLiteral("No action")));
        QCOMPARE(report({QStringLiteral("--warnings"), QStringLiteral("whole.uirec")}), 0);
        QVERIFY(m_runner.output().contains(QStringLiteral("       2 x No action at (3,4)")));
    }

    void picturesLeftOutStandInALineOfTheirOwn_data() {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("line");
        QTest::newRow("text") << "text"
                              << "\nPictures left out because a recording reached its size limit: "
                                 "7; the numbers do not depend on them.\n";
        QTest::newRow("markdown") << "markdown"
                                  << "\nPictures left out because a recording reached its size "
                                     "limit\\: 7; the numbers do not depend on them.\n";
        QTest::newRow("json") << "json"
                              << "\n    \"pictures_left_out\": 7,\n";
    }

    /** Of the recording, and of a data file made from it. */
    void picturesLeftOutStandInALineOfTheirOwn() {
        QFETCH(QString, format);
        QFETCH(QString, line);
        constexpr quint64 pictures = 7;
        QByteArray loss;
        QDataStream stream(&loss, QIODevice::WriteOnly);
        stream << pictures << quint64{0};
        constexpr quint8 lossFrame = 6;
        RecordingBuilder limited;
        TestLib::fillSampleRecording(limited, false);
        limited.addFrame(lossFrame, loss);
        limited.addEnd();
        QVERIFY(limited.write(path("limited.uirec")));
        QCOMPARE(m_runner.run({QStringLiteral("combine"), QStringLiteral("-o"),
                               path("limited.uicov"), path("limited.uirec")}),
                 0);
        for (const char* file : {"limited.uirec", "limited.uicov"}) {
            const QString name = QString::fromLatin1(file);
            QCOMPARE(format == QLatin1String("json")
                         ? m_runner.run({QStringLiteral("json"), path(file)})
                         : report({QStringLiteral("--strict"), QStringLiteral("--format"), format,
                                   name}),
                     0);
            QVERIFY2(m_runner.output().contains(line), qPrintable(m_runner.output()));
            // They are no warnings besides: those of the sample are two equal ones.
            QVERIFY(!m_runner.output().contains(QStringLiteral("Picture left out")));
        }
        QCOMPARE(report({QStringLiteral("whole.uirec")}), 0);
        QVERIFY(!m_runner.output().contains(QStringLiteral("Pictures left out")));
    }

    void equalInputGivesEqualOutputInWhateverOrder() {
        QCOMPARE(report({QStringLiteral("-m"), QStringLiteral("whole.uirec"),
                         QStringLiteral("killed.uirec")}),
                 0);
        const QString first = m_runner.output();
        QCOMPARE(report({QStringLiteral("-m"), QStringLiteral("killed.uirec"),
                         QStringLiteral("whole.uirec")}),
                 0);
        QCOMPARE(m_runner.output(), first);
        QVERIFY(
            first.contains(QStringLiteral("TOTAL                       15     9      5       1")));
    }

    void partialDataIsToldAndStrictEndsWith3_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("name");
        QTest::newRow("killed") << "killed.uirec"
                                << "1 of 2 runs is partial: it ended abnormally"
                                << "ended-abnormally";
        QTest::newRow("torn") << "torn.uirec"
                              << "1 of 2 runs is partial: it is torn after"
                              << "recording-torn";
        QTest::newRow("damaged") << "damaged.uirec"
                                 << "1 of 2 runs is partial: it lost 1 of"
                                 << "records-damaged";
    }

    void partialDataIsToldAndStrictEndsWith3() {
        QFETCH(QString, file);
        QFETCH(QString, line);
        QFETCH(QString, name);
        const QStringList files{QStringLiteral("whole.uirec"), file};
        QCOMPARE(report(files), 0);
        QVERIFY2(m_runner.output().contains(line), qPrintable(m_runner.output()));
        QVERIFY2(m_runner.errors().endsWith(QLatin1Char('[') + name + QStringLiteral("]\n")),
                 qPrintable(m_runner.errors()));
        QCOMPARE(m_runner.errors().count(QLatin1Char('\n')), 1);
        QCOMPARE(report(QStringList{QStringLiteral("--strict")} + files), 3);
        QVERIFY(m_runner.output().contains(QStringLiteral("TOTAL")));
        QCOMPARE(report({QStringLiteral("--strict"), QStringLiteral("whole.uirec")}), 0);
    }

    void anUnusableFileIsSkippedButNotForgotten_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("name");
        QTest::newRow("empty") << "empty.uirec"
                               << "input-empty";
        QTest::newRow("foreign") << "foreign.uirec"
                                 << "input-foreign";
        QTest::newRow("missing") << "none.uirec"
                                 << "input-missing";
        QTest::newRow("folder") << "."
                                << "input-unreadable";
    }

    void anUnusableFileIsSkippedButNotForgotten() {
        QFETCH(QString, file);
        QFETCH(QString, name);
        QCOMPARE(report({file}), 1);
        QCOMPARE(m_runner.output(), QString());
        QVERIFY(m_runner.errors().contains(name));
        QCOMPARE(m_runner.errors().count(QLatin1Char('\n')), 1);
        QCOMPARE(report({QStringLiteral("whole.uirec"), file}), 1);
        QVERIFY(m_runner.output().contains(QStringLiteral("Files that could not be read: 1;")));
        QVERIFY(m_runner.output().contains(QStringLiteral("TOTAL                       15")));
    }

    void noElementsAreAnErrorWithACause() {
        RecordingBuilder hollow;
        hollow.add(nullptr, QString(), QStringLiteral("QWidget"))->setTransparentNode(true);
        hollow.addEnd();
        QVERIFY(hollow.write(path("hollow.uirec")));
        for (const char* name : {"idle.uirec", "hollow.uirec"}) {
            QCOMPARE(report({QLatin1String(name)}), 1);
            QCOMPARE(m_runner.output(), QString());
            QVERIFY(m_runner.errors().contains(QStringLiteral("[no-elements]")));
        }
    }

    void theOutputCanBeAFile() {
        QCOMPARE(report({QStringLiteral("whole.uirec")}), 0);
        const QByteArray onStandardOutput = m_runner.output().toUtf8();
        QCOMPARE(
            report({QStringLiteral("-o"), QStringLiteral("r.txt"), QStringLiteral("whole.uirec")}),
            0);
        QCOMPARE(m_runner.output(), QString());
        QCOMPARE(contents("r.txt"), onStandardOutput);
        QCOMPARE(report({QStringLiteral("-o"), QStringLiteral("-"), QStringLiteral("whole.uirec")}),
                 0);
        QCOMPARE(m_runner.output().toUtf8(), onStandardOutput);
    }

    void anOutputThatCannotBeWrittenIsAnError() {
        const QStringList targets{QStringLiteral("none/r.txt"), QStringLiteral("/dev/full"),
                                  QStringLiteral("whole.uirec"), QStringLiteral(".")};
        for (const QString& target : targets) {
            QCOMPARE(report({QStringLiteral("-o"), target, QStringLiteral("whole.uirec")}), 1);
            QVERIFY2(m_runner.errors().contains(QStringLiteral("[output-not-writable]")),
                     qPrintable(target + m_runner.errors()));
        }
        QCOMPARE(report({QStringLiteral("whole.uirec")}), 0);
    }

    void thePageIsOneOfTheOutputs() {
        QCOMPARE(
            report({QStringLiteral("--html"), QStringLiteral("page.html"), QStringLiteral("--json"),
                    QStringLiteral("page.json"), QStringLiteral("whole.uirec")}),
            0);
        QCOMPARE(m_runner.run({QStringLiteral("html"), QStringLiteral("-o"),
                               QStringLiteral("alone.html"), QStringLiteral("whole.uirec")}),
                 0);
        QVERIFY(contents("page.html").size() > 1000);
        QVERIFY(contents("page.html") == contents("alone.html"));
        QVERIFY(contents("page.json").contains("uicov-report"));
        QVERIFY(writeFile("other.html", "<p>mine</p>"));
        QCOMPARE(report({QStringLiteral("--html"), QStringLiteral("other.html"),
                         QStringLiteral("whole.uirec")}),
                 1);
        QVERIFY(m_runner.errors().contains(QStringLiteral("[output-foreign]")));
        QCOMPARE(contents("other.html"), QByteArray("<p>mine</p>"));
        QCOMPARE(report({QStringLiteral("--html"), QStringLiteral("same"), QStringLiteral("--json"),
                         QStringLiteral("same"), QStringLiteral("whole.uirec")}),
                 1);
        QVERIFY(m_runner.errors().contains(QStringLiteral("two outputs cannot go to one place")));
    }
};

QTEST_GUILESS_MAIN(TestReportCommand)
#include "tst_reportcommand.moc"
