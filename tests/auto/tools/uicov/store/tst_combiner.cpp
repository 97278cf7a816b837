// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/combiner.h"
#include "store/runrank.h"
#include "testlib/randomrun.h"
#include "testlib/samplerecording.h"
#include "testlib/testcase.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using TestLib::printed;
using TestLib::randomRun;
using TestLib::RecordingBuilder;
using Uicov::Base::Message;
using Uicov::Runs::Run;
using Uicov::Store::Combiner;
using Uicov::Store::DataFile;
using Uicov::Store::Sql;

class TestCombiner : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    int m_files = 0;

    QString newPath() { return m_folder.filePath(QStringLiteral("%1.uicov").arg(++m_files)); }

    QString fileOf(const QVector<Run>& runs) {
        const QString path = newPath();
        DataFile file;
        bool isWritten = !file.create(path);
        for (const Run& run : runs) {
            isWritten = isWritten && !file.add(run);
        }
        return isWritten && !file.commit() ? path : QString();
    }

    QString randomFile(QRandomGenerator& random) {
        QVector<Run> runs;
        const int count = random.bounded(5);
        for (int i = 0; i < count; ++i) {
            runs.append(randomRun(random, 8));
        }
        return fileOf(runs);
    }

    QString combined(const QStringList& paths, bool takesPictures = true) {
        const QString path = newPath();
        DataFile file;
        bool isWritten = !file.create(path);
        Combiner combiner(file);
        combiner.setTakesPictures(takesPictures);
        for (const QString& input : paths) {
            isWritten = isWritten && !combiner.add(input);
        }
        return isWritten && !file.commit() ? path : QString();
    }

    static QStringList contentsOf(const QString& path) {
        DataFile file;
        if (file.open(path, Sql::Access::Read)) {
            return {QStringLiteral("cannot be opened")};
        }
        QStringList lines;
        const QStringList uuids = file.runs();
        for (const QString& uuid : uuids) {
            Run run;
            if (const auto problem = file.read(uuid, DataFile::Pictures::Load, run)) {
                lines.append(problem->text);
            }
            lines.append(printed(run));
        }
        return lines;
    }

    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private Q_SLOTS:
    void theOrderMakesNoDifference() {
        QRandomGenerator random(11);
        for (int round = 0; round < 25; ++round) {
            QStringList files;
            for (int i = 0; i < 4; ++i) {
                files.append(randomFile(random));
            }
            const QStringList forwards = contentsOf(combined(files));
            std::shuffle(files.begin(), files.end(), random);
            QCOMPARE(contentsOf(combined(files)), forwards);
        }
    }

    void theGroupingMakesNoDifference() {
        QRandomGenerator random(12);
        for (int round = 0; round < 25; ++round) {
            const QString a = randomFile(random);
            const QString b = randomFile(random);
            const QString c = randomFile(random);
            const QStringList flat = contentsOf(combined({a, b, c}));
            QCOMPARE(contentsOf(combined({combined({a, b}), c})), flat);
            QCOMPARE(contentsOf(combined({a, combined({b, c})})), flat);
        }
    }

    void theSameTwiceIsTheSameOnce() {
        QRandomGenerator random(13);
        for (int round = 0; round < 25; ++round) {
            const QString a = randomFile(random);
            const QString b = randomFile(random);
            QCOMPARE(contentsOf(combined({a, a})), contentsOf(a));
            const QString both = combined({a, b});
            QCOMPARE(contentsOf(combined({both, b, a, both})), contentsOf(both));
        }
    }

    void theOrderMakesNoDifferenceToAFormWithoutPictures() {
        QRandomGenerator random(17);
        int filesWithPictures = 0;
        for (int round = 0; round < 25; ++round) {
            const QString whole = randomFile(random);
            const QString bare = combined({whole}, false);
            filesWithPictures += contentsOf(bare) == contentsOf(whole) ? 0 : 1;
            QCOMPARE(contentsOf(combined({whole, bare})), contentsOf(combined({bare, whole})));
            QCOMPARE(contentsOf(combined({whole, bare}, false)), contentsOf(bare));
        }
        QVERIFY(filesWithPictures > 0);
    }

    void nothingAddsNothing() {
        QRandomGenerator random(14);
        const QString a = randomFile(random);
        QCOMPARE(contentsOf(combined({a, fileOf({})})), contentsOf(a));
    }

    void aRecordingAndTheDataFileMadeOfItAreOneRun() {
        RecordingBuilder recording;
        TestLib::fillSampleRecording(recording);
        const QString path = m_folder.filePath(QStringLiteral("sample.uirec"));
        QVERIFY(recording.write(path));
        const QString file = combined({path});
        QCOMPARE(contentsOf(combined({path, file, path})), contentsOf(file));
        DataFile read;
        QVERIFY(!read.open(file, Sql::Access::Read));
        QCOMPARE(read.runs().size(), 1);
    }

    void ofADamagedInputWhatCanBeReadIsUsed_data() {
        QTest::addColumn<QString>("statement");
        QTest::newRow("cannot be read") << "DELETE FROM context WHERE run = 3";
        QTest::newRow("a text was changed")
            << "UPDATE element SET id = id || 'x' WHERE run = 3 AND number = 0";
        QTest::newRow("a count was changed")
            << "INSERT INTO hit SELECT 3, 0, id, 0, 7, NULL, NULL FROM text LIMIT 1";
        QTest::newRow("the run was renamed") << "UPDATE run SET application = 'x' WHERE id = 3";
    }

    void ofADamagedInputWhatCanBeReadIsUsed() {
        QFETCH(QString, statement);
        QRandomGenerator random(15);
        QVector<Run> runs;
        for (int i = 0; i < 3; ++i) {
            Run run = randomRun(random);
            run.uuid = TestLib::uuid(i);
            run.extension = QStringLiteral("libqtuicontrols");
            runs.append(run);
        }
        const QString damaged = fileOf(runs);
        {
            Sql sql;
            QVERIFY(sql.open(damaged, Sql::Access::Write));
            QVERIFY2(sql.execute(statement), qPrintable(sql.error()));
        }
        const QByteArray before = bytesOf(damaged);
        const QString sound = fileOf(runs.mid(0, 2));
        const QString target = newPath();
        DataFile file;
        QVERIFY(!file.create(target));
        Combiner combiner(file);
        QVERIFY(!combiner.add(damaged));
        QCOMPARE(combiner.newRuns(), 2);
        QCOMPARE(combiner.warnings().size(), 1);
        QCOMPARE(combiner.warnings().first().message, Message::DataFileDamaged);
        const QString text = combiner.warnings().first().text;
        QVERIFY2(text.startsWith(damaged) &&
                     text.endsWith(QStringLiteral(" (2 of the 3 runs found in it are used; left "
                                                  "out: %1)")
                                       .arg(TestLib::uuid(2).left(8))),
                 qPrintable(text));
        QVERIFY(!file.commit());
        QCOMPARE(contentsOf(target), contentsOf(sound));
        QCOMPARE(bytesOf(damaged), before);
    }

    void anInputOfWhichNothingCanBeReadIsAProblem() {
        QRandomGenerator random(16);
        const QString damaged = fileOf({randomRun(random)});
        {
            Sql sql;
            QVERIFY(sql.open(damaged, Sql::Access::Write));
            QVERIFY(sql.execute(QStringLiteral("DELETE FROM context")));
        }
        DataFile file;
        QVERIFY(!file.create(newPath()));
        Combiner combiner(file);
        const auto problem = combiner.add(damaged);
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::DataFileDamaged);
        QVERIFY(problem->text.startsWith(damaged));
        QVERIFY(!combiner.failure());
        QCOMPARE(combiner.newRuns(), 0);
    }

    /** Runs that can still be read are used wherever the cut is; none is half used. */
    void aFileThatWasCutGivesWhatIsThere() {
        QRandomGenerator random(17);
        QVector<Run> runs;
        for (int i = 0; i < 6; ++i) {
            Run run = randomRun(random, 60);
            run.uuid = TestLib::uuid(i);
            run.extension = QStringLiteral("libqtuicontrols");
            runs.append(run);
        }
        const QByteArray whole = bytesOf(fileOf(runs));
        int mostSaved = 0;
        for (int tenths = 1; tenths < 10; ++tenths) {
            const QString cut = newPath();
            QFile file(cut);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(whole.left(whole.size() / 10 * tenths));
            file.close();
            DataFile target;
            const QString path = newPath();
            QVERIFY(!target.create(path));
            Combiner combiner(target);
            const auto problem = combiner.add(cut);
            QVERIFY(problem || combiner.warnings().size() == 1);
            QCOMPARE(combiner.newRuns() == 0, problem.has_value());
            QVERIFY(!combiner.failure() && !target.commit());
            const QStringList saved = target.runs();
            for (const QString& uuid : saved) {
                Run run;
                QByteArray digest;
                QVERIFY(!target.read(uuid, DataFile::Pictures::Leave, run, &digest));
                QVERIFY(Uicov::Store::RunRank::isAsWritten(run, digest));
            }
            mostSaved = qMax(mostSaved, saved.size());
        }
        QVERIFY(mostSaved > 0);
    }

    /** In a page that no run needs, so that reading the runs does not find it. */
    void damagedPagesOfAnInputAreTold() {
        QRandomGenerator random(18);
        Run run = randomRun(random);
        run.extension = QStringLiteral("libqtuicontrols");
        const QString damaged = fileOf({run});
        {
            Sql sql;
            QVERIFY(sql.open(damaged, Sql::Access::Write));
            // An index that does not know a row of its table.
            QVERIFY2(sql.execute(QStringLiteral(
                         "PRAGMA writable_schema = ON;\n"
                         "UPDATE sqlite_master SET rootpage = (SELECT rootpage FROM sqlite_master "
                         "WHERE name = 'sqlite_autoindex_picture_1') "
                         "WHERE name = 'sqlite_autoindex_text_1'")),
                     qPrintable(sql.error()));
        }
        DataFile file;
        QVERIFY(!file.create(newPath()));
        Combiner combiner(file);
        QVERIFY(!combiner.add(damaged));
        QCOMPARE(combiner.newRuns(), 1);
        QCOMPARE(combiner.warnings().size(), 1);
        QCOMPARE(combiner.warnings().first().message, Message::DataFileDamaged);
    }

    void runsAreCountedAsNewOrKnown() {
        QRandomGenerator random(16);
        Run run = randomRun(random);
        const QString a = fileOf({run});
        run.messages += 5;
        const QString better = fileOf({run});
        DataFile file;
        QVERIFY(!file.create(newPath()));
        Combiner combiner(file);
        QVERIFY(!combiner.add(a));
        QVERIFY(!combiner.add(a));
        QVERIFY(!combiner.add(better));
        QCOMPARE(combiner.newRuns(), 1);
        QCOMPARE(combiner.knownRuns(), 2);
    }

    void whatIsWrongWithAUsableRecordingIsToldEachTime() {
        RecordingBuilder recording;
        TestLib::fillSampleRecording(recording, false);
        const QString path = m_folder.filePath(QStringLiteral("killed.uirec"));
        QVERIFY(recording.write(path));
        DataFile file;
        QVERIFY(!file.create(newPath()));
        Combiner combiner(file);
        QVERIFY(!combiner.add(path));
        QCOMPARE(combiner.warnings().size(), 1);
        QCOMPARE(combiner.warnings().first().message, Message::EndedAbnormally);
        QVERIFY(!combiner.add(fileOf({})));
        QVERIFY(combiner.warnings().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestCombiner)
#include "tst_combiner.moc"
