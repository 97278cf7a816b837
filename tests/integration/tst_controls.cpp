// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "controlsrun.h"
#include "testlib/testcase.h"

#include <QTest>

/** What a user of the report relies on, shown on whole programs: a command is one control however
 * it is reached, and a page that is made anew at each visit has its controls once. */
class TestControls : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aCommandIsUsedOnceInWhateverWayItIsReached_data();
    void aCommandIsUsedOnceInWhateverWayItIsReached();
    void allWaysOfACommandAreOneControl();
    void aPageThatIsVisitedFiveTimesHasItsControlsOnce();
};

void TestControls::aCommandIsUsedOnceInWhateverWayItIsReached_data() {
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("menu");
    const QString unseen = QStringLiteral("Menu \"File\"");
    const QString seen = QStringLiteral("Menu \"File\" seen=1");
    QTest::newRow("key, the menu was never open")
        << QStringLiteral("byKeyBeforeTheMenuWasOpen") << QStringLiteral("shortcut") << unseen;
    QTest::newRow("key, the menu was open before")
        << QStringLiteral("byKeyAfterTheMenuWasOpen") << QStringLiteral("shortcut") << seen;
    QTest::newRow("tool bar") << QStringLiteral("byToolBar") << QStringLiteral("toolBar") << unseen;
    QTest::newRow("menu") << QStringLiteral("byMenu") << QStringLiteral("menu") << seen;
    QTest::newRow("mnemonic") << QStringLiteral("byMnemonic") << QStringLiteral("menu") << seen;
}

void TestControls::aCommandIsUsedOnceInWhateverWayItIsReached() {
    QFETCH(QString, function);
    QFETCH(QString, way);
    QFETCH(QString, menu);
    const ControlsRun run(QStringLiteral(SAVING_PROGRAM), {QStringLiteral("-silent"), function});
    QVERIFY2(run.problem().isEmpty(), qPrintable(run.problem()));
    const QString save = QStringLiteral("Command \"Save\" triggered=1 by ") + way;
    QCOMPARE(run.usedControls(), QStringList(save));
    QStringList commands = run.all(QStringLiteral("Command"));
    commands.sort();
    QCOMPARE(commands, QStringList({QStringLiteral("Command \"Close\""), save}));
    QCOMPARE(run.all(QStringLiteral("Menu")), QStringList(menu));
}

void TestControls::allWaysOfACommandAreOneControl() {
    const ControlsRun run(QStringLiteral(SAVING_PROGRAM), {QStringLiteral("-silent")});
    QVERIFY2(run.problem().isEmpty(), qPrintable(run.problem()));
    QCOMPARE(run.usedControls(),
             QStringList(QStringLiteral("Command \"Save\" triggered=5 by menu toolBar shortcut")));
}

void TestControls::aPageThatIsVisitedFiveTimesHasItsControlsOnce() {
    const ControlsRun run(QStringLiteral(VISITED_PAGES), {QStringLiteral("-silent")});
    QVERIFY2(run.problem().isEmpty(), qPrintable(run.problem()));
    QCOMPARE(run.all(QStringLiteral("CheckBox")),
             QStringList({QStringLiteral("CheckBox \"Red\""),
                          QStringLiteral("CheckBox \"Green\" checked=5"),
                          QStringLiteral("CheckBox \"Blue\"")}));
    QVERIFY(run.all(QStringLiteral("Page")).contains(QStringLiteral("Page \"Boxes\" seen=5")));
}

QTEST_GUILESS_MAIN(TestControls)

#include "tst_controls.moc"
