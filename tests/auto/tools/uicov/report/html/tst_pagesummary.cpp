// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/pagesummary.h"
#include "run/run.h"
#include "testlib/runmaker.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::Configuration;
using Uicov::Coverage::CoverageResult;
using Uicov::Coverage::GateResult;
using Uicov::Coverage::IgnoreRule;
using Uicov::Coverage::Pattern;
using Uicov::Report::Html::PageModel;
using Uicov::Report::Html::PageSummary;
using Uicov::Report::Html::RunHistory;
using Uicov::Runs::Run;

namespace {

Run run(const char* application, const char* partialReason = nullptr) {
    Run run = TestLib::panelRun();
    run.application = QLatin1String(application);
    run.isComplete = partialReason == nullptr;
    run.partialReason = QLatin1String(partialReason);
    return run;
}

} // namespace

class TestPageSummary : public TestLib::TestCase {
    Q_OBJECT

    Configuration m_configuration;
    QVector<Pattern> m_contexts;

    /** Of those runs, under the rules that the test has set. */
    PageModel modelOf(const QVector<Run>& runs, const char* title = "",
                      int skippedFiles = 0) const {
        CoverageResult coverage(m_configuration, m_contexts);
        RunHistory history;
        for (const Run& one : runs) {
            coverage.add(one);
            history.add(one, coverage);
        }
        coverage.finish();
        history.finish(coverage);
        PageSummary summary(coverage, history);
        summary.setTitle(QLatin1String(title));
        summary.setSkippedFiles(skippedFiles);
        summary.setPrecision(2);
        summary.setGates({{QStringLiteral("--fail-under 80"), QStringLiteral("78%"), false, {}}});
        PageModel model;
        summary.fill(model);
        return model;
    }

    bool notes(const QVector<Run>& runs, const char* text) const {
        const QStringList notes = modelOf(runs).notes;
        return notes.contains(QLatin1String(text));
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_configuration = Configuration();
        m_contexts.clear();
    }

    void cleanup() { TestLib::TestCase::cleanup(); }

    void theTitleIsTheGivenOneOrTheApplications() {
        QCOMPARE(modelOf({run("a")}, "Nightly").title, QStringLiteral("Nightly"));
        QCOMPARE(modelOf({run("")}).title, QStringLiteral("GUI coverage"));
        QCOMPARE(modelOf({run("a"), run("a"), run("b")}).title, QStringLiteral("a, b"));
        QCOMPARE(modelOf({run("a"), run("b"), run("c"), run("d")}).title,
                 QStringLiteral("4 applications"));
    }

    void gatesAndPrecisionAreTakenOver() {
        const PageModel model = modelOf({run("a")});
        QCOMPARE(model.precision, 2);
        QCOMPARE(model.gates.size(), 1);
        QVERIFY(!model.gates.first().isMet);
    }

    void whatIsPartialIsToldFirst_data() {
        QTest::addColumn<int>("whole");
        QTest::addColumn<int>("killed");
        QTest::addColumn<QString>("beginning");
        QTest::newRow("none") << 1 << 0 << QString();
        QTest::newRow("the only one") << 0 << 1 << "The run is partial: it was killed. All ";
        QTest::newRow("one") << 1 << 1 << "1 of 2 runs is partial; the last of them was killed. ";
        QTest::newRow("all") << 0 << 2 << "2 of 2 runs are partial; the last of them was killed. ";
    }

    void whatIsPartialIsToldFirst() {
        QFETCH(int, whole);
        QFETCH(int, killed);
        QFETCH(QString, beginning);
        const PageModel model =
            modelOf(QVector<Run>(whole, run("a")) + QVector<Run>(killed, run("a", "was killed")));
        QCOMPARE(model.warnings.size(), beginning.isEmpty() ? 0 : 1);
        QVERIFY(model.warnings.value(0).startsWith(beginning));
    }

    void filesThatCouldNotBeReadAreTold() {
        QCOMPARE(
            modelOf({run("a")}, "", 2).warnings,
            QStringList(QStringLiteral("2 files could not be read; nothing of it is counted.")));
    }

    void rulesAreListedWithWhatTheyDid() {
        m_configuration.path = QStringLiteral("/somewhere/else/uicov.toml");
        IgnoreRule rule;
        rule.type = Pattern(QStringLiteral("CheckBox"));
        rule.why = QStringLiteral("by hand");
        rule.line = 7;
        m_configuration.ignoreRules = {rule};
        const PageModel model = modelOf({run("a")});
        QCOMPARE(model.rules.size(), 1);
        const PageModel::Rule& listed = model.rules.first();
        QCOMPARE(listed.text, QStringLiteral("type = \"CheckBox\""));
        QCOMPARE(listed.why, QStringLiteral("by hand"));
        QCOMPARE(listed.where, QStringLiteral("uicov.toml:7"));
        QCOMPARE(listed.elements, 1);
        QCOMPARE(listed.usedElements, 1);
        QVERIFY(notes({run("a")}, "Elements left out by rules: 1."));
    }

    void whatChangesTheNumbersIsNoted() {
        m_contexts = {Pattern(QStringLiteral("test_*"))};
        m_configuration.criteria.insert(QStringLiteral("CheckBox"), {QStringLiteral("checked")});
        m_configuration.labelRules.append({QRegularExpression(QStringLiteral("\\d")), QString()});
        const QStringList said = modelOf({run("a")}).notes;
        QVERIFY(said.contains(
            QStringLiteral("Only what happened in contexts like this is counted: test_*")));
        QVERIFY(said.contains(
            QStringLiteral("A CheckBox counts as used when all of this happened, as far as it can: "
                           "checked. Until then it is only shown, if anything happened.")));
        QVERIFY(said.contains(QStringLiteral("Captions are compared after 1 rule changed them.")));
    }

    void picturesLeftOutAreToldOnTop() {
        QVERIFY(modelOf({run("a")}).warnings.isEmpty());
        Run limited = run("a");
        limited.warnings.clear();
        limited.warnings.insert(Run::picturesLeftOutLine(), 3);
        const PageModel model = modelOf({limited, limited});
        QCOMPARE(model.warnings,
                 QStringList{QStringLiteral("Pictures left out because a recording reached its "
                                            "size limit: 6; the numbers do not depend on them.")});
        QVERIFY(!model.notes.join(QLatin1Char('\n')).contains(QStringLiteral("Warnings while")));
    }

    void warningsOfTheRecordingAreNumbered() {
        Run noisy = run("a");
        noisy.warnings.clear();
        noisy.warnings.insert(QStringLiteral("x"), 3);
        noisy.warnings.insert(QStringLiteral("y"), 1);
        QVERIFY(notes({noisy}, "Warnings while recording: 4 (2 different); uicov report --warnings "
                               "lists them."));
    }
};

QTEST_GUILESS_MAIN(TestPageSummary)

#include "tst_pagesummary.moc"
