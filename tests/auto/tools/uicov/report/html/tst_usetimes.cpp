// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coveragecollector.h"
#include "report/html/appearances.h"
#include "run/elementkinds.h"
#include "run/run.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::CoverageCollector;
using Uicov::Coverage::CoverageTree;
using Uicov::Coverage::NodeId;
using Uicov::Report::Html::Appearances;
using Uicov::Report::Html::UseTimes;
using Uicov::Runs::Hit;
using Uicov::Runs::Run;
using Uicov::Runs::RunElement;

class TestUseTimes : public TestLib::TestCase {
    Q_OBJECT

    CoverageTree m_tree;
    Appearances m_appearances;

    static Run runWith(const QVector<Hit>& hitsOfButton, const QVector<Hit>& hitsOfWindow = {}) {
        Run run;
        run.extension = Uicov::Runs::controlsExtension();
        run.contexts = QStringList{QString(), QStringLiteral("login")};
        RunElement window;
        window.type = QStringLiteral("Window");
        window.text = QStringLiteral("Panel");
        window.isWindowNode = true;
        window.events = QStringList{QStringLiteral("seen")};
        window.hits = hitsOfWindow;
        window.children = {1};
        RunElement button;
        button.type = QStringLiteral("Button");
        button.text = QStringLiteral("OK");
        button.events = QStringList{QStringLiteral("clicked")};
        button.hits = hitsOfButton;
        button.parent = 0;
        run.elements = {window, button};
        return run;
    }

    void take(const Run& run) {
        CoverageCollector(m_tree).collect(run);
        m_appearances.add(run, m_tree);
    }

    /** "run:first-last ..." */
    QString timesOf(const char* label) const {
        QStringList texts;
        for (const NodeId node : m_tree.nodesOf(m_tree.windows().first())) {
            if (m_tree.node(node).step.label == QLatin1String(label)) {
                const QVector<UseTimes::Use> uses = m_appearances.times().uses(node);
                for (const UseTimes::Use& use : uses) {
                    texts.append(
                        QStringLiteral("%1:%2-%3").arg(use.run).arg(use.first).arg(use.last));
                }
            }
        }
        return texts.join(QLatin1Char(' '));
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_tree = CoverageTree();
        m_appearances = Appearances();
    }

    void whatWasNeverUsedHasNoTimes() {
        take(runWith({}));
        QCOMPARE(timesOf("OK"), QString());
        QCOMPARE(timesOf("Panel"), QString());
    }

    void theFirstAndTheLastOfAllEventsAndContexts() {
        take(runWith({{QStringLiteral("clicked"), 0, 2, 30, 40},
                      {QStringLiteral("clicked"), 1, 1, 10, 20}}));
        QCOMPARE(timesOf("OK"), QStringLiteral("0:10-40"));
    }

    void eachRunHasItsOwn() {
        take(runWith({{QStringLiteral("clicked"), 0, 1, 5, 5}}));
        take(runWith({}));
        take(runWith({{QStringLiteral("clicked"), 0, 1, 7, 8}}));
        QCOMPARE(timesOf("OK"), QStringLiteral("0:5-5 2:7-8"));
    }

    void timesThatNobodyToldAreNone() {
        take(runWith({{QStringLiteral("clicked"), 0, 1, -1, -1}}));
        QCOMPARE(timesOf("OK"), QStringLiteral("0:-1--1"));
        take(runWith(
            {{QStringLiteral("clicked"), 0, 1, -1, -1}, {QStringLiteral("clicked"), 1, 1, 3, 4}}));
        QCOMPARE(timesOf("OK"), QStringLiteral("0:-1--1 1:3-4"));
    }

    void ofAViewItIsWhenItWasSeen() {
        take(runWith({{QStringLiteral("seen"), 0, 1, 9, 9}},
                     {{QStringLiteral("seen"), 0, 1, 3, 4}}));
        QCOMPARE(timesOf("Panel"), QStringLiteral("0:3-4"));
        QCOMPARE(timesOf("OK"), QString());
    }

    void contextsThatDoNotCountAreLeftOut() {
        m_appearances.setContexts(
            [](const QString& context) { return context == QLatin1String("login"); });
        take(runWith(
            {{QStringLiteral("clicked"), 0, 1, 1, 1}, {QStringLiteral("clicked"), 1, 1, 6, 7}}));
        QCOMPARE(timesOf("OK"), QStringLiteral("0:6-7"));
    }
};

QTEST_APPLESS_MAIN(TestUseTimes)
#include "tst_usetimes.moc"
