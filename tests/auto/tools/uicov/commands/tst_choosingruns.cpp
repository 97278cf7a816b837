// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafile.h"
#include "testlib/commandtest.h"
#include "testlib/runmaker.h"

#include <QFile>
#include <QTest>

/** --run and --label in every verb that reads. */
class TestChoosingRuns : public TestLib::CommandTest {
    Q_OBJECT

    static Uicov::Runs::Run labelled(int number, const QString& system, const QString& window) {
        TestLib::RunMaker maker(number);
        maker.hit(maker.addButton(maker.addWindow(window), QStringLiteral("Go")), "clicked");
        maker.run.labels.insert(QStringLiteral("os"), system);
        maker.run.labels.insert(QStringLiteral("night"), QString::number(number));
        return maker.run;
    }

public:
    TestChoosingRuns()
        : CommandTest(QStringLiteral(UICOV_PROGRAM)) {}

private Q_SLOTS:
    void init() {
        CommandTest::init();
        Uicov::Store::DataFile file;
        QVERIFY(!file.create(path("runs.uicov")));
        QVERIFY(!file.add(labelled(1, QStringLiteral("linux"), QStringLiteral("First"))));
        QVERIFY(!file.add(labelled(2, QStringLiteral("other"), QStringLiteral("Second"))));
        QVERIFY(!file.commit());
        put("third.uicov", labelled(3, QStringLiteral("linux"), QStringLiteral("Third")));
    }

    void everyVerbThatReadsChooses_data() {
        QTest::addColumn<QString>("verb");
        for (const char* verb : {"report", "json", "junit", "html -o -", "dump", "explain *",
                                 "diff .uicov", "report --format markdown"}) {
            QTest::newRow(verb) << QString::fromLatin1(verb);
        }
    }

    void everyVerbThatReadsChooses() {
        QFETCH(QString, verb);
        if (verb.startsWith(QLatin1String("diff"))) {
            // Both sides have to have such a run.
            QVERIFY(QFile::remove(path(".uicov")));
            put(".uicov", labelled(9, QStringLiteral("linux"), QStringLiteral("First")));
        }
        const QByteArray words = verb.toLatin1() + " --label os=linux runs.uicov";
        QCOMPARE(run(words.constData()), 0);
        QVERIFY(says("First") || says("Nothing differs"));
        QVERIFY(!says("Second"));
    }

    void aUuidIsMeantByItsStart() {
        const QString uuid = labelled(2, QString(), QString()).uuid;
        const QByteArray words = "report --run " + uuid.toLatin1() + " runs.uicov";
        QCOMPARE(run(words.constData()), 0);
        QVERIFY(says("Second") && !says("First"));
    }

    void labelsOfOneNameAreAlternativesAndOthersHaveToHold() {
        QCOMPARE(run("report --label os=linux --label os=other runs.uicov third.uicov"), 0);
        QVERIFY(says("First") && says("Second") && says("Third"));
        QCOMPARE(run("report --label os=linux --label night=3 runs.uicov third.uicov"), 0);
        QVERIFY(!says("First") && !says("Second") && says("Third"));
        QCOMPARE(run("report --label os runs.uicov"), 0);
        QVERIFY(says("First") && says("Second"));
    }

    void noSuchRunIsAnError() {
        for (const char* words :
             {"report --label os=none runs.uicov", "json --run ffff runs.uicov third.uicov",
              "combine --label os=none -o all.uicov runs.uicov"}) {
            QCOMPARE(run(words), 1);
            QVERIFY2(says("[no-such-run]"), words);
        }
        QVERIFY(!QFile::exists(path("all.uicov")));
    }

    void combineTakesTheChosenOnes() {
        QCOMPARE(run("combine --label os=linux -o all.uicov runs.uicov third.uicov"), 0);
        QVERIFY(says("all.uicov now holds 2 runs"));
        QCOMPARE(run("report all.uicov"), 0);
        QVERIFY(says("First") && says("Third") && !says("Second"));
    }
};

QTEST_GUILESS_MAIN(TestChoosingRuns)
#include "tst_choosingruns.moc"
