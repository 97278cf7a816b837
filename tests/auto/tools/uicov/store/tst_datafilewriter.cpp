// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafilewriter.h"
#include "store/filelock.h"
#include "testlib/datafiletest.h"
#include "testlib/randomrun.h"
#include "testlib/samplerecording.h"

#include <QDir>
#include <QTest>

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using TestLib::randomRun;
using Uicov::Base::Message;
using Uicov::Runs::Run;
using Uicov::Store::DataFile;
using Uicov::Store::DataFileWriter;
using Uicov::Store::FileLock;
using Uicov::Store::Sql;
using Mode = Uicov::Store::DataFileWriter::Mode;

/** Of what was synced, in that order. */
static QVector<quint64> syncedFiles;

/** Stands before the C library's. */
extern "C" int fsync(int descriptor) {
    struct stat status {};
    ::fstat(descriptor, &status);
    syncedFiles.append(status.st_ino);
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

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

    static quint32 modeOf(const QString& path) {
        struct stat status {};
        return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 0777U
                                                                         : 0;
    }

    static quint64 inodeOf(const QString& path) {
        struct stat status {};
        return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_ino : 0;
    }

    /** The file and what SQLite has beside it, for restoreFiles(). */
    void keepFilesOf(const QString& path) {
        m_kept.clear();
        for (const char* ending : {"", "-wal", "-shm", "-journal"}) {
            QFile file(path + QLatin1String(ending));
            if (file.open(QIODevice::ReadOnly)) {
                m_kept.insert(file.fileName(), file.readAll());
            }
        }
    }

    void restoreFiles() {
        for (auto it = m_kept.cbegin(); it != m_kept.cend(); ++it) {
            QFile file(it.key());
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(*it) == it->size());
        }
    }

    /** Leaves the file as a process that was killed while it changed it in its place. */
    void cutShort() {
        Sql sql;
        QVERIFY(sql.open(m_path, Sql::Access::Write));
        QVERIFY(sql.execute(QStringLiteral("PRAGMA cache_size = 1;\n"
                                           "BEGIN;\n"
                                           "DELETE FROM run;\n"
                                           "DELETE FROM element;\n"
                                           "DELETE FROM text")));
        keepFilesOf(m_path);
        QVERIFY(sql.execute(QStringLiteral("ROLLBACK")));
        restoreFiles();
    }

    QMap<QString, QByteArray> m_kept;

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

    void anEarlierChangeThatWasCutShortIsTakenBackFirst() {
        QVERIFY(write(Mode::Replace, 1));
        const QByteArray before = contents();
        cutShort();
        QVERIFY(contents() != before);
        QVERIFY(QFile::exists(m_path + QStringLiteral("-journal")));
        QCOMPARE(runs(), QStringList{TestLib::uuid(1)});
        QCOMPARE(contents(), before);
        QCOMPARE(filesInFolder(), QStringList{QStringLiteral("x.uicov")});
        cutShort();
        QVERIFY(write(Mode::Append, 2));
        QCOMPARE(runs(), QStringList({TestLib::uuid(1), TestLib::uuid(2)}));
        cutShort();
        QVERIFY(write(Mode::Replace, 3));
        QCOMPARE(runs(), QStringList{TestLib::uuid(3)});
        QCOMPARE(filesInFolder(), QStringList{QStringLiteral("x.uicov")});
    }

    void aJournalOfAFileThatIsGoneDoesNothingToTheNext() {
        QVERIFY(write(Mode::Replace, 1));
        cutShort();
        QVERIFY(QFile::remove(m_path));
        QVERIFY(write(Mode::Append, 2));
        QCOMPARE(filesInFolder(), QStringList{QStringLiteral("x.uicov")});
        QCOMPARE(runs(), QStringList{TestLib::uuid(2)});
    }

    void whatAWriteAheadLogHoldsIsInTheFileAfterwards() {
        QVERIFY(write(Mode::Replace, 1));
        {
            Sql sql;
            QVERIFY(sql.open(m_path, Sql::Access::Write));
            QCOMPARE(sql.value(QStringLiteral("PRAGMA journal_mode = WAL")).toString(),
                     QStringLiteral("wal"));
            QVERIFY(sql.execute(QStringLiteral("UPDATE run SET application = 'of the log'")));
            keepFilesOf(m_path); // as they are before the log is taken into the file
        }
        restoreFiles();
        QVERIFY(QFile::exists(m_path + QStringLiteral("-wal")));
        QVERIFY(write(Mode::Append, 2));
        QCOMPARE(filesInFolder(), QStringList{QStringLiteral("x.uicov")});
        DataFile file;
        QVERIFY(!file.open(m_path, Sql::Access::Read));
        Run run;
        QVERIFY(!file.readAttributes(TestLib::uuid(1), run));
        QCOMPARE(run.application, QStringLiteral("of the log"));
    }

    void theFileStandsAsItIsUntilTheCommit() {
        QVERIFY(write(Mode::Replace, 1));
        const QByteArray before = contents();
        DataFileWriter writer;
        QVERIFY(!writer.open(m_path, Mode::Append));
        QVERIFY(!writer.file().add(newRun(2)));
        QVERIFY(!writer.file().commit()); // as far as SQLite is concerned
        QCOMPARE(contents(), before);
        QVERIFY(!QFile::exists(m_path + QStringLiteral("-journal")));
        QVERIFY(!writer.commit());
        QCOMPARE(runs(), QStringList({TestLib::uuid(1), TestLib::uuid(2)}));
    }

    void whoMayReadItMayStillReadItAfterwards() {
        QVERIFY(write(Mode::Replace, 1));
        QCOMPARE(modeOf(m_path), 0600U);
        QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner |
                                                  QFile::ReadGroup | QFile::ReadOther));
        QVERIFY(write(Mode::Append, 2));
        QCOMPARE(modeOf(m_path), 0644U);
    }

    /** Or a power failure leaves the name of a file without its content. */
    void theContentIsOnTheDiskBeforeItHasTheName() {
        for (const Mode mode : {Mode::Replace, Mode::Append}) {
            syncedFiles.clear();
            QVERIFY(write(mode, 1));
            QVERIFY(!syncedFiles.isEmpty());
            QCOMPARE(syncedFiles.first(), inodeOf(m_path));
            QCOMPARE(syncedFiles.last(), inodeOf(m_folder->path()));
        }
    }

    void halfWrittenFilesOfKilledProcessesGo_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow("part") << ".x.uicov.part";
        QTest::newRow("of an earlier version") << ".x.uicov.part-4711-1";
        QTest::newRow("its journal") << ".x.uicov.part-4711-1-journal";
    }

    void halfWrittenFilesOfKilledProcessesGo() {
        QFETCH(QString, name);
        QVERIFY(write(Mode::Replace, 1));
        const QString others = QStringLiteral(".x.uicov.partly");
        for (const QString& each : {name, others, QStringLiteral("x.uicov.lock")}) {
            QFile file(m_folder->filePath(each));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QCOMPARE(runs(), QStringList{TestLib::uuid(1)}); // reading is enough
        QCOMPARE(filesInFolder(), QStringList({others, QStringLiteral("x.uicov")}));
    }

    void whatSomebodyWritesRightNowIsLeftAlone() {
        QVERIFY(write(Mode::Replace, 1));
        FileLock lock;
        QVERIFY(lock.tryToAcquire(m_path));
        DataFileWriter writer;
        QVERIFY(!writer.open(m_path, Mode::Append));
        const QStringList during = filesInFolder();
        QCOMPARE(during.size(), 3);
        QCOMPARE(runs(), QStringList{TestLib::uuid(1)});
        QCOMPARE(filesInFolder(), during);
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
