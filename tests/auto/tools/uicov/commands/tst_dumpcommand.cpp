#include "testlib/commandrunner.h"
#include "testlib/samplerecording.h"
#include "testlib/testcase.h"

#include <QFile>
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
    }

    void everyFrameIsOneLine() {
        QCOMPARE(dump({QStringLiteral("whole.uirec")}), 0);
        QCOMPARE(m_runner.errors(), QString());
        const QStringList lines = m_runner.output().split(QLatin1Char('\n'));
        QCOMPARE(
            lines.first(),
            QStringLiteral("+0.000000 process application=\"panel\" pid=\"42\" session=\"S1\""));
        QVERIFY(lines.last().isEmpty());
        const QString end = lines.at(lines.size() - 2);
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
