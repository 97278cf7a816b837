// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "doctor/applicationchecks.h"
#include "doctor/diagnosis.h"
#include "launch/application.h"
#include "launch/installation.h"
#include "testlib/cprogram.h"
#include "testlib/emulation.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

using TestLib::buildC;
using TestLib::writeScript;
using Uicov::Doctor::Diagnosis;
using Uicov::Doctor::Finding;
using Uicov::Doctor::Findings;
using Uicov::Launch::Application;
using Uicov::Launch::Installation;
using Uicov::Launch::QtLibraries;
using Result = Uicov::Doctor::Finding::Result;

namespace {

const QString emptyMain = QStringLiteral("int main(void) { return 0; }");

Finding findingOf(const Findings& findings, const QString& check) {
    for (const Finding& finding : findings) {
        if (finding.check == check) {
            return finding;
        }
    }
    return {Result::Problem, QString(), QStringLiteral("no such check"), QString()};
}

} // namespace

/** The doctor and what it says of applications. */
class TestDiagnosis : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    const Installation m_installation{QStringLiteral(UICOV_LIBRARY_DIR)};
    const Diagnosis m_doctor{m_installation, m_folder.filePath(QStringLiteral("x.uicov"))};

    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    Findings examine(const QString& program) const {
        Application application(program);
        return m_doctor.examineApplication(application);
    }

    bool buildWithQt(const char* program, const QStringList& libraries) const {
        return TestLib::buildWithQt(path(program), libraries);
    }

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(buildWithQt("gui",
                            {QStringLiteral("libQt5Gui.so.5"), QStringLiteral("libQt5Core.so.5")}));
        QVERIFY(buildWithQt("core", {QStringLiteral("libQt5Core.so.5")}));
        QVERIFY(buildWithQt("quick", {QStringLiteral("libQt5Quick.so.5")}));
        QVERIFY(buildC(emptyMain, path("plain")));
        QVERIFY(buildC(emptyMain, path("static"), {QStringLiteral("-static")}));
        QVERIFY(writeScript(path("script"), QStringLiteral("#!/bin/sh\n")));
    }

    void aSoundApplicationHasNoProblem() {
        if (TestLib::isEmulated()) {
            QSKIP(TestLib::preloadedTwice);
        }
        const Findings findings = examine(path("gui"));
        QStringList checks;
        for (const Finding& finding : findings) {
            QVERIFY2(finding.result == Result::Ok, qPrintable(finding.seen));
            QVERIFY(finding.advice.isEmpty());
            checks.append(finding.check);
        }
        QCOMPARE(checks.join(QLatin1Char(' ')),
                 QStringLiteral("file application-sandbox privileges architecture linking loading "
                                "qt-gui qt-version extension-loading platform-plugin"));
    }

    void whatIsWrongEndsTheList_data() {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("check");
        QTest::addColumn<QString>("part");
        QTest::newRow("missing") << path("none") << "file"
                                 << "no such program";
        QTest::newRow("folder") << m_folder.path() << "file"
                                << "is a folder";
        QTest::newRow("static") << path("static") << "linking"
                                << "statically linked";
    }

    void whatIsWrongEndsTheList() {
        QFETCH(QString, program);
        QFETCH(QString, check);
        QFETCH(QString, part);
        const Findings findings = examine(program);
        QVERIFY(findings.last().result == Result::Problem);
        QCOMPARE(findings.last().check, check);
        QVERIFY2(findings.last().seen.contains(part), qPrintable(findings.last().seen));
        QVERIFY(!findings.last().advice.isEmpty());
    }

    void withoutWindowsThereIsNothingToRecord() {
        QVERIFY(findingOf(examine(path("core")), QStringLiteral("qt-gui"))
                    .seen.contains(QStringLiteral("only Qt's Core")));
        QVERIFY(findingOf(examine(path("plain")), QStringLiteral("qt-gui"))
                    .seen.contains(QStringLiteral("does not load Qt")));
    }

    void qtQuickIsAskedForItsRenderer() {
        const Findings findings = examine(path("quick"));
        QCOMPARE(findings.last().check, QStringLiteral("quick-backend"));
        QVERIFY(findingOf(findings, QStringLiteral("qt-gui"))
                    .seen.contains(QStringLiteral("Qt Quick")));
    }

    void aScriptIsOnlyWarnedOf() {
        const Finding finding = examine(path("script")).last();
        QVERIFY(finding.result == Result::Warning);
        QVERIFY(finding.seen.contains(QStringLiteral("script")));
    }

    void anAppImageIsKnownByItsMark() {
        QVERIFY(QFile::copy(path("static"), path("image")));
        QFile file(path("image"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        constexpr qint64 markOffset = 8;
        QVERIFY(file.seek(markOffset));
        QVERIFY(file.write("AI\x02", 3) == 3);
        file.close();
        const Findings findings = examine(path("image"));
        const Finding finding = findingOf(findings, QStringLiteral("application-sandbox"));
        QVERIFY(finding.result == Result::Warning);
        QVERIFY(finding.advice.contains(QStringLiteral("--appimage-extract")));
        QVERIFY(findings.last().result == Result::Warning); // how it is linked is no problem
    }

    void boxesAreKnownByTheirPaths() {
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("flatpak/exports/bin")));
        QVERIFY(writeScript(path("flatpak/exports/bin/org.example.App"),
                            QStringLiteral("#!/bin/sh\n")));
        const Finding finding = findingOf(examine(path("flatpak/exports/bin/org.example.App")),
                                          QStringLiteral("application-sandbox"));
        QVERIFY(finding.result == Result::Problem);
        QVERIFY(finding.seen.contains(QStringLiteral("Flatpak")));
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("bin")));
        QVERIFY(writeScript(path("bin/snap"), QStringLiteral("#!/bin/sh\n")));
        QVERIFY(QFile::link(path("bin/snap"), path("app-of-a-snap")));
        QVERIFY(findingOf(examine(path("app-of-a-snap")), QStringLiteral("application-sandbox"))
                    .seen.contains(QStringLiteral("Snap")));
    }

    void moreRightsThanTheUsersAreToldOf() {
        QVERIFY(QFile::copy(path("gui"), path("privileged")));
        const QByteArray file = QFile::encodeName(path("privileged"));
        QCOMPARE(chmod(file.constData(), 04755), 0);
        const QString check = QStringLiteral("privileges");
        QVERIFY(findingOf(examine(path("privileged")), check).result == Result::Warning);
        constexpr uid_t nobody = 65534;
        if (chown(file.constData(), nobody, nobody) != 0) {
            QSKIP("only root can give a file away");
        }
        QCOMPARE(chmod(file.constData(), 04755), 0); // giving it away took the mode off
        QVERIFY(findingOf(examine(path("privileged")), check).result == Result::Problem);
    }

    void anOlderQtRefusesOurPlugin() {
        const auto qt = [](const char* version) {
            return QtLibraries({QStringLiteral("libQt5Core.so.5 => /none/libQt5Core.so.") +
                                QLatin1String(version) + QStringLiteral(" (0x0)")});
        };
        const QString builtFor = QStringLiteral("5.15");
        QVERIFY(Uicov::Doctor::checkQtVersion(qt("5"), builtFor).result == Result::Ok); // not known
        // the file's real name tells, so it has to be there
        QFile file(path("libQt5Core.so.5.9.7"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QtLibraries old(
            {QStringLiteral("libQt5Core.so.5 => ") + file.fileName() + QStringLiteral(" (0x0)")});
        const Finding finding = Uicov::Doctor::checkQtVersion(old, builtFor);
        QVERIFY(finding.result == Result::Problem);
        QVERIFY2(finding.seen.startsWith(
                     QStringLiteral("it uses Qt 5.9.7, our libraries are built for Qt 5.15")),
                 qPrintable(finding.seen));
        QVERIFY(Uicov::Doctor::checkQtVersion(old, QStringLiteral("5.9")).result == Result::Ok);
        QVERIFY(Uicov::Doctor::checkQtVersion(old, QStringLiteral("5.8")).result == Result::Ok);
    }

    void aLibraryThatTheApplicationMisses() {
        QVERIFY(buildC(QStringLiteral("int y;"), path("libgone.so"),
                       {QStringLiteral("-shared"), QStringLiteral("-fPIC")}));
        QVERIFY(buildC(emptyMain, path("needy"),
                       {QStringLiteral("-Wl,--no-as-needed"), path("libgone.so")}));
        QVERIFY(QFile::remove(path("libgone.so")));
        const Finding finding = findingOf(examine(path("needy")), QStringLiteral("loading"));
        QVERIFY(finding.result == Result::Problem);
        QVERIFY2(finding.seen.contains(QStringLiteral("libgone.so is not found")),
                 qPrintable(finding.seen));
    }

    void anExtensionThatDoesNotGoWithTheApplication() {
        const QTemporaryDir other;
        QVERIFY(buildC(QStringLiteral("int z;"), path("libgone.so"),
                       {QStringLiteral("-shared"), QStringLiteral("-fPIC")}));
        QVERIFY(buildC(QStringLiteral("void init_extension(void) {}"),
                       other.filePath(QStringLiteral("libqtuicontrols.so")),
                       {QStringLiteral("-shared"), QStringLiteral("-fPIC"),
                        QStringLiteral("-Wl,--no-as-needed"), path("libgone.so")}));
        QVERIFY(QFile::remove(path("libgone.so")));
        const Installation installation{other.path()};
        Application application(path("gui"));
        const Findings findings = Uicov::Doctor::checkApplication(application, installation);
        const Finding finding = findingOf(findings, QStringLiteral("extension-loading"));
        QVERIFY(finding.result == Result::Problem);
        QVERIFY2(finding.seen.contains(QStringLiteral("libgone.so is not found")),
                 qPrintable(finding.seen));
    }

    void causesAreNeverNone() {
        Application sound(path("gui"));
        const QStringList causes = m_doctor.likelyCauses(sound, 0);
        QVERIFY(!causes.isEmpty());
        QVERIFY2(causes.last().contains(QStringLiteral("QT_PLUGIN_PATH")),
                 qPrintable(causes.last()));
    }

    void theLikeliestCauseComesFirst() {
        if (TestLib::isEmulated()) {
            QSKIP(TestLib::preloadedTwice);
        }
        Application plain(path("plain"));
        QVERIFY(
            m_doctor.likelyCauses(plain, 0).first().contains(QStringLiteral("does not load Qt")));
        Application sound(path("gui"));
        QVERIFY(m_doctor.likelyCauses(sound, SIGSEGV)
                    .first()
                    .contains(QStringLiteral("ended by signal 11")));
        const QByteArray before = qgetenv("QT_QPA_PLATFORM");
        qputenv("QT_QPA_PLATFORM", "wayland-none");
        Application again(path("gui"));
        const QStringList causes = m_doctor.likelyCauses(again, SIGABRT);
        qputenv("QT_QPA_PLATFORM", before);
        QVERIFY2(causes.first().contains(QStringLiteral("compositor")), qPrintable(causes.first()));
        QVERIFY(causes.last().contains(QStringLiteral("ended by signal 6")));
    }
};

QTEST_GUILESS_MAIN(TestDiagnosis)
#include "tst_diagnosis.moc"
