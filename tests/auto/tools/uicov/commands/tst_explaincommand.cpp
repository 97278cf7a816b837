// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandtest.h"
#include "testlib/runmaker.h"

#include <QFile>
#include <QTest>

class TestExplainCommand : public TestLib::CommandTest {
    Q_OBJECT

public:
    TestExplainCommand()
        : CommandTest(QStringLiteral(UICOV_PROGRAM)) {}

private Q_SLOTS:
    void anElementIsFoundByKeyPatternOrPart() {
        for (const char* key : {"Start", "*Button*Start*"}) {
            QCOMPARE(m_runner->run({QStringLiteral("explain"), QLatin1String(key)}), 0);
            QVERIFY2(m_runner->output().startsWith(
                         QStringLiteral("Window \"Panel\" > Button \"Start\"\n")),
                     key);
            QCOMPARE(m_runner->output().count(QStringLiteral("  state  ")), 1);
        }
        QCOMPARE(m_runner->run({QStringLiteral("explain"), QStringLiteral("Window \"Panel\"")}), 0);
        // The key itself, though it is a part of others.
        QCOMPARE(m_runner->output().count(QStringLiteral("  state  ")), 1);
        QCOMPARE(run("explain Button"), 0);
        QCOMPARE(m_runner->output().count(QStringLiteral("  state  ")), 3);
    }

    void everythingThatIsKnownIsSaid() {
        configure("[[ignore]]\ntext = \"Help\"\nwhy = \"no help yet\"\n"
                  "[criteria]\nCheckBox = [\"checked\"]\n");
        QCOMPARE(run("explain Help"), 0);
        QVERIFY(says("ignored    by uicov.toml:1: text = \"Help\"; no help yet"));
        QVERIFY(says("counts twice on a menu item"));
        QCOMPARE(run("explain Pump"), 0);
        QVERIFY(
            says("state      shown: these happened: clicked, shown; never: checked; the criteria "
                 "for CheckBox ask for checked\n"));
        QVERIFY(says("event      unchecked: 0 (this version never counts it, so in no ratio)"));
        QVERIFY(says("hit        clicked x 1 in run 00000000, context \"test_pump\""));
        QVERIFY(says("structure  Window (MainWindow) > CheckBox"));
    }

    void hitsThatDoNotCountAreMarked() {
        QCOMPARE(run("explain Start --contexts test_pump"), 0);
        QVERIFY(says("state      missed: nothing happened; never: clicked, shown\n"));
        QVERIFY(says("clicked x 2 in run 00000000, context \"test_start\" (left out by "
                     "--contexts)\n"));
    }

    void whatDoesNotCountIsExplainedToo() {
        TestLib::RunMaker maker(3);
        const int window = maker.addWindow(QStringLiteral("W"));
        const int layout = maker.add(window, "", "QWidget", QStringLiteral("holder"), "");
        maker.element(layout).isTransparentNode = true;
        maker.add(layout, "", "Gauge", QString(), "");
        const int box = maker.addButton(layout, QStringLiteral("Fan"));
        maker.element(box).isSubgraphTransparent = true;
        maker.add(box, "Button", "Indicator", QStringLiteral("mark"), "clicked");
        put("w.uicov", maker.run);
        QCOMPARE(run("explain Gauge w.uicov"), 0);
        QVERIFY(says("Window \"W\" > Gauge\n"));
        QVERIFY(says("state      not counted: nothing can happen to it that the application would "
                     "tell\n"));
        QCOMPARE(run("explain h*der w.uicov"), 0);
        QVERIFY(says("no type, class QWidget, text \"holder\"\n  not counted  it is structure"));
        QVERIFY(says("\n  in           run 00000000\n"));
        QCOMPARE(run("explain Indicator w.uicov"), 0);
        QVERIFY(says("Button, class Indicator, text \"mark\"\n  not counted  it is a part of "
                     "Window \"W\" > Button \"Fan\", which counts as one thing\n"));
        QCOMPARE(run("explain Menu .uicov"), 0);
        QVERIFY(!says("not counted")); // what counts comes first
        QCOMPARE(m_runner->run({QStringLiteral("explain"), QStringLiteral("* > Menu")}), 0);
        QVERIFY(says("state      not counted: a menu"));
    }

    void anUnknownElementIsAnErrorThatNamesTheNearest() {
        QCOMPARE(run("explain Strat"), 1);
        QVERIFY(
            says("no element has a key like Strat; the nearest one is 'Window \"Panel\" > Button "
                 "\"Start\"' [no-such-element]"));
        QCOMPARE(run("explain"), 1);
        QVERIFY(says("[wrong-use]"));
    }

    void filesCanBeNamed() {
        put("other.uicov", TestLib::hostileRun());
        QCOMPARE(run("explain script other.uicov"), 0);
        QVERIFY(!m_runner->output().contains(QChar(0x1b)));
        QCOMPARE(run("explain Start other.uicov"), 1);
    }
};

QTEST_GUILESS_MAIN(TestExplainCommand)
#include "tst_explaincommand.moc"
