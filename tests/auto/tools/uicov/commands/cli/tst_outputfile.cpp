// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/cli/outputfile.h"
#include "testlib/recordingbuilder.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using Uicov::Base::Message;
using Uicov::Commands::Cli::OutputFile;

class TestOutputFile : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("out.txt"));

    QByteArray contents() {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

private Q_SLOTS:
    void cleanup() {
        QFile::remove(m_path);
        TestLib::TestCase::cleanup();
    }

    void theFileIsThereOnceItIsWhole() {
        OutputFile output(m_path);
        QVERIFY(!output.open());
        QVERIFY(!output.isStandardOutput());
        output.write(QString::fromUtf8("größer\n"));
        QVERIFY(!QFile::exists(m_path));
        QVERIFY(!output.close());
        QCOMPARE(contents(), QByteArray("gr\xc3\xb6\xc3\x9f"
                                        "er\n"));
    }

    void anUnfinishedFileLeavesTheEarlierOneAlone() {
        {
            OutputFile output(m_path);
            QVERIFY(!output.open());
            output.write(QStringLiteral("first"));
            QVERIFY(!output.close());
            OutputFile second(m_path);
            QVERIFY(!second.open());
            second.write(QStringLiteral("second"));
        }
        QCOMPARE(contents(), QByteArray("first"));
        QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }

    void aFolderThatIsNotThereIsToldAtOnce() {
        OutputFile output(m_folder.filePath(QStringLiteral("none/out.txt")));
        const auto problem = output.open();
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::OutputNotWritable);
    }

    void aRecordingIsNotOverwritten() {
        TestLib::RecordingBuilder recording;
        QVERIFY(recording.write(m_path));
        OutputFile output(m_path);
        const auto problem = output.open();
        QVERIFY(problem);
        QVERIFY(problem->text.contains(QStringLiteral("is a recording")));
        QCOMPARE(contents(), recording.bytes());
    }

    void aDeviceThatIsFullIsTold() {
        OutputFile output(QStringLiteral("/dev/full"));
        QVERIFY(!output.open());
        output.write(QString(100000, QLatin1Char('x')));
        const auto problem = output.close();
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::OutputNotWritable);
        QVERIFY2(problem->text.contains(QStringLiteral("No space left")),
                 qPrintable(problem->text));
    }

    void aReaderOfAPipeThatStopsIsTold() {
        QCOMPARE(::mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
        // Opened for both, so that neither end waits for the other.
        const int reader = ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_CLOEXEC);
        QVERIFY(reader >= 0);
        OutputFile output(m_path);
        QVERIFY(!output.open());
        ::close(reader);
        output.write(QString(100000, QLatin1Char('x')));
        const auto problem = output.close();
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::OutputNotWritable);
        QVERIFY2(problem->text.contains(QStringLiteral("Broken pipe")), qPrintable(problem->text));
    }

    void aDeviceCanBeWrittenTo() {
        OutputFile output(QStringLiteral("/dev/null"));
        QVERIFY(!output.open());
        output.write(QStringLiteral("x"));
        QVERIFY(!output.close());
        QVERIFY(QFile::exists(QStringLiteral("/dev/null")));
    }
};

QTEST_GUILESS_MAIN(TestOutputFile)
#include "tst_outputfile.moc"
