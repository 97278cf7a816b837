// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coverageresult.h"
#include "report/contexttable.h"
#include "testlib/randomrun.h"
#include "testlib/runmaker.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::Configuration;
using Uicov::Coverage::CoverageResult;
using Uicov::Coverage::CoverageTree;
using Uicov::Coverage::Pattern;

class TestContextTable : public TestLib::TestCase {
    Q_OBJECT

    using Runs = std::vector<Uicov::Runs::Run>;

    static CoverageTree::Totals totals(const Configuration& configuration, const Runs& runs,
                                       const QStringList& contexts) {
        QVector<Pattern> patterns;
        for (const QString& context : contexts) {
            patterns.append(Pattern(context));
        }
        CoverageResult coverage(configuration, patterns);
        for (const auto& run : runs) {
            coverage.add(run);
        }
        coverage.finish();
        return coverage.tree().totals();
    }

    /** The cells of each row, without the two lines at the head and the legend. */
    static QVector<QStringList> rows(const QString& table) {
        QVector<QStringList> rows;
        const QStringList lines =
            table.left(table.indexOf(QStringLiteral("\n\n"))).split(QLatin1Char('\n')).mid(2);
        for (const QString& line : lines) {
            const QStringList words = line.simplified().split(QLatin1Char(' '));
            constexpr int numbers = 4;
            rows.append(QStringList{words.mid(0, words.size() - numbers).join(QLatin1Char(' '))} +
                        words.mid(words.size() - numbers));
        }
        return rows;
    }

private Q_SLOTS:
    void aContextAddsWhatWouldBeMissingWithoutIt_data() {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 40; ++seed) {
            QTest::addRow("seed %u", seed) << seed;
        }
    }

    void aContextAddsWhatWouldBeMissingWithoutIt() {
        QFETCH(quint32, seed);
        QRandomGenerator random(seed);
        const Runs runs{TestLib::randomRun(random), TestLib::randomRun(random)};
        Configuration configuration;
        if (seed % 2 == 0) {
            configuration.criteria.insert(QStringLiteral("Button"),
                                          {QStringLiteral("clicked"), QStringLiteral("checked")});
        }
        CoverageResult coverage(configuration);
        for (const auto& run : runs) {
            coverage.add(run);
        }
        coverage.finish();
        QStringList names = coverage.tree().contexts();
        names.sort();
        const auto all = coverage.tree().totals();
        const QVector<QStringList> table = rows(Uicov::Report::contextTable(coverage.tree()));
        QCOMPARE(table.size(), names.size());
        for (int i = 0; i < names.size(); ++i) {
            QStringList others = names;
            others.removeAt(i);
            // A pattern that matches nothing, as none at all would mean everything.
            others.append(QStringLiteral("no such context"));
            const auto without = totals(configuration, runs, others);
            const auto alone = totals(configuration, runs, {names.at(i)});
            const QStringList expected{
                names.at(i).isEmpty() ? QStringLiteral("(no context)") : names.at(i),
                QString::number(alone.used), QString::number(all.used - without.used),
                QString::number(alone.coveredEvents),
                QString::number(all.coveredEvents - without.coveredEvents)};
            QCOMPARE(table.at(i), expected);
        }
    }

    void whatIsOnlyShownCountsWhereNothingElseCanHappen() {
        TestLib::RunMaker maker;
        const int dialog = maker.addWindow(QStringLiteral("D"), "QDialog", "Dialog");
        maker.element(dialog).hits.clear();
        maker.hit(dialog, "shown", 1, QStringLiteral("opens"));
        const Configuration configuration;
        CoverageResult coverage(configuration);
        coverage.add(maker.run);
        coverage.finish();
        QCOMPARE(rows(Uicov::Report::contextTable(coverage.tree())).at(1),
                 QStringList({QStringLiteral("opens"), QStringLiteral("1"), QStringLiteral("1"),
                              QStringLiteral("1"), QStringLiteral("1")}));
    }

    void namesAreDataInMarkdown() {
        const Configuration configuration;
        CoverageResult coverage(configuration);
        coverage.add(TestLib::hostileRun());
        coverage.finish();
        const QString text = Uicov::Report::contextTableMarkdown(coverage.tree());
        QVERIFY(text.contains(QStringLiteral("\n| (no context) | 1 | 1 | 2 | 2 |")));
        QVERIFY(text.contains(QStringLiteral("| &lt;script&gt;")));
        QVERIFY(!text.contains(QLatin1Char('<')) && !text.contains(QChar(0x1b)));
        // Each row has as many cells as the head, whatever stands in the name.
        const QStringList lines =
            text.section(QStringLiteral("\n\n"), 0, 0).split(QLatin1Char('\n'));
        for (QString line : lines) {
            line.replace(QStringLiteral("\\|"), QString());
            QCOMPARE(line.count(QLatin1Char('|')), 6);
        }
    }
};

QTEST_GUILESS_MAIN(TestContextTable)
#include "tst_contexttable.moc"
