// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafilewriter.h"
#include "testlib/datafiletest.h"
#include "testlib/randomrun.h"
#include "testlib/samplerecording.h"

#include <QDir>
#include <QTest>

using TestLib::randomRun;
using Uicov::Base::Message;
using Uicov::Runs::Run;
using Uicov::Store::DataFile;
using Uicov::Store::DataFileWriter;
using Uicov::Store::Sql;
using Mode = Uicov::Store::DataFileWriter::Mode;

class TestDataFileWriter : public TestLib::DataFileTest {
    Q_OBJECT

    QRandomGenerator m_random{21};

    Run newRun(int number) {
        Run run = randomRun(m_random);
        run.uuid = TestLib::uuid(number);
        return run;
    }

    bool write(Mode mode, int number) {
        DataFileWriter writer;
        return !writer.open(m_path, mode) && !writer.file().add(newRun(number)) && !writer.commit();
    }

    QStringList runs() const {
        DataFile file;
        QStringList uuids = file.open(m_path, Sql::Access::Read) ? QStringList() : file.runs();
        uuids.sort();
        return uuids;
    }

    QStringList filesInFolder() const {
        return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    void put(const QByteArray& bytes) {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

private Q_SLOTS:
    void replacingLeavesOnlyWhatIsNew() {
        QVERIFY(write(Mode::Replace, 1));
        QVERIFY(write(Mode::Replace, 2));
        QCOMPARE(runs(), QStringList{TestLib::uuid(2)});
        QCOMPARE(filesInFolder(), QStringList{QStringLiteral("x.uicov")});
    }

    void appendingKeepsWhatIsThere() {
        QVERIFY(write(Mode::Append, 1)); // nothing to append to yet
        QVERIFY(write(Mode::Append, 2));
        QCOMPARE(runs(), QStringList({TestLib::uuid(1), TestLib::uuid(2)}));
    }

    void anEmptyFileIsTakenOver() {
        put(QByteArray());
        QVERIFY(write(Mode::Append, 1));
        QCOMPARE(runs(), QStringList{TestLib::uuid(1)});
    }

    void withoutCommitEverythingIsAsItWas() {
        QVERIFY(write(Mode::Replace, 1));
        for (const Mode mode : {Mode::Replace, Mode::Append}) {
            {
                DataFileWriter writer;
                QVERIFY(!writer.open(m_path, mode));
                QVERIFY(!writer.file().add(newRun(2)));
            }
            QCOMPARE(runs(), QStringList{TestLib::uuid(1)});
            QCOMPARE(filesInFolder(), QStringList{QStringLiteral("x.uicov")});
        }
    }

    void whatIsNotOursIsNeverOverwritten_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("part");
        QTest::newRow("text") << QByteArray("my notes") << "is no data file and not overwritten";
        TestLib::RecordingBuilder recording;
        QTest::newRow("recording") << recording.bytes() << "is a recording and not overwritten";
        QTest::newRow("damaged database")
            << QByteArray("SQLite format 3\0and then nothing", 32) << "it is not overwritten";
    }

    void whatIsNotOursIsNeverOverwritten() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, part);
        put(bytes);
        for (const Mode mode : {Mode::Replace, Mode::Append}) {
            DataFileWriter writer;
            const auto problem = writer.open(m_path, mode);
            QVERIFY(problem);
            QCOMPARE(problem->message, Message::OutputForeign);
            QVERIFY2(problem->text.contains(part), qPrintable(problem->text));
        }
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), bytes);
    }

    void aPlaceThatCannotBeWrittenIsNamedAsItWasGiven() {
        DataFileWriter writer;
        const QString missing = m_folder->filePath(QStringLiteral("none/x.uicov"));
        const auto problem = writer.open(missing, Mode::Replace);
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::OutputNotWritable);
        QVERIFY2(problem->text.startsWith(missing + QStringLiteral(": ")),
                 qPrintable(problem->text));
        DataFileWriter folder;
        QCOMPARE(folder.open(m_folder->path(), Mode::Replace)->message, Message::OutputNotWritable);
    }

    void aLinkStaysALink() {
        const QString link = m_folder->filePath(QStringLiteral("link"));
        QVERIFY(write(Mode::Replace, 1));
        QVERIFY(QFile::link(m_path, link));
        {
            DataFileWriter writer;
            QVERIFY(!writer.open(link, Mode::Replace));
            QVERIFY(!writer.file().add(newRun(2)));
            QVERIFY(!writer.commit());
        }
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(runs(), QStringList{TestLib::uuid(2)});
    }
};

QTEST_GUILESS_MAIN(TestDataFileWriter)
#include "tst_datafilewriter.moc"
