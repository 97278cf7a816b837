// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/comparison.h"
#include "coverage/gatekeeper.h"
#include "dump/runprinter.h"
#include "report/badge.h"
#include "report/contexttable.h"
#include "report/diffreport.h"
#include "report/explanation.h"
#include "report/healthtable.h"
#include "report/jsonreport.h"
#include "report/junitreport.h"
#include "report/markdownreport.h"
#include "report/textreport.h"
#include "report/timelinereport.h"
#include "testlib/golden.h"
#include "testlib/runmaker.h"
#include "testlib/testcase.h"

#include <QJsonDocument>
#include <QTest>
#include <QXmlStreamReader>

using Uicov::Coverage::Configuration;
using Uicov::Coverage::CoverageResult;
using Uicov::Coverage::IgnoreRule;
using Uicov::Coverage::Pattern;

class TestReporters : public TestLib::TestCase {
    Q_OBJECT

    Configuration m_configuration;
    std::unique_ptr<CoverageResult> m_coverage;
    Uicov::Runs::Run m_run;

    /** @param input "panel", "hostile" or "controls" */
    void read(const QString& input) {
        m_coverage = std::make_unique<CoverageResult>(m_configuration);
        m_run = input == QLatin1String("hostile")    ? TestLib::hostileRun()
                : input == QLatin1String("controls") ? TestLib::controlsRun(1)
                                                     : TestLib::panelRun(1);
        m_coverage->add(m_run.isOfControls() ? timedControlsRun() : m_run);
        if (input == QLatin1String("panel")) {
            TestLib::RunMaker other(2, QStringLiteral("tool"));
            other.addButton(other.addWindow(QStringLiteral("Tool")), QStringLiteral("Go"));
            m_coverage->add(other.run);
        }
        m_coverage->finish();
    }

    /** controlsRun() with a time for each use. */
    static Uicov::Runs::Run timedControlsRun() {
        constexpr int step = 250; // milliseconds
        Uicov::Runs::Run run = TestLib::controlsRun(1);
        qint64 time = 0;
        for (auto& element : run.elements) {
            for (auto& hit : element.hits) {
                hit.first = time += step;
                hit.last = hit.first + hit.count - 1;
            }
        }
        return run;
    }

    /** What controlsRun() has, and besides: a dialog, a control that is removed, uses that are lost
     * or flapping, and a caption that is changed. */
    static Uicov::Runs::Run controlsBefore() {
        TestLib::RunMaker maker(3);
        maker.run = TestLib::controlsRun(3);
        const auto find = [&maker](const char* text) {
            int number = 0;
            while (maker.element(number).text != QLatin1String(text)) {
                ++number;
            }
            return number;
        };
        const auto add = [&maker](int view, const char* text) {
            const int control =
                maker.add(view, "Button", "QPushButton", QLatin1String(text), "clicked");
            maker.element(control).wasSeen = true;
            return control;
        };
        maker.hit(find("Pump"), "checked", 1, QStringLiteral("test_stop"));
        maker.element(find("Save")).text = QStringLiteral("Save it");
        add(find("Panel"), "Old");
        const int dialog = maker.add(-1, "Dialog", "QDialog", QStringLiteral("Settings"), "seen");
        maker.element(dialog).isWindowNode = true;
        maker.hit(dialog, "seen");
        maker.hit(add(dialog, "Apply"), "clicked");
        maker.hit(add(dialog, "Reset"), "clicked");
        add(dialog, "Help");
        return maker.run;
    }

    QVector<Uicov::Coverage::GateResult> gates() const {
        return Uicov::Coverage::judgeGates(*m_coverage, m_configuration.gates, 1);
    }

    /** What each reporter makes of the runs. */
    QByteArray made(const QString& reporter) const {
        if (reporter == QLatin1String("text.txt")) {
            Uicov::Report::TextReport report(m_coverage->tree());
            report.setListsMissed(true);
            report.setListsContexts(true);
            report.setPrecision(1);
            report.setOrder(QStringLiteral("missed"));
            return report.toString().toUtf8();
        }
        if (reporter == QLatin1String("markdown.md")) {
            Uicov::Report::MarkdownReport report(*m_coverage);
            report.setListsMissed(true);
            report.setGates(gates());
            report.setNotes({QStringLiteral("A <note>.")});
            return report.toString().toUtf8();
        }
        if (reporter == QLatin1String("groups.txt")) {
            Uicov::Report::TextReport report(m_coverage->tree());
            report.setListsGroups(true);
            return report.toString().toUtf8();
        }
        if (reporter == QLatin1String("health.txt")) {
            return Uicov::Report::healthTable(m_coverage->tree()).toUtf8();
        }
        if (reporter == QLatin1String("dump.txt")) {
            return (Uicov::Dump::runLines(m_run).join(QLatin1Char('\n')) + QLatin1Char('\n'))
                .toUtf8();
        }
        if (reporter == QLatin1String("contexts.txt")) {
            return Uicov::Report::contextTable(m_coverage->tree()).toUtf8();
        }
        if (reporter == QLatin1String("timeline.txt")) {
            return Uicov::Report::TimelineReport(*m_coverage).toText().toUtf8();
        }
        if (reporter == QLatin1String("timeline.md")) {
            return Uicov::Report::TimelineReport(*m_coverage).toMarkdown().toUtf8();
        }
        if (reporter == QLatin1String("report.json")) {
            return Uicov::Report::JsonReport(*m_coverage, gates()).toBytes();
        }
        if (reporter == QLatin1String("junit.xml")) {
            return Uicov::Report::JUnitReport(*m_coverage, gates()).toBytes();
        }
        if (reporter == QLatin1String("badge.svg")) {
            const QString title = m_coverage->runs().front().application;
            return Uicov::Report::badgeSvg(title, m_coverage->tree().totals(), 1);
        }
        if (reporter == QLatin1String("explanation.txt")) {
            Uicov::Report::Explanation explanation(*m_coverage);
            explanation.choose(QStringLiteral("*"));
            if (m_coverage->tree().isOfControls()) {
                explanation.look(TestLib::controlsRun(1));
            } else {
                explanation.look(TestLib::panelRun(1));
                explanation.look(TestLib::hostileRun());
            }
            return explanation.toString().toUtf8();
        }
        const bool isOfControls = m_coverage->tree().isOfControls();
        CoverageResult base(m_configuration);
        base.add(isOfControls ? controlsBefore() : TestLib::panelRun(3));
        base.finish();
        CoverageResult earlier(m_configuration);
        earlier.add(isOfControls ? TestLib::controlsRun(4) : TestLib::panelRun(4));
        earlier.finish();
        const Uicov::Coverage::Comparison comparison(base, *m_coverage, {&earlier});
        Uicov::Report::DiffReport report(comparison);
        if (isOfControls) {
            report.setBase(QStringLiteral("1a2b3c4d5e, 3 commits and 2 days older"));
            report.setLink(QStringLiteral("https://example.org/gui coverage.html?<1>"));
        }
        if (reporter == QLatin1String("diff.txt")) {
            return report.toText().toUtf8();
        }
        return reporter == QLatin1String("diff.md") ? report.toMarkdown().toUtf8()
                                                    : report.toJson();
    }

    static QStringList reporters() {
        return {QStringLiteral("groups.txt"),  QStringLiteral("health.txt"),
                QStringLiteral("dump.txt"),    QStringLiteral("text.txt"),
                QStringLiteral("markdown.md"), QStringLiteral("contexts.txt"),
                QStringLiteral("report.json"), QStringLiteral("junit.xml"),
                QStringLiteral("badge.svg"),   QStringLiteral("explanation.txt"),
                QStringLiteral("diff.txt"),    QStringLiteral("diff.md"),
                QStringLiteral("diff.json"),   QStringLiteral("timeline.txt"),
                QStringLiteral("timeline.md")};
    }

    static void addRows() {
        QTest::addColumn<QString>("reporter");
        QTest::addColumn<QString>("input");
        for (const QString& reporter : reporters()) {
            for (const char* input : {"panel", "hostile", "controls"}) {
                QTest::addRow("%s %s", input, qPrintable(reporter)) << reporter << input;
            }
        }
    }

private Q_SLOTS:
    void initTestCase() {
        IgnoreRule rule;
        rule.text = Pattern(QStringLiteral("Stop"));
        rule.why = QStringLiteral("an emergency cannot be tested");
        rule.line = 3;
        m_configuration.path = QStringLiteral("uicov.toml");
        m_configuration.ignoreRules.append(rule);
        m_configuration.criteria.insert(QStringLiteral("CheckBox"), {QStringLiteral("checked")});
        m_configuration.gates.failUnder = 50;
        m_configuration.gates.failUnderWindows = {
            qMakePair(Pattern(QStringLiteral("Panel")), 90.0)};
        m_configuration.gates.requiredWindows = {Pattern(QStringLiteral("Settings*"))};
    }

    void outputsAreAsTheyWere_data() { addRows(); }

    void outputsAreAsTheyWere() {
        QFETCH(QString, reporter);
        QFETCH(QString, input);
        read(input);
        const QString name = input + QLatin1Char('-') + reporter;
        QStringList lines = QString::fromUtf8(made(reporter)).split(QLatin1Char('\n'));
        QVERIFY(lines.last().isEmpty()); // ends with a line feed
        lines.removeLast();
        const QString difference =
            TestLib::compareWithGolden(QStringLiteral(UICOV_GOLD_DIR "/reports/") + name, lines,
                                       QStringLiteral(UICOV_GOLD_ACTUAL_DIR "/reports"));
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    void equalRunsGiveEqualBytes_data() { addRows(); }

    void equalRunsGiveEqualBytes() {
        QFETCH(QString, reporter);
        QFETCH(QString, input);
        read(input);
        const QByteArray first = made(reporter);
        QVERIFY(!first.isEmpty());
        read(input);
        QCOMPARE(made(reporter), first);
    }

    void nothingThatAnApplicationSaysIsACommand_data() { addRows(); }

    void nothingThatAnApplicationSaysIsACommand() {
        QFETCH(QString, reporter);
        read(QStringLiteral("hostile"));
        const QString text = QString::fromUtf8(made(reporter));
        if (reporter.endsWith(QLatin1String(".json"))) {
            QJsonParseError error{};
            QJsonDocument::fromJson(text.toUtf8(), &error);
            QCOMPARE(error.error, QJsonParseError::NoError);
            QVERIFY(!text.contains(QChar(0x1b)) && !text.contains(QChar(0)));
            return;
        }
        for (const QChar character : {QChar(0x1b), QChar(0), QChar(0x202e)}) {
            QVERIFY(!text.contains(character));
        }
        if (reporter.endsWith(QLatin1String(".xml")) || reporter.endsWith(QLatin1String(".svg"))) {
            QXmlStreamReader xml(text);
            while (!xml.atEnd()) {
                QVERIFY(xml.readNext() != QXmlStreamReader::Invalid);
                QVERIFY(xml.name() != QLatin1String("script"));
            }
            QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        } else if (reporter.endsWith(QLatin1String(".md"))) {
            QString rest = text;
            for (const char* ours : {"<details><summary>Each change</summary>", "</details>"}) {
                rest.remove(QLatin1String(ours));
            }
            QVERIFY(!rest.contains(QLatin1Char('<')));
        }
    }
};

QTEST_GUILESS_MAIN(TestReporters)
#include "tst_reporters.moc"
