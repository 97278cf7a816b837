#include "testlib/commandrunner.h"
#include "testlib/samplerecording.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using TestLib::CommandRunner;
using TestLib::RecordingBuilder;

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

    void aPageThatCannotBeSmallEnoughIsToldAndWritten() {
        QCOMPARE(html({text("--max-size"), text("0.001"), text("whole.uirec")}), 0);
        QVERIFY(m_runner.errors().contains(text("[page-too-large]")));
        QVERIFY(QFile::exists(path("uicov.html")));
        QCOMPARE(html({text("--max-size"), text("0"), text("whole.uirec")}), 0);
        QVERIFY(!m_runner.errors().contains(text("[page-too-large]")));
    }

    void wrongUse_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("both forms")
            << QStringList{text("-o"), text("a.html"), text("--split"), text("b")};
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
