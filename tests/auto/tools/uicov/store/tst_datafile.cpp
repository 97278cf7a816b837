// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafile.h"
#include "testlib/datafiletest.h"
#include "testlib/randomrun.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <QTest>

using TestLib::printed;
using TestLib::randomRun;
using Uicov::Base::Message;
using Uicov::Runs::Run;
using Uicov::Store::DataFile;
using Uicov::Store::Sql;

class TestDataFile : public TestLib::DataFileTest {
    Q_OBJECT

    static Run read(DataFile& file, const QString& uuid) {
        Run run;
        const auto problem = file.read(uuid, DataFile::Pictures::Load, run);
        return problem ? Run() : run;
    }

    /** Puts a file that a version with the first schema made in the place of the file. */
    bool takeFirstSchema() const {
        return QFile::copy(QStringLiteral(UICOV_GOLD_DIR "/datafiles/schema-1"), m_path) &&
               QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner);
    }

    static QStringList everythingIn(DataFile& file) {
        QStringList lines;
        const QStringList runs = file.runs();
        for (const QString& uuid : runs) {
            lines += printed(read(file, uuid));
        }
        return lines;
    }

private Q_SLOTS:
    void whatWasWrittenIsReadBack() {
        QRandomGenerator random(1);
        for (int round = 0; round < 60; ++round) {
            const Run run = randomRun(random);
            {
                DataFile file;
                QVERIFY(!file.create(m_path));
                QVERIFY(!file.add(run));
                QVERIFY(!file.commit());
            }
            DataFile file;
            QVERIFY(!file.open(m_path, Sql::Access::Read));
            QCOMPARE(file.runs(), QStringList{run.uuid});
            QCOMPARE(printed(read(file, run.uuid)), printed(run));
            QVERIFY(QFile::remove(m_path));
        }
    }

    void aFileOfTheFirstSchemaIsRead() {
        QVERIFY(takeFirstSchema());
        DataFile file;
        QVERIFY(!file.open(m_path, Sql::Access::Read));
        Sql sql;
        QVERIFY(sql.open(m_path, Sql::Access::Read));
        QCOMPARE(sql.value(QStringLiteral("PRAGMA user_version")).toInt(), 1);
        int elements = 0;
        int hits = 0;
        const QStringList uuids = file.runs();
        for (const QString& uuid : uuids) {
            const Run run = read(file, uuid);
            QCOMPARE(run.extension, QString());
            for (const Uicov::Runs::RunElement& element : run.elements) {
                QVERIFY(element.attributes.isEmpty());
                QVERIFY(element.wasEnabled && !element.wasSeen);
                ++elements;
                for (const Uicov::Runs::Hit& hit : element.hits) {
                    QCOMPARE(hit.first, -1);
                    QCOMPARE(hit.last, -1);
                    ++hits;
                }
            }
        }
        QVERIFY(elements > 0 && hits > 0);
        QCOMPARE(elements, sql.value(QStringLiteral("SELECT count(*) FROM element")).toInt());
        QCOMPARE(hits, sql.value(QStringLiteral("SELECT count(*) FROM hit")).toInt());
    }

    void aFileOfTheFirstSchemaTakesRunsOfThePresent() {
        QVERIFY(takeFirstSchema());
        QRandomGenerator random(6);
        Run added = randomRun(random);
        added.uuid = TestLib::uuid(2);
        added.extension = QStringLiteral("libqtuicontrols");
        QStringList before;
        {
            DataFile file;
            QVERIFY(!file.open(m_path, Sql::Access::Write));
            before = everythingIn(file);
            QVERIFY(!file.add(added));
            QVERIFY(!file.commit());
        }
        DataFile file;
        QVERIFY(!file.open(m_path, Sql::Access::Read));
        QCOMPARE(printed(read(file, added.uuid)), printed(added));
        QCOMPARE(read(file, added.uuid).extension, added.extension);
        DataFile same;
        QVERIFY(!same.open(m_path, Sql::Access::Write));
        QVERIFY(!same.erase(added.uuid));
        QVERIFY(!same.commit());
        QCOMPARE(everythingIn(same), before);
    }

    void aMigratedFileHasTheColumnsOfANewOneInTheirOrder() {
        const auto columns = [this](const char* table) {
            QStringList names;
            Sql sql;
            if (sql.open(m_path, Sql::Access::Read)) {
                QSqlQuery& query =
                    sql.query(QStringLiteral("SELECT name FROM pragma_table_info('%1')")
                                  .arg(QLatin1String(table)));
                while (sql.next(query)) {
                    names.append(query.value(0).toString());
                }
            }
            return names;
        };
        for (const char* table : {"run", "element", "hit"}) {
            QVERIFY(takeFirstSchema());
            {
                DataFile file;
                QVERIFY(!file.open(m_path, Sql::Access::Write));
                QVERIFY(!file.erase(TestLib::uuid(1)));
                QVERIFY(!file.commit());
            }
            const QStringList migrated = columns(table);
            QVERIFY(QFile::remove(m_path));
            DataFile file;
            QVERIFY(!file.create(m_path));
            QVERIFY(migrated.size() > 5);
            QCOMPARE(migrated, columns(table));
            QVERIFY(QFile::remove(m_path));
        }
    }

    void twoThatOpenedAFileOfTheFirstSchemaBothAddToIt() {
        QVERIFY(takeFirstSchema());
        DataFile first;
        DataFile second;
        QVERIFY(!first.open(m_path, Sql::Access::Write));
        QVERIFY(!second.open(m_path, Sql::Access::Write));
        const int before = first.runs().size();
        QRandomGenerator random(7);
        int number = 2;
        for (DataFile* file : {&first, &second}) {
            Run run = randomRun(random);
            run.uuid = TestLib::uuid(number++);
            const auto problem = file->add(run);
            QVERIFY2(!problem, problem ? qPrintable(problem->text) : "");
            QVERIFY(!file->commit());
        }
        QCOMPARE(first.runs().size(), before + 2);
    }

    void picturesAreKeptOnceAndLeftOutWhereNobodyWantsThem() {
        QRandomGenerator random(2);
        DataFile file;
        QVERIFY(!file.create(m_path));
        Run run;
        while (run.pictures.isEmpty()) {
            run = randomRun(random);
        }
        run.uuid = TestLib::uuid(1);
        QVERIFY(!file.add(run));
        const int elements = static_cast<int>(run.elements.size());
        run.uuid = TestLib::uuid(2);
        QVERIFY(!file.add(run));
        QVERIFY(!file.commit());
        Run bare;
        QVERIFY(!file.read(run.uuid, DataFile::Pictures::Leave, bare));
        QVERIFY(bare.pictures.isEmpty());
        QCOMPARE(static_cast<int>(bare.elements.size()), elements);
        Sql sql;
        QVERIFY(sql.open(m_path, Sql::Access::Read));
        QCOMPARE(sql.value(QStringLiteral("SELECT count(*) FROM picture")).toInt(),
                 run.pictures.size());
    }

    void onlyItsOwnerCanReadANewFile() {
        DataFile file;
        QVERIFY(!file.create(m_path));
        QCOMPARE(QFileInfo(m_path).permissions() & ~(QFile::ReadUser | QFile::WriteUser),
                 QFile::ReadOwner | QFile::WriteOwner);
    }

    void aNewFileNeverTakesThePlaceOfAnything() {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("mine") == 4);
        file.close();
        QCOMPARE(DataFile().create(m_path)->message, Message::OutputNotWritable);
        QCOMPARE(contents(), QByteArray("mine"));
        const QString link = m_folder->filePath(QStringLiteral("link"));
        QVERIFY(QFile::link(m_folder->filePath(QStringLiteral("elsewhere")), link));
        QVERIFY(DataFile().create(link));
        QVERIFY(!QFileInfo::exists(m_folder->filePath(QStringLiteral("elsewhere"))));
    }

    void theMoreCompleteFormOfARunStays() {
        QRandomGenerator random(3);
        Run growing = randomRun(random);
        Run finished = growing;
        finished.messages = growing.messages + 1;
        finished.isComplete = true;
        for (const bool isFinishedFirst : {true, false}) {
            DataFile file;
            QVERIFY(!file.create(m_path));
            DataFile::Added added = DataFile::Added::New;
            QVERIFY(!file.add(isFinishedFirst ? finished : growing, &added));
            QCOMPARE(added, DataFile::Added::New);
            QVERIFY(!file.add(isFinishedFirst ? growing : finished, &added));
            QCOMPARE(added, isFinishedFirst ? DataFile::Added::Known : DataFile::Added::Better);
            QVERIFY(!file.add(finished, &added));
            QCOMPARE(added, DataFile::Added::Known);
            QVERIFY(!file.commit());
            QCOMPARE(printed(read(file, finished.uuid)), printed(finished));
            QVERIFY(QFile::remove(m_path));
        }
    }

    void anErasedRunTakesAllAlongThatNoOtherNeeds() {
        QRandomGenerator random(4);
        DataFile file;
        QVERIFY(!file.create(m_path));
        Run first = randomRun(random);
        first.uuid = TestLib::uuid(1);
        QVERIFY(!file.add(first));
        QVERIFY(!file.commit());
        const auto counts = [this] {
            Sql sql;
            QStringList lines;
            if (sql.open(m_path, Sql::Access::Read)) {
                for (const char* table : {"run", "label", "context", "warning", "text", "picture",
                                          "element", "further_parent", "hit"}) {
                    const QString name = QLatin1String(table);
                    lines.append(
                        name + QLatin1Char('=') +
                        sql.value(QStringLiteral("SELECT count(*) FROM ") + name).toString());
                }
            }
            return lines;
        };
        const QStringList before = counts();
        QCOMPARE(before.size(), 9);
        for (int i = 2; i < 6; ++i) {
            Run run = randomRun(random);
            run.uuid = TestLib::uuid(i);
            QVERIFY(!file.add(run));
        }
        QVERIFY(!file.commit());
        QVERIFY(counts() != before);
        for (int i = 2; i < 6; ++i) {
            QVERIFY(!file.erase(TestLib::uuid(i)));
        }
        QVERIFY(!file.commit());
        QCOMPARE(counts(), before);
        QCOMPARE(printed(read(file, first.uuid)), printed(first));
    }

    void withoutCommitNothingHasHappened() {
        makeFile();
        const QByteArray before = contents();
        {
            QRandomGenerator random(9);
            DataFile file;
            QVERIFY(!file.open(m_path, Sql::Access::Write));
            Run run = randomRun(random);
            run.uuid = TestLib::uuid(7);
            QVERIFY(!file.add(run));
        }
        DataFile file;
        QVERIFY(!file.open(m_path, Sql::Access::Read));
        QCOMPARE(file.runs(), QStringList{TestLib::uuid(1)});
        QCOMPARE(contents(), before);
    }

    void aPartIsTakenBackAsAWhole() {
        QRandomGenerator random(6);
        DataFile file;
        QVERIFY(!file.create(m_path));
        Run kept = randomRun(random);
        kept.uuid = TestLib::uuid(1);
        file.beginPart();
        QVERIFY(!file.add(kept));
        QVERIFY(!file.keepPart());
        file.beginPart();
        Run dropped = randomRun(random);
        dropped.uuid = TestLib::uuid(2);
        QVERIFY(!file.add(dropped));
        file.dropPart();
        Run later = dropped; // with the texts whose rows have just gone
        later.uuid = TestLib::uuid(3);
        QVERIFY(!file.add(later));
        QVERIFY(!file.commit());
        QStringList uuids = file.runs();
        uuids.sort();
        QCOMPARE(uuids, QStringList({kept.uuid, later.uuid}));
        QCOMPARE(printed(read(file, later.uuid)), printed(later));
    }

    void runsComeByApplicationStartAndUuid() {
        DataFile file;
        QVERIFY(!file.create(m_path));
        const auto add = [&file](const char* application, const char* started, int number) {
            Run run;
            run.uuid = TestLib::uuid(number);
            run.application = QLatin1String(application);
            run.started = QLatin1String(started);
            run.contexts = QStringList{QString()};
            QVERIFY(!file.add(run));
        };
        add("b", "2024-01-01", 1);
        add("a", "2024-01-02", 3);
        add("a", "2024-01-01", 4);
        add("a", "2024-01-02", 2);
        QCOMPARE(file.runs(), QStringList({TestLib::uuid(4), TestLib::uuid(2), TestLib::uuid(3),
                                           TestLib::uuid(1)}));
    }

    void aRunThatIsNotThereIsAProblem() {
        makeFile();
        DataFile file;
        QVERIFY(!file.open(m_path, Sql::Access::Read));
        Run run;
        QVERIFY(file.read(TestLib::uuid(9), DataFile::Pictures::Leave, run));
    }

    void aFileThatIsReadIsNotChanged() {
        makeFile();
        const QByteArray before = contents();
        {
            DataFile file;
            QVERIFY(!file.open(m_path, Sql::Access::Read));
            read(file, TestLib::uuid(1));
            QVERIFY(file.erase(TestLib::uuid(1)));
        }
        QCOMPARE(contents(), before);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }

    void theViewsShowNames() {
        makeFile();
        Sql sql;
        QVERIFY(sql.open(m_path, Sql::Access::Read));
        QVERIFY(sql.value(QStringLiteral("SELECT count(*) FROM elements")).toInt() > 4);
        QVERIFY(
            sql.value(QStringLiteral("SELECT count(*) FROM hits WHERE event = 'clicked'")).toInt() >
            0);
        QVERIFY(sql.value(QStringLiteral("SELECT count(*) FROM elements WHERE key IS NOT NULL"))
                    .toInt() > 0);
        QVERIFY2(sql.isOk(), qPrintable(sql.error()));
    }
};

QTEST_GUILESS_MAIN(TestDataFile)
#include "tst_datafile.moc"
