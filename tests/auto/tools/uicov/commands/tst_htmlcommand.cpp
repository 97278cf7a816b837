// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafile.h"
#include "testlib/commandrunner.h"
#include "testlib/runmaker.h"
#include "testlib/samplerecording.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using TestLib::CommandRunner;
using TestLib::RecordingBuilder;
using Uicov::Store::DataFile;

class TestHtmlCommand : public TestLib::TestCase {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    CommandRunner m_runner{QStringLiteral(UICOV_PROGRAM)};

    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }

    QByteArray contents(const char* name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    int html(const QStringList& arguments) {
        m_runner.setWorkingFolder(m_folder->path());
        return m_runner.run(QStringList{QStringLiteral("html")} + arguments);
    }

    void write(const char* name, const char* bytes) const {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) >= 0);
    }

    static QJsonObject object(const QByteArray& json) {
        return QJsonDocument::fromJson(json).object();
    }

    /** What the page's scripts know. */
    QJsonObject data(const char* page) const {
        const QByteArray html = contents(page);
        const QByteArray begin = "id=\"data\">";
        const int from = html.indexOf(begin) + begin.size();
        return object(html.mid(from, html.indexOf("</script>", from) - from));
    }

    static QString stateOfPage(const QJsonObject& node) {
        return node.contains(text("rule"))
                   ? QStringLiteral("rule %1: ").arg(node[text("rule")].toInt()) +
                         node[text("otherwise")].toString()
                   : node[text("state")].toString();
    }

    static QStringList statesOfPage(const QJsonObject& page) {
        const QJsonArray nodes = page[text("nodes")].toArray();
        QStringList states;
        for (const QJsonValue& value : nodes) {
            QString key;
            for (QJsonObject step = value.toObject();;
                 step = nodes.at(step[text("above")].toInt()).toObject()) {
                key.prepend(step[text("step")].toString() + QLatin1Char('/'));
                if (step[text("above")].toInt() < 0) {
                    break;
                }
            }
            const QString state = stateOfPage(value.toObject());
            if (!state.isEmpty()) {
                states.append(key + state);
            }
        }
        states.sort();
        return states;
    }

    static QStringList statesOfReport(const QJsonObject& report) {
        QStringList states;
        const QJsonArray windows = report[text("windows")].toArray();
        for (const QJsonValue& window : windows) {
            const QJsonArray elements = window.toObject()[text("elements")].toArray();
            for (const QJsonValue& value : elements) {
                const QJsonObject element = value.toObject();
                const QString key = element[text("key")].toString().replace(text(" > "), text("/"));
                const QJsonValue rule = element[text("ignored_by")];
                states.append(
                    key + QLatin1Char('/') +
                    (rule.isDouble() ? QStringLiteral("rule %1: ").arg(rule.toInt()) : QString()) +
                    element[text("state")].toString());
            }
        }
        states.sort();
        return states;
    }

    static QString text(const char* literal) { return QString::fromUtf8(literal); }

private Q_SLOTS:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        RecordingBuilder whole;
        TestLib::fillSampleRecording(whole);
        QVERIFY(whole.write(path("whole.uirec")));
        RecordingBuilder killed;
        TestLib::fillSampleRecording(killed, false);
        QVERIFY(killed.write(path("killed.uirec")));
        RecordingBuilder idle;
        idle.addEnd();
        QVERIFY(idle.write(path("idle.uirec")));
    }

    void onePageByDefaultAndTheNextStep() {
        QCOMPARE(html({text("whole.uirec")}), 0);
        QCOMPARE(m_runner.output(), QString());
        QCOMPARE(m_runner.errors(), text("uicov: uicov.html shows 15 elements in 2 windows\n"
                                         "uicov: next: xdg-open uicov.html\n"));
        QVERIFY(contents("uicov.html").startsWith("<!DOCTYPE html>"));
        QVERIFY(contents("uicov.html").contains("<title>panel</title>"));
    }

    void standardOutputHasThePageAndNothingElse() {
        QCOMPARE(html({text("-o"), text("-"), text("whole.uirec")}), 0);
        QCOMPARE(m_runner.errors(), QString());
        QCOMPARE(html({text("-q"), text("whole.uirec")}), 0);
        QCOMPARE(m_runner.errors(), QString());
        QCOMPARE(html({text("-o"), text("-"), text("whole.uirec")}), 0);
        QCOMPARE(m_runner.output().toUtf8(), contents("uicov.html"));
    }

    void equalInputGivesAnEqualPageInWhateverOrder() {
        QCOMPARE(html({text("-o"), text("a.html"), text("whole.uirec"), text("killed.uirec")}), 0);
        QCOMPARE(html({text("-o"), text("b.html"), text("killed.uirec"), text("whole.uirec")}), 0);
        QCOMPARE(contents("a.html"), contents("b.html"));
    }

    void aPageOfOursIsReplacedAndNothingElse() {
        QCOMPARE(html({text("whole.uirec")}), 0);
        QCOMPARE(html({text("--title"), text("again"), text("whole.uirec")}), 0);
        QVERIFY(contents("uicov.html").contains("<title>again</title>"));
        for (const char* const foreign : {"<html>mine</html>", "short"}) {
            QFile file(path("mine.html"));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(foreign);
            file.close();
            QCOMPARE(html({text("-o"), text("mine.html"), text("whole.uirec")}), 1);
            QVERIFY(m_runner.errors().contains(text("[output-foreign]")));
            QCOMPARE(contents("mine.html"), QByteArray(foreign));
        }
        const QByteArray recording = contents("whole.uirec");
        QCOMPARE(html({text("-o"), text("whole.uirec"), text("whole.uirec")}), 1);
        QCOMPARE(contents("whole.uirec"), recording);
    }

    void aPartialRunIsToldAtTheTopAndStrictEndsWith3() {
        QCOMPARE(html({text("killed.uirec")}), 0);
        QVERIFY(contents("uicov.html").contains("The run is partial: it "));
        QCOMPARE(html({text("--strict"), text("killed.uirec")}), 3);
        QCOMPARE(html({text("--strict"), text("whole.uirec")}), 0);
        QVERIFY(!contents("uicov.html").contains("The run is partial"));
    }

    void withoutNamesTheDataFileIsRead() {
        QCOMPARE(html({}), 1);
        QVERIFY(m_runner.errors().contains(text("[input-missing]")));
        QCOMPARE(m_runner.run({text("combine"), text("-q"), text("whole.uirec")}), 0);
        QCOMPARE(html({}), 0);
        const QByteArray ofDataFile = contents("uicov.html");
        QCOMPARE(html({text("whole.uirec")}), 0);
        QCOMPARE(contents("uicov.html"), ofDataFile);
    }

    void nothingToShowIsAnErrorWithACause() {
        QCOMPARE(html({text("idle.uirec")}), 1);
        QVERIFY(m_runner.errors().contains(text("[no-elements]")));
        QVERIFY(!QFile::exists(path("uicov.html")));
    }

    void aFileThatCannotBeReadIsToldAndTheOthersAreShown() {
        QCOMPARE(html({text("none.uirec"), text("whole.uirec")}), 1);
        QVERIFY(contents("uicov.html").contains("1 file could not be read"));
    }

    void aFolder() {
        QCOMPARE(html({text("--split"), text("site"), text("whole.uirec")}), 0);
        QVERIFY(m_runner.errors().contains(text("next: xdg-open site/index.html")));
        QVERIFY(contents("site/index.html").contains("src=\"page.js\""));
        QCOMPARE(html({text("--split"), m_folder->path(), text("whole.uirec")}), 1);
        QVERIFY(m_runner.errors().contains(text("[output-foreign]")));
    }

    void bothFormsInOneCallAreThoseOfTwoCalls() {
        QCOMPARE(html({text("-o"), text("a.html"), text("--split"), text("a"), text("--max-size"),
                       text("0.11"), text("whole.uirec")}),
                 0);
        QVERIFY(m_runner.errors().contains(text("next: xdg-open a.html")));
        QVERIFY(m_runner.errors().contains(text("next: xdg-open a/index.html")));
        QCOMPARE(html({text("-o"), text("b.html"), text("--max-size"), text("0.11"),
                       text("whole.uirec")}),
                 0);
        QCOMPARE(html({text("--split"), text("b"), text("whole.uirec")}), 0);
        QCOMPARE(contents("a.html"), contents("b.html"));
        for (const char* const file : {"index.html", "data.js"}) {
            QCOMPARE(contents(QByteArray("a/").append(file).constData()),
                     contents(QByteArray("b/").append(file).constData()));
        }
    }

    void aGateThatIsNotMetEndsWith2AndThePageIsThere_data() {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("status");
        QTest::newRow("total, met") << QStringList{text("--fail-under"), text("1")} << 0;
        QTest::newRow("total") << QStringList{text("--fail-under"), text("99")} << 2;
        QTest::newRow("window") << QStringList{text("--fail-under-window"), text("Panel=99")} << 2;
        QTest::newRow("required") << QStringList{text("--require-window"), text("Nowhere*")} << 2;
        QTest::newRow("required, met")
            << QStringList{text("--require-window"), text("Panel*")} << 0;
    }

    void aGateThatIsNotMetEndsWith2AndThePageIsThere() {
        QFETCH(QStringList, options);
        QFETCH(int, status);
        QCOMPARE(html(options + QStringList{text("whole.uirec")}), status);
        QCOMPARE(m_runner.errors().contains(text("[gate-not-met]")), status == 2);
        const QByteArray met = status == 2 ? "\"met\":false" : "\"met\":true";
        QVERIFY(contents("uicov.html").contains(met));
        QVERIFY(contents("uicov.html").contains("<h2>Gates</h2>"));
    }

    void theNumbersAreThoseOfTheJsonUnderTheSameOptions_data() {
        QTest::addColumn<QStringList>("options");
        QTest::newRow("plain") << QStringList();
        QTest::newRow("without the configuration") << QStringList{text("--no-config")};
        QTest::newRow("another configuration") << QStringList{text("--config"), text("mine.toml")};
        QTest::newRow("contexts") << QStringList{text("--contexts"), text("test_*")};
        QTest::newRow("the context without a name") << QStringList{text("--contexts"), text("")};
    }

    void theNumbersAreThoseOfTheJsonUnderTheSameOptions() {
        QFETCH(QStringList, options);
        write("uicov.toml", "[[ignore]]\ntype = \"Button\"\nwhy = \"<by hand>\"\n"
                            "[criteria]\nCheckBox = [\"checked\", \"unchecked\"]\n");
        write("mine.toml", "[[ignore]]\ntype = \"MenuItem\"\n"
                           "[[labels]]\npattern = '\\w'\nreplace = \"x\"\n");
        DataFile file;
        QVERIFY(!file.create(path("tests.uicov")));
        QVERIFY(!file.add(TestLib::panelRun()));
        QVERIFY(!file.commit());
        const QStringList both{text("whole.uirec"), text("tests.uicov")};
        QCOMPARE(html(options + both), 0);
        QCOMPARE(m_runner.run(QStringList{text("json")} + options + both), 0);
        const QJsonObject report = object(m_runner.output().toUtf8());
        const QJsonObject page = data("uicov.html");
        for (const char* const number : {"elements", "used", "shown", "missed", "events"}) {
            QCOMPARE(page[text("totals")].toObject()[text(number)],
                     report[text("totals")].toObject()[text(number)]);
        }
        QCOMPARE(page[text("totals")].toObject()[text("covered")],
                 report[text("totals")].toObject()[text("covered_events")]);
        QCOMPARE(statesOfPage(page), statesOfReport(report));
        QCOMPARE(page[text("rules")].toArray().size(),
                 report[text("ignore_rules")].toArray().size());
    }

    void whatARuleLeavesOutIsListedWithTheRuleAndTheReason() {
        write("uicov.toml", "[[ignore]]\ntype = \"Button\"\nwhy = \"<by hand>\"\n");
        QCOMPARE(html({text("whole.uirec")}), 0);
        const QJsonObject page = data("uicov.html");
        const QJsonObject rule = page[text("rules")].toArray().first().toObject();
        QCOMPARE(rule[text("why")].toString(), text("<by hand>"));
        QCOMPARE(rule[text("where")].toString(), text("uicov.toml:1"));
        QVERIFY(rule[text("elements")].toInt() > 0);
        int leftOut = 0;
        const QJsonArray nodes = page[text("nodes")].toArray();
        for (const QJsonValue& node : nodes) {
            leftOut += node.toObject().contains(text("rule")) ? 1 : 0;
        }
        QCOMPARE(leftOut, rule[text("elements")].toInt());
        const QByteArray html = contents("uicov.html");
        QCOMPARE(html.count("left out by <bdi>uicov.toml:1</bdi>"), leftOut);
        QVERIFY(html.contains("because: <bdi>&lt;by hand&gt;</bdi>"));
    }

    void rulesThatDoNothingAreWarnedOf() {
        write("uicov.toml", "[[ignore]]\ntext = \"nothing like it\"\n");
        QCOMPARE(html({text("-q"), text("whole.uirec")}), 0);
        QVERIFY(m_runner.errors().contains(text("[ignore-rule-unused]")));
        QVERIFY(contents("uicov.html").contains("\"rule\":\"text = \\\"nothing like it"));
    }

    void aWrongConfigurationMakesNoPage() {
        write("uicov.toml", "[gates]\nfail-undr = 90\n");
        QCOMPARE(html({text("whole.uirec")}), 1);
        QVERIFY(m_runner.errors().contains(text("[configuration-wrong]")));
        QVERIFY(!QFile::exists(path("uicov.html")));
    }

    void percentagesHaveTheDigitsThatWereAskedFor() {
        write("uicov.toml", "[report]\nprecision = 2\n");
        QCOMPARE(html({text("whole.uirec")}), 0);
        QCOMPARE(
            m_runner.run({text("report"), text("--format"), text("total"), text("whole.uirec")}),
            0);
        const QString cover = m_runner.output().trimmed() + QLatin1Char('%');
        QVERIFY2(QRegularExpression(text("^\\d+\\.\\d\\d%$")).match(cover).hasMatch(),
                 qPrintable(cover));
        const auto shown = [this] {
            return data("uicov.html")[text("totals")].toObject()[text("cover")].toString();
        };
        QCOMPARE(shown(), cover);
        QVERIFY(contents("uicov.html").contains("<strong>" + cover.toUtf8() + "</strong>"));
        QCOMPARE(html({text("--precision"), text("0"), text("whole.uirec")}), 0);
        QVERIFY(!shown().contains(QLatin1Char('.')));
    }

    void aPageThatCannotBeSmallEnoughIsToldAndWritten() {
        QCOMPARE(html({text("--max-size"), text("0.001"), text("whole.uirec")}), 0);
        QVERIFY(m_runner.errors().contains(text("[page-too-large]")));
        QVERIFY(QFile::exists(path("uicov.html")));
        QCOMPARE(html({text("--max-size"), text("0"), text("whole.uirec")}), 0);
        QVERIFY(!m_runner.errors().contains(text("[page-too-large]")));
    }

    void wrongUse_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("one form inside the other")
            << QStringList{text("-o"), text("b/a.html"), text("--split"), text("./b")};
        QTest::newRow("gate") << QStringList{text("--fail-under"), text("101")};
        QTest::newRow("window gate") << QStringList{text("--fail-under-window"), text("Panel")};
        QTest::newRow("precision") << QStringList{text("--precision"), text("-1")};
        QTest::newRow("negative size") << QStringList{text("--max-size"), text("-1")};
        QTest::newRow("no size") << QStringList{text("--max-size"), text("much")};
    }

    void wrongUse() {
        QFETCH(QStringList, arguments);
        QCOMPARE(html(arguments + QStringList{text("whole.uirec")}), 1);
        QVERIFY(m_runner.errors().contains(text("[wrong-use]")));
    }
};

QTEST_GUILESS_MAIN(TestHtmlCommand)

#include "tst_htmlcommand.moc"
