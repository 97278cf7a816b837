#include "store/datafile.h"
#include "testlib/commandrunner.h"
#include "testlib/runmaker.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using TestLib::CommandRunner;
using Uicov::Store::DataFile;

class TestExplainCommand : public TestLib::TestCase {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CommandRunner> m_runner;

    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }

    int run(const char* words) {
        return m_runner->run(QString::fromUtf8(words).split(QLatin1Char(' ')));
    }

    bool says(const char* text) const {
        return m_runner->output().contains(QString::fromUtf8(text)) ||
               m_runner->errors().contains(QString::fromUtf8(text));
    }

    void put(const char* name, const Uicov::Store::Run& run) const {
        DataFile file;
        QVERIFY(!file.create(path(name)));
        QVERIFY(!file.add(run));
        QVERIFY(!file.commit());
    }

    void configure(const char* text) const {
        QFile file(path("uicov.toml"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) >= 0);
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_runner = std::make_unique<CommandRunner>(QStringLiteral(UICOV_PROGRAM));
        m_runner->setWorkingFolder(m_folder->path());
        m_runner->setVariable(QStringLiteral("UICOV_FILE"), QString());
        m_runner->setVariable(QStringLiteral("UICOV_CONFIG"), QString());
        put(".uicov", TestLib::panelRun());
    }

    void cleanup() { TestLib::TestCase::cleanup(); }

    void anElementIsFoundByKeyPatternOrPart() {
        for (const char* key : {"Start", "*Button*Start*"}) {
            QCOMPARE(m_runner->run({QStringLiteral("explain"), QLatin1String(key)}), 0);
            QVERIFY2(m_runner->output().startsWith(
                         QStringLiteral("Window \"Panel\" > Button \"Start\"\n")),
                     key);
            QCOMPARE(m_runner->output().count(QStringLiteral("  state  ")), 1);
        }
        QCOMPARE(m_runner->run({QStringLiteral("explain"), QStringLiteral("Window \"Panel\"")}), 0);
        // The key itself, though it is a part of others.
        QCOMPARE(m_runner->output().count(QStringLiteral("  state  ")), 1);
        QCOMPARE(run("explain Button"), 0);
        QCOMPARE(m_runner->output().count(QStringLiteral("  state  ")), 3);
    }

    void everythingThatIsKnownIsSaid() {
        configure("[[ignore]]\ntext = \"Help\"\nwhy = \"no help yet\"\n"
                  "[criteria]\nCheckBox = [\"checked\"]\n");
        QCOMPARE(run("explain Help"), 0);
        QVERIFY(says("ignored    by uicov.toml:1: text = \"Help\"; no help yet"));
        QVERIFY(says("counts twice on a menu item"));
        QCOMPARE(run("explain Pump"), 0);
        QVERIFY(says("state      shown: it was seen, but nothing that counts as use happened; the "
                     "criteria for CheckBox ask for checked"));
        QVERIFY(says("event      unchecked: 0 (this version never counts it, so in no ratio)"));
        QVERIFY(says("hit        clicked x 1 in run 00000000, context \"test_pump\""));
        QVERIFY(says("structure  Window (MainWindow) > CheckBox"));
    }

    void anUnknownElementIsAnErrorThatNamesTheNearest() {
        QCOMPARE(run("explain Strat"), 1);
        QVERIFY(
            says("no element has a key like Strat; the nearest one is Window \"Panel\" > Button "
                 "\"Start\" [no-such-element]"));
        QCOMPARE(run("explain"), 1);
        QVERIFY(says("[wrong-use]"));
    }

    void filesCanBeNamed() {
        put("other.uicov", TestLib::hostileRun());
        QCOMPARE(run("explain script other.uicov"), 0);
        QVERIFY(!m_runner->output().contains(QChar(0x1b)));
        QCOMPARE(run("explain Start other.uicov"), 1);
    }
};

QTEST_GUILESS_MAIN(TestExplainCommand)
#include "tst_explaincommand.moc"
