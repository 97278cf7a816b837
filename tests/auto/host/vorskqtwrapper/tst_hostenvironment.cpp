// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "vorskqtwrapper/hostconfiguration.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace VorskHost;

namespace {

constexpr const char* variables[] = {"VORSK_OPTIONS_FILE", "VORSK_RECORDING_DIR",
                                     "VORSK_RECORDING_MAX_BYTES", "VORSK_RECORDING_CONTEXT",
                                     "VORSK_RECORDING_SCREENSHOTS"};

const QString libraries = QStringLiteral("/some/libraries");

} // namespace

/** What is recorded when nothing but the environment says so. */
class tst_HostEnvironment : public TestLib::TestCase {
    Q_OBJECT

    QScopedPointer<QTemporaryDir> m_dir;

    static void forget() {
        for (const char* variable : variables) {
            qunsetenv(variable);
        }
    }
    void writeOptions() {
        QFile file(m_dir->filePath(QStringLiteral("host.ini")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[host]\nextension=/a/lib.so\nrecording=/a/b.uirec\n");
        qputenv("VORSK_OPTIONS_FILE", QFile::encodeName(file.fileName()));
    }

private Q_SLOTS:
    void init() {
        TestCase::init();
        forget();
        m_dir.reset(new QTemporaryDir);
    }
    void cleanup() {
        forget();
        m_dir.reset();
        TestCase::cleanup();
    }

    void nothingIsAskedFor() {
        QVERIFY(!HostConfiguration::fromEnvironment(libraries));
        qputenv("VORSK_OPTIONS_FILE", "");
        qputenv("VORSK_RECORDING_DIR", "");
        qputenv("VORSK_RECORDING_MAX_BYTES", "100000");
        QVERIFY(!HostConfiguration::fromEnvironment(libraries));
    }

    void aFolderIsEnough() {
        const QString folder = m_dir->filePath(QStringLiteral("a/b"));
        qputenv("VORSK_RECORDING_DIR", QFile::encodeName(folder));
        const auto configuration = HostConfiguration::fromEnvironment(libraries);
        QVERIFY(configuration && configuration->isValid());
        QCOMPARE(configuration->recording(), folder + QStringLiteral("/tst_hostenvironment.uirec"));
        QVERIFY(QDir(folder).exists());
        QCOMPARE(configuration->extensions(),
                 QStringList(libraries + QStringLiteral("/libqtuicoverage.so")));
        QCOMPARE(configuration->maximumSize(), qint64{0});
        QVERIFY(configuration->context().isEmpty());
        QVERIFY(configuration->currentMark().isEmpty());
        const HostConfiguration::Options expected{{"enabled", {"1"}},
                                                  {"qtwidgets", {"1"}},
                                                  {"qtquick", {"1"}},
                                                  {"takeScreenshotsOfElements", {"0"}}};
        QVERIFY(configuration->options() == expected);
    }

    void everyVariable() {
        qputenv("VORSK_RECORDING_DIR", QFile::encodeName(m_dir->path()));
        qputenv("VORSK_RECORDING_MAX_BYTES", "5000000000");
        qputenv("VORSK_RECORDING_CONTEXT", "night shift");
        qputenv("VORSK_RECORDING_SCREENSHOTS", "1");
        const auto configuration = HostConfiguration::fromEnvironment(libraries);
        QVERIFY(configuration && configuration->isValid());
        QCOMPARE(configuration->maximumSize(), qint64{5000000000});
        QCOMPARE(configuration->context(), QStringLiteral("night shift"));
        QVERIFY(configuration->options().at("takeScreenshotsOfElements") ==
                std::vector<std::string>{"1"});
    }

    void aFileComesBeforeAFolderAndIsLimitedToo() {
        writeOptions();
        qputenv("VORSK_RECORDING_DIR", "/never/made");
        qputenv("VORSK_RECORDING_MAX_BYTES", "65536");
        const auto configuration = HostConfiguration::fromEnvironment(libraries);
        QVERIFY(configuration && configuration->isValid());
        QCOMPARE(configuration->recording(), QStringLiteral("/a/b.uirec"));
        QCOMPARE(configuration->maximumSize(), qint64{65536});
    }

    void aFaultyFileIsAFault() {
        qputenv("VORSK_OPTIONS_FILE", "/not/there.ini");
        const auto configuration = HostConfiguration::fromEnvironment(libraries);
        QVERIFY(configuration && !configuration->isValid());
        QVERIFY(configuration->errorString().startsWith(QStringLiteral("options-unreadable: ")));
    }

    void theWayOfAppending() {
        qputenv("VORSK_RECORDING_DIR", QFile::encodeName(m_dir->path()));
        QVERIFY(HostConfiguration::fromEnvironment(libraries)->isShared());
        qputenv("VORSK_RECORDING_APPEND", "map");
        QVERIFY(HostConfiguration::fromEnvironment(libraries)->isShared());
        qputenv("VORSK_RECORDING_APPEND", "write");
        const auto configuration = HostConfiguration::fromEnvironment(libraries);
        QVERIFY(configuration->isValid());
        QVERIFY(!configuration->isShared());
        qputenv("VORSK_RECORDING_APPEND", "mmap");
        QCOMPARE(HostConfiguration::fromEnvironment(libraries)->errorString(),
                 QStringLiteral("options-malformed: VORSK_RECORDING_APPEND is \"mmap\"; nothing is "
                                "recorded, give map or write"));
    }

    void limitsThatAreNone_data() {
        QTest::addColumn<QByteArray>("value");
        for (const char* value : {"many", "65535", "0", "-100000", "1e9", "64M"}) {
            QTest::newRow(value) << QByteArray(value);
        }
    }

    void limitsThatAreNone() {
        QFETCH(QByteArray, value);
        qputenv("VORSK_RECORDING_DIR", QFile::encodeName(m_dir->path()));
        qputenv("VORSK_RECORDING_MAX_BYTES", value);
        const auto configuration = HostConfiguration::fromEnvironment(libraries);
        QVERIFY(configuration);
        QCOMPARE(
            configuration->errorString(),
            QStringLiteral("options-malformed: VORSK_RECORDING_MAX_BYTES is \"%1\"; nothing is "
                           "recorded, give a number of bytes, 65536 or more")
                .arg(QString::fromLatin1(value)));
    }
};

QTEST_GUILESS_MAIN(tst_HostEnvironment)
#include "tst_hostenvironment.moc"
