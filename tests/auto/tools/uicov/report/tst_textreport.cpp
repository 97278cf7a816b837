// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/displaytext.h"
#include "report/textreport.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::CoverageTree;
using Uicov::Coverage::Events;
using Uicov::Report::TextReport;
using Uicov::Runs::ElementKey;

namespace {

ElementKey::Step step(const char* kind, const QString& label = QString()) {
    return {QLatin1String(kind), label, QString(), 1};
}

const QString shown = QStringLiteral("shown");
const QString clicked = QStringLiteral("clicked");

void fill(CoverageTree& tree) {
    const auto window = tree.window(step("Window", QStringLiteral("Panel")));
    tree.count(window, Events{{shown, {1, false}}});
    const auto bar = tree.child(window, step("MenuBar"));
    tree.count(tree.child(bar, step("MenuItem", QStringLiteral("Quit"))),
               Events{{shown, {1, false}}, {clicked, {0, false}}});
    tree.count(tree.child(window, step("Button", QStringLiteral("OK"))),
               Events{{shown, {0, false}}, {clicked, {0, false}}});
    tree.count(tree.child(window, step("CheckBox", QStringLiteral("Pump"))),
               Events{{clicked, {1, false}}, {QStringLiteral("unchecked"), {0, true}}});
    tree.window(step("QTipLabel"));
}

} // namespace

class TestTextReport : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theWholeReport() {
        CoverageTree tree;
        fill(tree);
        TextReport report(tree);
        report.setListsMissed(true);
        report.setNotes({QStringLiteral("1 of 2 recordings ended abnormally.")});
        QCOMPARE(report.toString(),
                 QStringLiteral("Window          Elements  Used  Shown  Missed  Cover  Events\n"
                                "------------------------------------------------------------\n"
                                "Window \"Panel\"         4     2      1       1    50%     3/6\n"
                                "    missed    Button \"OK\"  (never: clicked, shown)\n"
                                "    shown     MenuBar > MenuItem \"Quit\"  (never: clicked)\n"
                                "------------------------------------------------------------\n"
                                "TOTAL                  4     2      1       1    50%     3/6\n"
                                "\n"
                                "Used: operated, or seen where there is nothing to operate. Shown: "
                                "only seen. Missed: neither.\n"
                                "Cover: share of the elements used. Events: kinds of use (clicked, "
                                "checked, ...) that "
                                "happened / exist.\n"
                                "\n"
                                "1 of 2 recordings ended abnormally.\n"
                                "\"unchecked\" of 1 check box is left out of Events: Qt Widgets "
                                "announces it but it "
                                "is never counted.\n"
                                "1 window is not listed: nothing in it counts.\n"));
    }

    void severalApplicationsHaveTheirSumAboveTheirWindows() {
        CoverageTree tree;
        const ElementKey::Step panel = step("Window", QStringLiteral("Panel"));
        tree.count(tree.window(panel, QStringLiteral("b")), Events{{shown, {1, false}}});
        tree.count(tree.window(panel, QStringLiteral("a")), Events{{shown, {0, false}}});
        const QStringList lines = TextReport(tree).toString().split(QLatin1Char('\n'));
        QCOMPARE(lines.mid(2, 7).join(QLatin1Char('\n')),
                 QStringLiteral("a                        1     0      0       1     0%     0/1\n"
                                "  Window \"Panel\"         1     0      0       1     0%     0/1\n"
                                "\n"
                                "b                        1     1      0       0   100%     1/1\n"
                                "  Window \"Panel\"         1     1      0       0   100%     1/1\n"
                                "--------------------------------------------------------------\n"
                                "TOTAL                    2     1      0       1    50%     1/2"));
    }

    void unopenedMenusAreListed() {
        CoverageTree tree;
        const auto window = tree.window(step("Window", QStringLiteral("Panel")));
        tree.count(window, Events{{shown, {1, false}}});
        const auto item = tree.child(window, step("MenuItem", QStringLiteral("View")));
        tree.noteMenu(tree.child(item, step("Menu")), false);
        TextReport report(tree);
        report.setListsMissed(true);
        QVERIFY(report.toString().contains(
            QStringLiteral("\n    unopened  MenuItem \"View\" > Menu\n")));
    }

    void missedElementsThatCannotSayThatTheyWereSeenAreTold() {
        CoverageTree tree;
        const auto window = tree.window(step("Window", QStringLiteral("Panel")));
        tree.count(tree.child(window, step("Button")), Events{{clicked, {0, false}}});
        tree.count(tree.child(window, step("Menu")), Events{{shown, {0, false}}});
        QVERIFY(TextReport(tree).toString().contains(
            QStringLiteral("\n1 of the missed elements may have been seen:")));
    }

    void withoutMissedOnlyTheRowsStand() {
        CoverageTree tree;
        fill(tree);
        const QString text = TextReport(tree).toString();
        QVERIFY(!text.contains(QStringLiteral("Quit")));
        QVERIFY(text.contains(QStringLiteral("Window \"Panel\"")));
    }

    void textsOfApplicationsAreData() {
        CoverageTree tree;
        const auto window = tree.window(step("Window", QStringLiteral("\x1b]0;x\x07")));
        tree.count(tree.child(window, step("Button", QStringLiteral("a\x1b[31m %1 b"))),
                   Events{{QStringLiteral("cl\x1b[0micked"), {0, false}}});
        TextReport report(tree);
        report.setListsMissed(true);
        const QString text = report.toString();
        QVERIFY(!text.contains(QLatin1Char('\x1b')));
        QVERIFY(!text.contains(QLatin1Char('\x07')));
        QVERIFY(text.contains(QStringLiteral("Window \"\\x1b]0;x\\x07\"")));
        QVERIFY(text.contains(QStringLiteral("Button \"a\\x1b[31m %1 b\"")));
        QVERIFY(text.contains(QStringLiteral("never: cl\\x1b[0micked")));
    }

    void namesLoseTheirMiddleOnlyWhereTheyAreNotCopied() {
        CoverageTree tree;
        const auto window = tree.window(step("Window", QString(300, QLatin1Char('w'))));
        tree.count(tree.child(window, step("Button", QString(300, QLatin1Char('b')))),
                   Events{{clicked, {0, false}}});
        TextReport report(tree);
        report.setListsMissed(true);
        const QStringList whole = report.toString().split(QLatin1Char('\n'));
        QVERIFY(whole.at(2).contains(QString(300, QLatin1Char('w'))));
        QVERIFY(whole.at(3).contains(QString(300, QLatin1Char('b'))));
        report.setNameColumns(40);
        const QStringList cut = report.toString().split(QLatin1Char('\n'));
        QVERIFY(cut.at(2).contains(QChar(0x2026)));
        QVERIFY(Uicov::Base::displayWidth(cut.at(2)) < 90);
        QVERIFY(cut.at(3).contains(QString(300, QLatin1Char('b'))));
    }

    void deepPathsLoseTheirMiddle() {
        CoverageTree tree;
        Uicov::Coverage::NodeId node = tree.window(step("Window", QStringLiteral("A")));
        for (int i = 0; i < 100; ++i) {
            node = tree.child(node, step("Box", QString::number(i)));
        }
        tree.count(node, Events{{clicked, {0, false}}});
        TextReport report(tree);
        report.setListsMissed(true);
        const QString line = report.toString().split(QLatin1Char('\n')).at(3);
        QVERIFY2(line.contains(QStringLiteral("Box \"0\" > ")), qPrintable(line));
        QVERIFY2(line.contains(QStringLiteral(" > ... > ")), qPrintable(line));
        QVERIFY2(line.contains(QStringLiteral(" > Box \"99\"  (")), qPrintable(line));
        QCOMPARE(line.count(QStringLiteral(" > ")), 23);
    }
};

QTEST_GUILESS_MAIN(TestTextReport)
#include "tst_textreport.moc"
