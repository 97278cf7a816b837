// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/recordingsetup.h"
#include "testlib/testcase.h"

#include <QFileInfo>
#include <QSettings>
#include <QTest>

#include <algorithm>

using Uicov::Launch::Installation;
using Uicov::Launch::RecordingSetup;

class TestRecordingSetup : public TestLib::TestCase {
    Q_OBJECT

    /** Null when the variable is not there, or there twice. */
    static QString variable(const std::vector<std::string>& environment, const char* name) {
        const std::string start = std::string(name) + '=';
        QStringList values;
        for (const std::string& entry : environment) {
            if (entry.compare(0, start.size(), start) == 0) {
                values.append(QString::fromStdString(entry.substr(start.size())));
            }
        }
        return values.size() == 1 ? values.first() : QString();
    }

private Q_SLOTS:
    void cleanup() {
        for (const char* name : {"QT_PLUGIN_PATH", "QT_QPA_GENERIC_PLUGINS", "VORSK_GUI_COVERAGE",
                                 "VORSK_OPTIONS_FILE"}) {
            qunsetenv(name);
        }
        TestLib::TestCase::cleanup();
    }

    void theConfigurationReadsBack_data() {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("recording");
        QTest::newRow("plain") << "/opt/uicov/lib"
                               << "/home/a/x.uirec";
        QTest::newRow("spaces and commas") << "/opt/a, b;c/lib"
                                           << "/home/a b,c/x.uirec";
        QTest::newRow("backslash and quotes") << "/opt/a\\b\"c/lib"
                                              << "/home/\\x41/'y'.uirec";
        QTest::newRow("not ASCII")
            << QString::fromUtf8("/opt/größe/lib") << QString::fromUtf8("/home/日本/😀.uirec");
        QTest::newRow("equals, percent, at") << "/opt/=%20/@lib"
                                             << "@/home/%1=2.uirec";
        QTest::newRow("edge spaces") << "/opt/ x /lib"
                                     << "/home/x.uirec ";
    }

    void theConfigurationReadsBack() {
        QFETCH(QString, folder);
        QFETCH(QString, recording);
        RecordingSetup setup(QStringLiteral("0123-4567"));
        QVERIFY(!setup.write(Installation(folder), recording));
        QSettings settings(setup.configurationFile(), QSettings::IniFormat);
        QCOMPARE(settings.allKeys().size(), 7);
        QCOMPARE(settings.value(QStringLiteral("host/extension")).toStringList(),
                 QStringList{folder + QStringLiteral("/libqtuicontrols.so")});
        QCOMPARE(settings.value(QStringLiteral("host/recording")).toStringList(),
                 QStringList{recording});
        QCOMPARE(settings.value(QStringLiteral("host/session")).toString(),
                 QStringLiteral("0123-4567"));
    }

    void theClassicExtensionIsNamedWhereItIsWanted() {
        RecordingSetup setup(QStringLiteral("0123-4567"));
        const Installation classic(QStringLiteral("/opt/lib"), Uicov::Launch::Extension::Classic);
        QVERIFY(!setup.write(classic, QStringLiteral("/r.uirec")));
        const QSettings settings(setup.configurationFile(), QSettings::IniFormat);
        QCOMPARE(settings.value(QStringLiteral("host/extension")).toString(),
                 QStringLiteral("/opt/lib/libqtuicoverage.so"));
    }

    void whatIsBlackedOutIsHandedOn_data() {
        QTest::addColumn<QStringList>("patterns");
        QTest::newRow("none") << QStringList();
        QTest::newRow("one") << QStringList{QStringLiteral("account*")};
        QTest::newRow("two, one with a comma")
            << QStringList{QStringLiteral("a, b"), QStringLiteral("*Balance[0-9]\"")};
    }

    void whatIsBlackedOutIsHandedOn() {
        QFETCH(QStringList, patterns);
        RecordingSetup setup(QStringLiteral("0123-4567"));
        setup.setRedacted(patterns);
        QVERIFY(!setup.write(Installation(QStringLiteral("/opt/lib")), QStringLiteral("/r.uirec")));
        const QSettings settings(setup.configurationFile(), QSettings::IniFormat);
        const QString key = QStringLiteral("options/redact");
        QCOMPARE(settings.contains(key), !patterns.isEmpty());
        QCOMPARE(settings.value(key).toStringList(), patterns);
    }

    void optionsFollowTheToolkit_data() {
        QTest::addColumn<int>("toolkit");
        QTest::addColumn<bool>("screenshots");
        QTest::addColumn<QString>("options");
        using Toolkit = RecordingSetup::Toolkit;
        QTest::newRow("both") << static_cast<int>(Toolkit::Both) << false << "1 1 1 0";
        QTest::newRow("widgets") << static_cast<int>(Toolkit::Widgets) << true << "1 1 0 1";
        QTest::newRow("quick") << static_cast<int>(Toolkit::Quick) << false << "1 0 1 0";
    }

    void optionsFollowTheToolkit() {
        QFETCH(int, toolkit);
        QFETCH(bool, screenshots);
        QFETCH(QString, options);
        RecordingSetup setup((QString()));
        setup.setToolkit(static_cast<RecordingSetup::Toolkit>(toolkit));
        setup.setTakesScreenshots(screenshots);
        QVERIFY(!setup.write(Installation(QStringLiteral("/x")), QStringLiteral("/y")));
        QSettings settings(setup.configurationFile(), QSettings::IniFormat);
        settings.beginGroup(QStringLiteral("options"));
        QStringList values;
        for (const char* key : {"enabled", "qtwidgets", "qtquick", "takeScreenshotsOfElements"}) {
            values.append(settings.value(QLatin1String(key)).toString());
        }
        QCOMPARE(values.join(QLatin1Char(' ')), options);
    }

    void theFolderIsPrivateAndGoesWithTheSetup() {
        QString file;
        {
            RecordingSetup setup((QString()));
            QVERIFY(!setup.write(Installation(QStringLiteral("/x")), QStringLiteral("/y")));
            file = setup.configurationFile();
            QCOMPARE(QFileInfo(QFileInfo(file).path()).permissions() &
                         (QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                          QFile::ReadOther | QFile::WriteOther | QFile::ExeOther),
                     QFile::Permissions());
            QVERIFY(QFileInfo::exists(file));
        }
        QVERIFY(!QFileInfo::exists(QFileInfo(file).path()));
    }

    void theEnvironmentIsAddedToAndNeverReplaced() {
        const Installation installation(QStringLiteral("/opt/x"));
        RecordingSetup setup((QString()));
        auto environment = setup.environment(installation, QString());
        QCOMPARE(variable(environment, "QT_PLUGIN_PATH"), QStringLiteral("/opt/x/plugins"));
        QCOMPARE(variable(environment, "QT_QPA_GENERIC_PLUGINS"), QStringLiteral("vorsk"));
        QCOMPARE(variable(environment, "VORSK_GUI_COVERAGE"), QStringLiteral("1"));
        QCOMPARE(variable(environment, "VORSK_OPTIONS_FILE"), setup.configurationFile());
        QCOMPARE(variable(environment, "PATH"), QString::fromLocal8Bit(qgetenv("PATH")));

        qputenv("QT_PLUGIN_PATH", "/a:/b");
        qputenv("QT_QPA_GENERIC_PLUGINS", "evdevtouch:/dev/x,tuio");
        environment = setup.environment(installation, QString());
        QCOMPARE(variable(environment, "QT_PLUGIN_PATH"), QStringLiteral("/a:/b:/opt/x/plugins"));
        QCOMPARE(variable(environment, "QT_QPA_GENERIC_PLUGINS"),
                 QStringLiteral("evdevtouch:/dev/x,tuio,vorsk"));
    }

    void whatIsThereAlreadyIsNotAddedAgain() {
        qputenv("QT_PLUGIN_PATH", "/opt/x/plugins:/b");
        qputenv("QT_QPA_GENERIC_PLUGINS", "vorsk");
        qputenv("VORSK_GUI_COVERAGE", "0");
        qputenv("VORSK_OPTIONS_FILE", "/outer.ini");
        RecordingSetup setup((QString()));
        const auto environment =
            setup.environment(Installation(QStringLiteral("/opt/x")), QStringLiteral("/r"));
        QCOMPARE(variable(environment, "QT_PLUGIN_PATH"), QStringLiteral("/opt/x/plugins:/b"));
        QCOMPARE(variable(environment, "QT_QPA_GENERIC_PLUGINS"), QStringLiteral("vorsk"));
        QCOMPARE(variable(environment, "VORSK_GUI_COVERAGE"), QStringLiteral("1"));
        QCOMPARE(variable(environment, "VORSK_OPTIONS_FILE"), setup.configurationFile());
    }

    void anEmptyVariableIsAsNone() {
        qputenv("QT_PLUGIN_PATH", "");
        RecordingSetup setup((QString()));
        QCOMPARE(variable(setup.environment(Installation(QStringLiteral("/opt/x")),
                                            QStringLiteral("/r")),
                          "QT_PLUGIN_PATH"),
                 QStringLiteral("/opt/x/plugins"));
    }
};

QTEST_GUILESS_MAIN(TestRecordingSetup)
#include "tst_recordingsetup.moc"
