// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandrunner.h"
#include "testlib/cprogram.h"
#include "testlib/emulation.h"
#include "testlib/terminalrunner.h"
#include "testlib/testcase.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using TestLib::buildC;
using TestLib::CommandRunner;

class TestDoctorCommand : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    CommandRunner m_runner{QStringLiteral(UICOV_PROGRAM)};

    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    int doctor(const QStringList& arguments) {
        return m_runner.run(QStringList{QStringLiteral("doctor")} + arguments);
    }

private Q_SLOTS:
    void initTestCase() {
        m_runner.setWorkingFolder(m_folder.path());
        QVERIFY(TestLib::buildWithQt(
            path("gui"), {QStringLiteral("libQt5Core.so.5"), QStringLiteral("libQt5Gui.so.5")}));
        QVERIFY(buildC(QStringLiteral("int main(void) { return 0; }"), path("plain")));
    }

    void init() {
        TestLib::TestCase::init();
        m_runner.setVariable(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    }

    void withoutAnApplicationOnlyThisMachineIsLookedAt() {
        QCOMPARE(doctor({}), 0);
        QVERIFY(m_runner.output().startsWith(QStringLiteral("installation\n  ok       extension")));
        QVERIFY(m_runner.output().contains(QStringLiteral("\nmachine\n")));
        QVERIFY(!m_runner.output().contains(QStringLiteral("\napplication\n")));
        QVERIFY(m_runner.output().endsWith(QStringLiteral("\n0 problems, 0 warnings\n")));
        QCOMPARE(m_runner.errors(), QStringLiteral("uicov: next: uicov run -- APP\n"));
    }

    void aSoundApplication() {
        if (TestLib::isEmulated()) {
            QSKIP(TestLib::preloadedTwice);
        }
        QCOMPARE(doctor({QStringLiteral("./gui")}), 0);
        QVERIFY(m_runner.output().contains(QStringLiteral("\napplication\n  ok       file")));
        QCOMPARE(m_runner.errors(), QStringLiteral("uicov: next: uicov run -- ./gui\n"));
        QCOMPARE(doctor({QStringLiteral("--"), QStringLiteral("./gui")}), 0);
    }

    void aProblemIsExitCode1() {
        QCOMPARE(doctor({QStringLiteral("./plain")}), 1);
        QVERIFY(m_runner.output().contains(QStringLiteral("  problem  qt-gui")));
        QVERIFY(m_runner.output().contains(QStringLiteral("  do: name the program")));
        QVERIFY(m_runner.output().endsWith(QStringLiteral("\n1 problem, 0 warnings\n")));
        QCOMPARE(m_runner.errors(), QString());
    }

    void noDisplayIsAProblem() {
        for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
            m_runner.setVariable(QLatin1String(name), QString());
        }
        doctor({});
        QVERIFY(m_runner.output().contains(
            QStringLiteral("none of QT_QPA_PLATFORM, DISPLAY and WAYLAND_DISPLAY is set")));
    }

    void theOutputIsTheOneOfTheVariable() {
        m_runner.setVariable(QStringLiteral("UICOV_FILE"), path("none/x.uicov"));
        QCOMPARE(doctor({}), 1);
        m_runner.setVariable(QStringLiteral("UICOV_FILE"), QString());
        QVERIFY(m_runner.output().contains(QStringLiteral("there is no folder ") + path("none")));
    }

    void aMissingInstallationIsAProblem() {
        QCOMPARE(doctor({QStringLiteral("--libdir"), path("none")}), 1);
        QVERIFY(m_runner.output().contains(QStringLiteral("  problem  extension")));
        QVERIFY(m_runner.output().contains(QStringLiteral("  problem  starter-plugin")));
    }

    void toolsGetAnObject() {
        QCOMPARE(doctor({QStringLiteral("--json"), QStringLiteral("./plain")}), 1);
        QCOMPARE(m_runner.errors(), QString());
        QJsonParseError error{};
        const QJsonObject document =
            QJsonDocument::fromJson(m_runner.output().toUtf8(), &error).object();
        QCOMPARE(error.error, QJsonParseError::NoError);
        QCOMPARE(document.value(QStringLiteral("format")).toInt(), 1);
        QCOMPARE(document.value(QStringLiteral("problems")).toInt(), 1);
        int problems = 0;
        const QJsonArray checks = document.value(QStringLiteral("checks")).toArray();
        for (const QJsonValue& check : checks) {
            if (check.toObject().value(QStringLiteral("result")) == QLatin1String("problem")) {
                ++problems;
                QCOMPARE(check.toObject().value(QStringLiteral("check")).toString(),
                         QStringLiteral("qt-gui"));
                QCOMPARE(check.toObject().value(QStringLiteral("about")).toString(),
                         QStringLiteral("application"));
                QVERIFY(!check.toObject().value(QStringLiteral("advice")).toString().isEmpty());
            }
        }
        QCOMPARE(problems, 1);
        QVERIFY(checks.size() > 10);
    }

    void colourIsForTerminals() {
        QCOMPARE(doctor({}), 0);
        QVERIFY(!m_runner.output().contains(QChar(0x1b)));
        qputenv("TERM", "xterm");
        qunsetenv("NO_COLOR");
        TestLib::TerminalRunner terminal;
        QVERIFY(terminal.start(QStringLiteral(UICOV_PROGRAM), {QStringLiteral("doctor")}));
        QCOMPARE(terminal.finish(), 0);
        QVERIFY(terminal.output().contains("\x1b[32mok"));
    }

    void oneApplicationAtATime() {
        QCOMPARE(doctor({QStringLiteral("./gui"), QStringLiteral("./plain")}), 1);
        QVERIFY(m_runner.errors().endsWith(QStringLiteral("[wrong-use]\n")));
    }
};

QTEST_GUILESS_MAIN(TestDoctorCommand)
#include "tst_doctorcommand.moc"
