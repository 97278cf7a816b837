// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coverageresult.h"
#include "coverage/elementsearch.h"
#include "testlib/runmaker.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::CoverageResult;
using Uicov::Coverage::ElementSearch;

class TestElementSearch : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void elementsAreFoundByWhatPeopleWrite_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("labels");
        const auto row = [](const char* tag, const char* text, const char* labels) {
            QTest::newRow(tag) << QString::fromLatin1(text)
                               << QString::fromLatin1(labels).split(QLatin1Char(' '),
                                                                    Qt::SkipEmptyParts);
        };
        row("key", "Window \"Panel\" > Button \"startButton\"", "startButton");
        row("name", "Window \"Panel\" > Button \"Start\"", "startButton");
        row("key of a view, and of none below it", "Window \"Panel\" > Page \"Advanced\"",
            "Advanced");
        row("beginning of one key", "Window \"Panel\" > Command \"P", "Print");
        row("beginning of one name", "Window \"Panel\" > Button \"Sta", "startButton");
        row("beginning of several", "Window \"Panel\" > Command \"", "Print Save");
        row("pattern", "*Button \"St*", "Stop startButton");
        row("part of a name", "Button \"Start\"", "startButton");
        row("caption", "Heater", "Heater");
        row("nothing like it", "Boiler", "");
    }

    void elementsAreFoundByWhatPeopleWrite() {
        QFETCH(QString, text);
        QFETCH(QStringList, labels);
        const Uicov::Coverage::Configuration configuration;
        CoverageResult coverage(configuration);
        coverage.add(TestLib::controlsRun());
        coverage.finish();
        QStringList found;
        const auto nodes = ElementSearch(coverage.tree()).find(text);
        for (const auto node : nodes) {
            found.append(coverage.tree().node(node).step.label);
        }
        QCOMPARE(found, labels);
    }
};

QTEST_GUILESS_MAIN(TestElementSearch)
#include "tst_elementsearch.moc"
