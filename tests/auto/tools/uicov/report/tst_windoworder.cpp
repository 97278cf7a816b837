// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/windoworder.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::CoverageTree;
using Uicov::Coverage::Events;

class TestWindowOrder : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void windowsStandAsAsked_data() {
        QTest::addColumn<QString>("order");
        QTest::addColumn<QString>("windows");
        QTest::newRow("nothing asked") << ""
                                       << "abcd";
        QTest::newRow("name") << "name"
                              << "abcd";
        QTest::newRow("-name") << "-name"
                               << "dcba";
        QTest::newRow("elements") << "elements"
                                  << "cabd";
        QTest::newRow("-elements") << "-elements"
                                   << "dbac";
        QTest::newRow("missed") << "missed"
                                << "bacd";
        QTest::newRow("-missed") << "-missed"
                                 << "dcab";
        QTest::newRow("cover") << "cover"
                               << "bacd";
        QTest::newRow("-cover") << "-cover"
                                << "dcab";
    }

    void windowsStandAsAsked() {
        QFETCH(QString, order);
        QFETCH(QString, windows);
        CoverageTree tree;
        const auto add = [&tree](const char* name, int used, int missed) {
            const auto window =
                tree.window({QStringLiteral("Window"), QLatin1String(name), QString(), 1});
            for (int i = 0; i < used + missed; ++i) {
                const auto child =
                    tree.child(window, {QStringLiteral("Button"), QString(), QString(), i + 1});
                tree.count(child, Events{{QStringLiteral("clicked"), {i < used ? 1 : 0, false}}});
            }
        };
        add("b", 0, 2); //  2 elements, 2 missed,   0 %
        add("a", 2, 1); //  3 elements, 1 missed,  67 %
        add("d", 1, 0); //  1 element,  0 missed, 100 %
        add("c", 4, 0); //  4 elements, 0 missed, 100 %
        add("empty", 0, 0);
        QString found;
        const auto sorted = Uicov::Report::sortedWindows(tree, order);
        for (const auto window : sorted) {
            found += tree.node(window).step.label;
        }
        QCOMPARE(found, windows);
    }
};

QTEST_GUILESS_MAIN(TestWindowOrder)
#include "tst_windoworder.moc"
