// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandtest.h"
#include "testlib/runmaker.h"

#include <QDir>
#include <QFile>
#include <QTest>

class TestDiffCommand : public TestLib::CommandTest {
    Q_OBJECT

public:
    TestDiffCommand()
        : CommandTest(QStringLiteral(UICOV_PROGRAM)) {}

    /** Makes a data file with a run of a commit; the panel's Start button was used or not. */
    void putCommit(const char* name, int number, const QString& commit, const QString& parent,
                   bool isUsed = true, bool isComplete = true) {
        TestLib::RunMaker maker(number);
        const int button =
            maker.addButton(maker.addWindow(QStringLiteral("Panel")), QStringLiteral("Start"));
        if (isUsed) {
            maker.hit(button, "clicked");
        }
        maker.run.labels.insert(QStringLiteral("vcs.commit"), commit);
        if (!parent.isEmpty()) {
            maker.run.labels.insert(QStringLiteral("vcs.parents"), parent + QStringLiteral(" ff"));
        }
        maker.run.isComplete = isComplete;
        maker.run.started = QStringLiteral("2024-01-1%1T00:00:00Z").arg(number);
        put(name, maker.run);
    }

    static QString hash(char digit) { return QString(40, QLatin1Char(digit)); }

private Q_SLOTS:
    void nothingDiffersFromItself() {
        QCOMPARE(run("diff .uicov .uicov --fail-on lost,new-missed,removed"), 0);
        QVERIFY(says("Nothing differs."));
        QVERIFY(says("Elements used: 7 of 9 (78%) before, 7 of 9 (78%) now"));
    }

    void whatIsLostEndsWith2WhereThatIsAsked() {
        TestLib::RunMaker other(2);
        const int window = other.addWindow(QStringLiteral("Panel"));
        other.addButton(window, QStringLiteral("Start"));
        const int dialog = other.addWindow(QStringLiteral("About"), "QDialog", "Dialog");
        other.hit(other.addButton(dialog, QStringLiteral("Close")), "clicked");
        put("new.uicov", other.run);
        QCOMPARE(run("diff .uicov new.uicov"), 0);
        QVERIFY(
            says("Lost: used before, not used now (1)\n  - Window \"Panel\" > Button \"Start\""));
        QVERIFY2(says("Removed: not there any more (5)"), qPrintable(m_runner->output()));
        QCOMPARE(run("diff .uicov new.uicov --fail-on lost"), 2);
        QVERIFY(says("fail-on lost is not met: 1 element is lost [gate-not-met]"));
        QCOMPARE(run("diff .uicov new.uicov --fail-on new-missed"), 0);
        QCOMPARE(run("diff --fail-on removed .uicov new.uicov"), 2);
        QCOMPARE(run("diff --fail-on moved .uicov new.uicov"), 1);
        configure("[gates]\nfail-on = [\"lost\"]\n");
        QCOMPARE(run("diff .uicov new.uicov"), 2);
    }

    void whatAWholeWindowTookAlongIsLost() {
        put("base.uicov", TestLib::controlsRun());
        TestLib::RunMaker other(2);
        other.run.extension = QStringLiteral("libqtuicontrols");
        const int dialog = other.add(-1, "Dialog", "QDialog", QStringLiteral("About"), "seen");
        other.hit(dialog, "seen");
        put("new.uicov", other.run);
        QCOMPARE(run("diff base.uicov new.uicov --fail-on removed"), 0);
        QVERIFY2(says("Controls used: 3 of 9 (33%) before, 0 of 0 (-) now\n"
                      "Views seen: 2 of 3 (67%) before, 1 of 1 (100%) now\n"),
                 qPrintable(m_runner->output()));
        QVERIFY(says("  with Window \"Panel\", which was not opened (3)\n"
                     "    - Window \"Panel\" > Button \"startButton\"\n"));
        QVERIFY(says("Lost views: seen before, not seen now (2)\n"));
        QCOMPARE(run("diff base.uicov new.uicov --fail-on lost"), 2);
        QVERIFY(says("3 controls and 2 views are lost [gate-not-met]"));
    }

    void theLinkEndsTheComment() {
        QCOMPARE(run("diff .uicov .uicov --format markdown --link https://ci/p.html"), 0);
        QVERIFY(says("\n[All views and controls](<https://ci/p.html>)\n"));
    }

    void theNearestCommitWithCompleteRunsIsTheBase() {
        QVERIFY(QDir(path("")).mkpath(QStringLiteral("nights/old")));
        putCommit("nights/old/1.uicov", 1, hash('1'), QString());
        putCommit("nights/2.uicov", 2, hash('2'), hash('1'));
        putCommit("nights/3.uicov", 3, hash('3'), hash('2'), false, false);
        putCommit("nights/other.uicov", 7, hash('7'), hash('1'), false);
        putCommit("now.uicov", 4, hash('4'), hash('3'), false);
        QCOMPARE(run("diff --base auto --fail-on lost nights now.uicov"), 2);
        QVERIFY(says("Base: 2222222222, 2 commits before and 2 days older\n"));
        QVERIFY(says("base: commit 2222222222"));
        QVERIFY(says("1 element is lost"));
        QCOMPARE(run("diff --base auto --base-limit 1 nights now.uicov"), 1);
        QVERIFY(says("no base: of the 1 commit known before 4444444444 none has complete runs in "
                     "nights (1 with partial runs or changes that were not committed); raise "
                     "--base-limit"));
        QVERIFY(says("[no-base]"));
    }

    void runsOfAChangedCheckoutAreNoBase() {
        TestLib::RunMaker maker(3);
        maker.addWindow(QStringLiteral("Panel"));
        maker.run.labels.insert(QStringLiteral("vcs.commit"), hash('3'));
        maker.run.labels.insert(QStringLiteral("vcs.changed"), QStringLiteral("yes"));
        put("3.uicov", maker.run);
        putCommit("now.uicov", 4, hash('4'), hash('3'));
        QCOMPARE(run("diff --base auto 3.uicov now.uicov"), 1);
        QVERIFY(says("[no-base]"));
    }

    void whatSomeOfTheLastCommitsUsedIsNotLost() {
        putCommit("1.uicov", 1, hash('1'), QString());
        putCommit("2.uicov", 2, hash('2'), hash('1'), false);
        putCommit("3.uicov", 3, hash('3'), hash('2'));
        putCommit("now.uicov", 4, hash('4'), hash('3'), false);
        QCOMPARE(run("combine -o nights.uicov 1.uicov 2.uicov 3.uicov"), 0);
        QCOMPARE(run("diff --base auto --fail-on lost nights.uicov now.uicov"), 0);
        QVERIFY(says("Flapping: used in some of the last runs before, and not in all (1)\n"
                     "  ~ Window \"Panel\" > Button \"Start\"\n"));
        QCOMPARE(run("diff --earlier 2.uicov --earlier 1.uicov --fail-on lost 3.uicov now.uicov"),
                 0);
        QVERIFY(says("Flapping"));
        QCOMPARE(run("diff --earlier 1.uicov --fail-on lost 3.uicov now.uicov"), 2);
        QCOMPARE(run("diff --base auto --earlier 1.uicov nights.uicov now.uicov"), 1);
        QVERIFY(says("[wrong-use]"));
    }

    void withoutACommitOrAPlaceThereIsNoBase() {
        QCOMPARE(run("diff --base auto .uicov .uicov"), 1);
        QVERIFY(says("no base: the present runs have no commit, or several"));
        putCommit("now.uicov", 4, hash('4'), hash('3'));
        QCOMPARE(run("diff --base auto nowhere now.uicov"), 1);
        QVERIFY(says("[input-missing]"));
        QCOMPARE(run("diff --base auto . now.uicov"), 1);
        QVERIFY(says("fetch more of the history"));
    }

    void otherForms() {
        QCOMPARE(run("diff .uicov .uicov --format json"), 0);
        QVERIFY(says("\"uicov-diff\""));
        QCOMPARE(run("diff .uicov .uicov --format markdown -o d.md"), 0);
        QVERIFY(QFile::exists(path("d.md")));
    }

    void withoutASecondFileItIsTheDataFileHere() {
        put("base.uicov", TestLib::panelRun(2));
        QCOMPARE(run("diff base.uicov"), 0);
        QVERIFY(says("Nothing differs."));
        QVERIFY(QFile::remove(path(".uicov")));
        QCOMPARE(run("diff base.uicov"), 1);
        QVERIFY(says("[input-missing]"));
    }

    void severalApplicationsAreNamed() {
        TestLib::RunMaker other(2, QStringLiteral("tool"));
        other.addWindow(QStringLiteral("Panel"));
        put("new.uicov", other.run);
        QCOMPARE(run("diff .uicov new.uicov"), 0);
        QVERIFY(says("    - panel: Window \"Panel\"\n"));
        QVERIFY(says("* tool: Window \"Panel\"\n"));
        QCOMPARE(run("diff .uicov new.uicov --format markdown"), 0);
        QVERIFY(says("  - panel\\: Window \"Panel\"\n"));
    }

    void oneOrTwoFilesAreNeeded() {
        QCOMPARE(run("diff"), 1);
        QVERIFY(says("[wrong-use]"));
        QCOMPARE(run("diff .uicov .uicov .uicov"), 1);
        QVERIFY(says("[wrong-use]"));
        QCOMPARE(run("diff .uicov none.uicov"), 1);
        QVERIFY(says("[input-missing]"));
    }
};

QTEST_GUILESS_MAIN(TestDiffCommand)
#include "tst_diffcommand.moc"
