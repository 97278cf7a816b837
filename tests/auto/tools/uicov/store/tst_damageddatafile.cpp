// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafile.h"
#include "testlib/datafiletest.h"
#include "testlib/randomrun.h"

#include <QTest>

using TestLib::randomRun;
using Uicov::Base::Message;
using Uicov::Runs::Run;
using Uicov::Store::DataFile;
using Uicov::Store::Sql;

Q_DECLARE_METATYPE(Uicov::Base::Message)

/** What cannot be used as a data file, or not whole. */
class TestDamagedDataFile : public TestLib::DataFileTest {
    Q_OBJECT

    /** Changes what is in the file, past all checks. */
    void tamper(const char* statement) {
        Sql sql;
        QVERIFY(sql.open(m_path, Sql::Access::Write));
        QVERIFY2(sql.execute(QLatin1String(statement)), qPrintable(sql.error()));
    }

private Q_SLOTS:
    void whatIsNoDataFileIsRefusedAndLeftAsItIs_data() {
        QTest::addColumn<QByteArray>("statement");
        QTest::addColumn<Message>("message");
        QTest::addColumn<QString>("part");
        QTest::newRow("another database")
            << QByteArray("PRAGMA application_id = 7") << Message::InputForeign
            << "a SQLite database of something else";
        QTest::newRow("newer schema") << QByteArray("PRAGMA user_version = 99")
                                      << Message::InputNewer << "version 99, and this uicov reads";
        QTest::newRow("schema 0") << QByteArray("PRAGMA user_version = 0") << Message::InputForeign
                                  << "version 0";
    }

    void whatIsNoDataFileIsRefusedAndLeftAsItIs() {
        QFETCH(QByteArray, statement);
        QFETCH(Message, message);
        QFETCH(QString, part);
        makeFile();
        tamper(statement.constData());
        const QByteArray before = contents();
        for (const auto access : {Sql::Access::Read, Sql::Access::Write}) {
            DataFile file;
            const auto problem = file.open(m_path, access);
            QVERIFY(problem);
            QCOMPARE(problem->message, message);
            QVERIFY2(problem->text.contains(part), qPrintable(problem->text));
            QVERIFY(problem->text.startsWith(m_path));
        }
        QCOMPARE(contents(), before);
    }

    void aSchemaThatIsNotOursIsRefusedBeforeAnythingIsRead_data() {
        QTest::addColumn<QByteArray>("statements");
        QTest::addColumn<QString>("part");
        QTest::newRow("trigger")
            << QByteArray("CREATE TRIGGER t AFTER INSERT ON run BEGIN DELETE FROM run; END")
            << "has the trigger \"t\", which uicov never makes";
        QTest::newRow("view in the place of a table")
            << QByteArray("ALTER TABLE run RENAME TO old;\n"
                          "CREATE VIEW run AS WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT "
                          "x + 1 FROM c) SELECT x AS id, 'u' || x AS uuid FROM c")
            << "has the ";
        QTest::newRow("index") << QByteArray("CREATE INDEX i ON run (abs(id))")
                               << "has the index \"i\"";
        QTest::newRow("table") << QByteArray("CREATE TABLE mine (id)") << "has the table \"mine\"";
        QTest::newRow("another view")
            << QByteArray("CREATE VIEW mine AS SELECT 1") << "has the view \"mine\"";
        QTest::newRow("generated column")
            << QByteArray("ALTER TABLE run ADD COLUMN more AS (hex(zeroblob(1000000)))")
            << "has the table \"run\"";
        QTest::newRow("condition")
            << QByteArray("ALTER TABLE run ADD COLUMN more TEXT CHECK (length(more) > 7)")
            << "has the table \"run\"";
        QTest::newRow("virtual table")
            << QByteArray("DROP TABLE label;\nCREATE VIRTUAL TABLE label USING fts5(run, name)")
            << "has the table \"label";
    }

    void aSchemaThatIsNotOursIsRefusedBeforeAnythingIsRead() {
        QFETCH(QByteArray, statements);
        QFETCH(QString, part);
        makeFile();
        tamper(statements.constData());
        const QByteArray before = contents();
        for (const auto access : {Sql::Access::Read, Sql::Access::Write}) {
            DataFile file;
            const auto problem = file.open(m_path, access);
            QVERIFY(problem);
            QCOMPARE(problem->message, Message::InputForeign);
            QVERIFY2(problem->text.contains(part), qPrintable(problem->text));
            QVERIFY(problem->text.startsWith(m_path));
        }
        QCOMPARE(contents(), before);
    }

    void whatAPersonMayDoToTheFileDoesNoHarm() {
        makeFile();
        tamper("ANALYZE");
        tamper("VACUUM");
        DataFile file;
        QVERIFY(!file.open(m_path, Sql::Access::Read));
        QCOMPARE(file.runs().size(), 1);
    }

    /** As a view's or a default's call of a function would be. */
    void whatASchemaCallsIsNotTrusted() {
        makeFile();
        Sql sql;
        QVERIFY(sql.open(m_path, Sql::Access::Read));
        QCOMPARE(sql.value(QStringLiteral("PRAGMA trusted_schema")).toInt(), 0);
    }

    /** Not by uicov, which has a lock of its own for that. */
    void aFileThatAnotherProgramHasLockedIsRefusedAndLeftAsItIs() {
        makeFile();
        const QByteArray before = contents();
        Sql other;
        QVERIFY(other.open(m_path, Sql::Access::Write));
        QVERIFY2(other.execute(QStringLiteral("BEGIN EXCLUSIVE")), qPrintable(other.error()));
        for (const auto access : {Sql::Access::Read, Sql::Access::Write}) {
            DataFile file;
            const auto problem = file.open(m_path, access);
            QVERIFY(problem);
            QCOMPARE(problem->message, Message::DataFileBusy);
            QVERIFY2(problem->text.startsWith(
                         m_path + QStringLiteral(": another program is writing to it: ")),
                     qPrintable(problem->text));
        }
        QVERIFY(other.execute(QStringLiteral("ROLLBACK")));
        QCOMPARE(contents(), before);
        DataFile file;
        QVERIFY(!file.open(m_path, Sql::Access::Read));
        QCOMPARE(file.runs().size(), 1);
    }

    void aRunThatDoesNotFitTogetherIsDamage_data() {
        QTest::addColumn<QByteArray>("statement");
        QTest::newRow("a missing element") << QByteArray("DELETE FROM element WHERE number = 1");
        QTest::newRow("a parent that is not there")
            << QByteArray("UPDATE element SET parent = 4000 WHERE number = 1");
        QTest::newRow("a negative parent")
            << QByteArray("UPDATE element SET parent = -4 WHERE number = 1");
        QTest::newRow("a child that is not there")
            << QByteArray("INSERT INTO further_parent VALUES (1, 0, 900, 77777)");
        QTest::newRow("a missing text")
            << QByteArray("UPDATE element SET class = 99999 WHERE number = 0");
        QTest::newRow("a hit of nothing")
            << QByteArray("INSERT INTO hit VALUES (1, 4711, 1, 0, 1, NULL, NULL)");
        QTest::newRow("a hit in no context")
            << QByteArray("INSERT INTO hit VALUES (1, 0, 1, 4711, 1, NULL, NULL)");
        QTest::newRow("a hit that did not happen")
            << QByteArray("INSERT OR REPLACE INTO hit VALUES (1, 0, 1, 0, 0, NULL, NULL)");
        QTest::newRow("a hit whose last time comes before its first")
            << QByteArray("INSERT OR REPLACE INTO hit VALUES (1, 0, 1, 0, 1, 20, 10)");
        QTest::newRow("a hit that no program can count")
            << QByteArray("UPDATE hit SET count = 9223372036854775807");
        QTest::newRow("fewer messages than none")
            << QByteArray("UPDATE run SET messages = -9223372036854775808");
        QTest::newRow("fewer messages lost than none")
            << QByteArray("UPDATE run SET messages_lost = -1");
        QTest::newRow("fewer bytes lost than none") << QByteArray("UPDATE run SET bytes_lost = -1");
        QTest::newRow("a warning that was never given")
            << QByteArray("INSERT INTO warning VALUES (1, 'x', 0)");
        QTest::newRow("a warning that no program can count")
            << QByteArray("INSERT INTO warning VALUES (1, 'x', 9223372036854775807)");
        QTest::newRow("no context") << QByteArray("DELETE FROM context");
        QTest::newRow("no table") << QByteArray("DROP TABLE hit");
    }

    void aRunThatDoesNotFitTogetherIsDamage() {
        QFETCH(QByteArray, statement);
        makeFile();
        tamper(statement.constData());
        DataFile file;
        QVERIFY(!file.open(m_path, Sql::Access::Read));
        Run run;
        const auto problem = file.read(TestLib::uuid(1), DataFile::Pictures::Load, run);
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::DataFileDamaged);
    }

    void aPlaceThatNoRectangleCanHoldIsNone_data() {
        QTest::addColumn<QString>("values");
        QTest::newRow("too far") << "x = 9000000000, y = 0, width = 1, height = 1";
        QTest::newRow("too wide") << "x = 2147483647, y = 0, width = 2, height = 1";
        QTest::newRow("wider than a number")
            << "x = 9223372036854775807, y = 0, width = 9223372036854775807, height = 1";
        QTest::newRow("higher than a number") << "x = 0, y = -9223372036854775808, width = 1, "
                                                 "height = -9223372036854775808";
    }
    void aPlaceThatNoRectangleCanHoldIsNone() {
        QFETCH(QString, values);
        makeFile();
        tamper(qPrintable(QStringLiteral("UPDATE element SET ") + values));
        DataFile file;
        QVERIFY(!file.open(m_path, Sql::Access::Read));
        Run run;
        QVERIFY(!file.read(TestLib::uuid(1), DataFile::Pictures::Leave, run));
        QVERIFY(!run.element(0).place);
    }

    void damagedPagesAreFound() {
        makeFile(200);
        DataFile sound;
        QVERIFY(!sound.open(m_path, Sql::Access::Read));
        QVERIFY(!sound.checkPages());
        QFile raw(m_path);
        QVERIFY(raw.open(QIODevice::ReadWrite));
        const qint64 page = 4096;
        for (qint64 start = page; start + page <= raw.size(); start += page) {
            QVERIFY(raw.seek(start) && raw.write(QByteArray(64, '\x7f')) == 64);
        }
        raw.close();
        DataFile file;
        const auto problem = file.open(m_path, Sql::Access::Read);
        QVERIFY(problem || file.checkPages());
    }
};

QTEST_GUILESS_MAIN(TestDamagedDataFile)
#include "tst_damageddatafile.moc"
