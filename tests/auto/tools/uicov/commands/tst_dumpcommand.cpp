// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandrunner.h"
#include "testlib/samplerecording.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using TestLib::CommandRunner;
using TestLib::RecordingBuilder;

class TestDumpCommand : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    CommandRunner m_runner{QStringLiteral(UICOV_PROGRAM)};

    int dump(const QStringList& arguments) {
        m_runner.setWorkingFolder(m_folder.path());
        return m_runner.run(QStringList{QStringLiteral("dump")} + arguments);
    }

private Q_SLOTS:
    void initTestCase() {
        RecordingBuilder whole;
        TestLib::fillSampleRecording(whole);
        QVERIFY(whole.write(m_folder.filePath(QStringLiteral("whole.uirec"))));
        RecordingBuilder killed;
        TestLib::fillSampleRecording(killed, false);
        QVERIFY(killed.write(m_folder.filePath(QStringLiteral("killed.uirec"))));
        m_runner.setVariable(QStringLiteral("UICOV_FILE"), QString());
        m_runner.setWorkingFolder(m_folder.path());
        const auto combine = [this](const char* output, const char* input) {
            return m_runner.run({QStringLiteral("combine"), QStringLiteral("-q"),
                                 QStringLiteral("-o"), QLatin1String(output),
                                 QLatin1String(input)});
        };
        QCOMPARE(combine("data.uicov", "whole.uirec"), 0);
        QCOMPARE(combine("partial.uicov", "killed.uirec"), 0);
    }

    void everyFrameIsOneLine() {
        QCOMPARE(dump({QStringLiteral("whole.uirec")}), 0);
        QCOMPARE(m_runner.errors(), QString());
        const QStringList lines = m_runner.output().split(QLatin1Char('\n'));
        QCOMPARE(
            lines.first(),
            QStringLiteral("+0.000000 process application=\"panel\" pid=\"42\" session=\"S1\""));
        QVERIFY(lines.last().isEmpty());
        const QString& end = lines.at(lines.size() - 2);
        QVERIFY2(end.startsWith(QStringLiteral("+1.500000 end messages=")), qPrintable(end));
        // process, three log lines, end, and what stands between
        QCOMPARE(lines.size() - 1, end.section(QLatin1Char('='), 1).toInt() + 5);
        QVERIFY(m_runner.output().contains(
            QStringLiteral(" Button \"Start\" event=\"clicked\" count=1\n")));
    }

    void anAbnormalEndIsTold() {
        QCOMPARE(dump({QStringLiteral("killed.uirec")}), 0);
        QVERIFY(m_runner.errors().endsWith(QStringLiteral("[ended-abnormally]\n")));
        QCOMPARE(dump({QStringLiteral("--strict"), QStringLiteral("killed.uirec")}), 3);
        QCOMPARE(dump({QStringLiteral("--strict"), QStringLiteral("whole.uirec")}), 0);
    }

    void theOutputCanBeAFile() {
        QCOMPARE(dump({QStringLiteral("whole.uirec")}), 0);
        const QByteArray expected = m_runner.output().toUtf8();
        QCOMPARE(
            dump({QStringLiteral("-o"), QStringLiteral("d.txt"), QStringLiteral("whole.uirec")}),
            0);
        QFile file(m_folder.filePath(QStringLiteral("d.txt")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), expected);
    }

    void severalFilesAreNamed() {
        QCOMPARE(dump({QStringLiteral("whole.uirec"), QStringLiteral("data.uicov")}), 0);
        QVERIFY(m_runner.output().startsWith(QStringLiteral("recording \"whole.uirec\"\n+0.0")));
        QVERIFY(m_runner.output().contains(QStringLiteral("\ndata file \"data.uicov\"\nrun ")));
    }

    void whatCannotBeReadIsPassedOver() {
        QCOMPARE(dump({QStringLiteral("none.uirec"), QStringLiteral("whole.uirec")}), 1);
        QVERIFY(m_runner.errors().contains(QStringLiteral("[input-missing]")));
        QVERIFY(m_runner.output().contains(QStringLiteral(" end messages=")));
    }

    void aDataFileIsPrintedRunByRun() {
        QCOMPARE(dump({QStringLiteral("data.uicov")}), 0);
        const QStringList lines = m_runner.output().split(QLatin1Char('\n'));
        QVERIFY2(lines.first().startsWith(QStringLiteral("run ")), qPrintable(lines.first()));
        QVERIFY2(lines.first().contains(QStringLiteral(" application=\"panel\"")),
                 qPrintable(lines.first()));
        QVERIFY(lines.first().endsWith(QStringLiteral(" complete")));
        QVERIFY2(m_runner.output().contains(QRegularExpression(
                     QStringLiteral("\nelement (#\\d+) Button \"Start\" class=\"[A-Za-z]+\" "
                                    "id=\"[^\"]+\".* parent=#\\d+.* events=\"clicked,shown\".*\n"
                                    "hit \\1 Button \"Start\" event=\"clicked\" context=\"\" "
                                    "count=1\n"))),
                 qPrintable(m_runner.output()));
    }

    void aPartialRunIsTold() {
        QCOMPARE(dump({QStringLiteral("partial.uicov")}), 0);
        QVERIFY(m_runner.output().contains(QStringLiteral(" partial reason=\"")));
        QCOMPARE(dump({QStringLiteral("--strict"), QStringLiteral("partial.uicov")}), 3);
    }

    void withoutAFileItIsTheDefaultOne() {
        QCOMPARE(dump({QStringLiteral("data.uicov")}), 0);
        const QString expected = m_runner.output();
        m_runner.setVariable(QStringLiteral("UICOV_FILE"), QStringLiteral("data.uicov"));
        QCOMPARE(dump({}), 0);
        m_runner.setVariable(QStringLiteral("UICOV_FILE"), QString());
        QCOMPARE(m_runner.output(), expected);
        QCOMPARE(dump({}), 1);
        QVERIFY(m_runner.errors().startsWith(QStringLiteral("uicov: error: .uicov: ")));
    }

    /** One object a line; the first names the file. */
    QVector<QJsonObject> objects(const QString& file) {
        QVector<QJsonObject> result;
        if (dump({QStringLiteral("--format"), QStringLiteral("json"), file}) != 0) {
            return result;
        }
        const QStringList lines = m_runner.output().split(QLatin1Char('\n'));
        for (const QString& line : lines) {
            QJsonParseError error{};
            const QJsonDocument document = QJsonDocument::fromJson(line.toUtf8(), &error);
            if (error.error == QJsonParseError::NoError) {
                result.append(document.object());
            } else if (!line.isEmpty()) {
                return {};
            }
        }
        return result;
    }

    void aRecordingAsObjects() {
        const QVector<QJsonObject> lines = objects(QStringLiteral("whole.uirec"));
        QVERIFY(lines.size() > 10);
        QCOMPARE(lines.first().value(QStringLiteral("recording")).toString(),
                 QStringLiteral("whole.uirec"));
        QCOMPARE(lines.at(1)
                     .value(QStringLiteral("process"))
                     .toObject()
                     .value(QStringLiteral("application"))
                     .toString(),
                 QStringLiteral("panel"));
        QCOMPARE(lines.last().value(QStringLiteral("frame")).toString(), QStringLiteral("end"));
        QCOMPARE(lines.last().value(QStringLiteral("microseconds")).toInt(), 1500000);
        // as many lines as without, and one for the file's name
        QCOMPARE(dump({QStringLiteral("whole.uirec")}), 0);
        QCOMPARE(lines.size() - 1, m_runner.output().count(QLatin1Char('\n')));
    }

    void aDataFileAsObjects() {
        const QVector<QJsonObject> lines = objects(QStringLiteral("data.uicov"));
        QVERIFY(lines.size() > 10);
        QCOMPARE(lines.first().value(QStringLiteral("schema")).toInt(), 2);
        const QJsonObject& run = lines.at(1);
        QCOMPARE(run.value(QStringLiteral("application")).toString(), QStringLiteral("panel"));
        QVERIFY(run.value(QStringLiteral("complete")).toBool());
        QCOMPARE(run.value(QStringLiteral("elements")).toInt(), lines.size() - 2);
        int starts = 0;
        for (int i = 2; i < lines.size(); ++i) {
            const QJsonObject& element = lines.at(i);
            QCOMPARE(element.value(QStringLiteral("element")).toInt(), i - 2);
            QCOMPARE(element.value(QStringLiteral("of")), run.value(QStringLiteral("run")));
            if (element.value(QStringLiteral("text")).toString() == QLatin1String("Start")) {
                ++starts;
                const QJsonObject hit =
                    element.value(QStringLiteral("hits")).toArray().first().toObject();
                QCOMPARE(hit.value(QStringLiteral("event")).toString(), QStringLiteral("clicked"));
                QCOMPARE(hit.value(QStringLiteral("count")).toInt(), 1);
                QVERIFY(element.value(QStringLiteral("parent")).isDouble());
            }
        }
        QCOMPARE(starts, 1);
    }

    void unusableInputAndOutputEndWith1() {
        QCOMPARE(dump({QStringLiteral("none.uirec")}), 1);
        QVERIFY(m_runner.errors().contains(QStringLiteral("[input-missing]")));
        QCOMPARE(dump({QStringLiteral("-o"), QStringLiteral("/dev/full"),
                       QStringLiteral("whole.uirec")}),
                 1);
        QVERIFY(m_runner.errors().contains(QStringLiteral("[output-not-writable]")));
    }
};

QTEST_GUILESS_MAIN(TestDumpCommand)
#include "tst_dumpcommand.moc"
