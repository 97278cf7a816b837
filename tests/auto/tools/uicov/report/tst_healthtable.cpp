// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coveragetree.h"
#include "report/healthtable.h"
#include "run/runelement.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::CoverageTree;
using Uicov::Coverage::Events;
using Uicov::Coverage::NodeId;

class TestHealthTable : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void keysThatHangOnAnOrdinalAreCountedAndNamed() {
        CoverageTree tree;
        const auto window = tree.window({QStringLiteral("Window"), QStringLiteral("Panel"), {}, 1});
        tree.noteView(window, true);
        const auto add = [&](NodeId above, const char* label, int ordinal, bool isNamed) {
            const NodeId node = tree.child(
                above, {QStringLiteral("Button"), QString::fromLatin1(label), {}, ordinal});
            tree.noteControl(node, Uicov::Runs::RunElement());
            tree.count(node, Events{{QStringLiteral("clicked"), {0, false}}});
            if (isNamed) {
                tree.noteStableName(node);
            }
            return node;
        };
        add(window, "ok", 1, true);
        add(window, "Row", 1, false);
        add(window, "Row", 2, false);
        add(window, "", 1, false);
        const NodeId page = tree.child(window, {QStringLiteral("Page"), QString(), {}, 2});
        tree.noteView(page, false);
        add(page, "inner", 1, true);
        const QString text = Uicov::Report::healthTable(tree);
        QVERIFY2(text.contains(QStringLiteral(
                     "Window \"Panel\"     7      2        3     2        4    43%\n")),
                 qPrintable(text));
        QCOMPARE(text.section(QStringLiteral("QML id:\n"), -1),
                 QStringLiteral("  Button \"Row\" in Window \"Panel\"\n"
                                "  Button \"Row\" #2 in Window \"Panel\"\n"
                                "  Page #2 in Window \"Panel\"\n"));
    }

    void soundKeysAreNotListed() {
        CoverageTree tree;
        tree.noteView(tree.window({QStringLiteral("Window"), QStringLiteral("Panel"), {}, 1}),
                      true);
        const QString text = Uicov::Report::healthTable(tree);
        QVERIFY(text.contains(QStringLiteral("100%")));
        QVERIFY(!text.contains(QStringLiteral("Give these")));
    }
};

QTEST_GUILESS_MAIN(TestHealthTable)
#include "tst_healthtable.moc"
