// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandtest.h"
#include "testlib/runmaker.h"

#include <QFile>
#include <QTest>

class TestDiffCommand : public TestLib::CommandTest {
    Q_OBJECT

public:
    TestDiffCommand()
        : CommandTest(QStringLiteral(UICOV_PROGRAM)) {}

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
        put("new.uicov", other.run);
        QCOMPARE(run("diff .uicov new.uicov"), 0);
        QVERIFY(
            says("Lost: used before, not used now (1)\n  - Window \"Panel\" > Button \"Start\""));
        QVERIFY(says("Removed: not there any more (7)"));
        QCOMPARE(run("diff .uicov new.uicov --fail-on lost"), 2);
        QVERIFY(says("fail-on lost is not met: 1 elements are lost [gate-not-met]"));
        QCOMPARE(run("diff .uicov new.uicov --fail-on new-missed"), 0);
        QCOMPARE(run("diff --fail-on removed .uicov new.uicov"), 2);
        QCOMPARE(run("diff --fail-on moved .uicov new.uicov"), 1);
        configure("[gates]\nfail-on = [\"lost\"]\n");
        QCOMPARE(run("diff .uicov new.uicov"), 2);
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
        QVERIFY(says("x panel: Window \"Panel\"\n"));
        QVERIFY(says("* tool: Window \"Panel\"\n"));
        QCOMPARE(run("diff .uicov new.uicov --format markdown"), 0);
        QVERIFY(says("- panel\\: Window \"Panel\"\n"));
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
