// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "doctor/installationchecks.h"
#include "launch/installation.h"
#include "testlib/cprogram.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using TestLib::buildC;
using Uicov::Doctor::Finding;
using Uicov::Launch::Installation;
using Result = Uicov::Doctor::Finding::Result;

class TestInstallationChecks : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    const QString m_library = QStringLiteral("libqtuicontrols.so");
    const QString m_starter = QStringLiteral("plugins/generic/libvorskstarter.so");

    QString path(const QString& name) const { return m_folder.filePath(name); }

    bool build(const QString& source, const QString& file, const QStringList& flags = {}) const {
        return buildC(source, path(file),
                      QStringList{QStringLiteral("-shared"), QStringLiteral("-fPIC")} + flags);
    }

    void compare(const Finding& finding, Result result, const QString& part) const {
        QVERIFY2(finding.result == result, qPrintable(finding.seen));
        QVERIFY2(finding.seen.contains(part), qPrintable(finding.seen));
        QCOMPARE(finding.advice.isEmpty(), result == Result::Ok);
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("plugins/generic")));
        QVERIFY(build(QStringLiteral("void init_extension(void) {}"), m_library));
        for (const QString& name :
             {QStringLiteral("libqtuicontrolsquick.so"), QStringLiteral("libvorskhook.so"),
              QStringLiteral("libvorskqtwrapper.so"), m_starter}) {
            QVERIFY(build(QStringLiteral("int x;"), name));
        }
    }

    void theBuiltOneIsSound() {
        const Installation built{QStringLiteral(UICOV_LIBRARY_DIR)};
        const auto findings = Uicov::Doctor::checkInstallation(built);
        QCOMPARE(findings.size(), 4);
        for (const Finding& finding : findings) {
            QVERIFY2(finding.result == Result::Ok, qPrintable(finding.seen));
        }
        const QString version = QString::fromLatin1(QT_VERSION_STR);
        QCOMPARE(Uicov::Doctor::qtVersionOf(built), version.section(QLatin1Char('.'), 0, 1));
    }

    void anExtensionIsTriedOut() {
        const Installation sound{m_folder.path()};
        compare(Uicov::Doctor::checkExtension(sound), Result::Ok, QStringLiteral("can be loaded"));
    }

    void aMissingLibraryIsNamed() {
        QVERIFY(QFile::remove(path(QStringLiteral("libvorskhook.so"))));
        compare(Uicov::Doctor::checkExtension(Installation(m_folder.path())), Result::Problem,
                QStringLiteral("libvorskhook.so is missing"));
    }

    void anExtensionWithoutItsFunction() {
        QVERIFY(build(QStringLiteral("int y;"), m_library));
        compare(Uicov::Doctor::checkExtension(Installation(m_folder.path())), Result::Problem,
                QStringLiteral("does not export init_extension"));
    }

    void anExtensionThatCannotBeLoadedSaysWhy() {
        QVERIFY(
            build(QStringLiteral("void missing(void); void init_extension(void) { missing(); }"),
                  m_library));
        compare(Uicov::Doctor::checkExtension(Installation(m_folder.path())), Result::Problem,
                QStringLiteral("undefined symbol: missing"));
    }

    void anExtensionThatEndsWhoeverLoadsIt() {
        QVERIFY(
            build(QStringLiteral("#include <stdlib.h>\nvoid init_extension(void) {}\n"
                                 "__attribute__((constructor)) static void c(void) { _Exit(7); }"),
                  m_library));
        compare(Uicov::Doctor::checkExtension(Installation(m_folder.path())), Result::Problem,
                QStringLiteral("ended the process"));
    }

    void anotherMachinesExtensionIsNotTried() {
        QFile file(path(m_library));
        QVERIFY(file.open(QIODevice::ReadWrite));
        constexpr qint64 machineOffset = 18;
        QVERIFY(file.seek(machineOffset));
        QVERIFY(file.write("\xf3\0", 2) == 2);
        file.close();
        compare(Uicov::Doctor::checkExtension(Installation(m_folder.path())), Result::Warning,
                QStringLiteral("RISC-V"));
    }

    void aStarterThatIsNoPlugin() {
        compare(Uicov::Doctor::checkStarter(Installation(m_folder.path())), Result::Problem,
                QStringLiteral("is no generic Qt plugin of the key vorsk"));
        QCOMPARE(Uicov::Doctor::qtVersionOf(Installation(m_folder.path())), QString());
    }

    void aStarterThatIsNotThere() {
        QVERIFY(QFile::remove(path(m_starter)));
        compare(Uicov::Doctor::checkStarter(Installation(m_folder.path())), Result::Problem,
                QStringLiteral("is missing"));
    }

    void anotherStarterThatComesFirst() {
        const QByteArray before = qgetenv("QT_PLUGIN_PATH");
        const Installation own{QStringLiteral(UICOV_LIBRARY_DIR)};
        qputenv("QT_PLUGIN_PATH", QFile::encodeName(own.pluginFolder()));
        const Finding same = Uicov::Doctor::checkPluginPath(own);
        qputenv("QT_PLUGIN_PATH",
                QFile::encodeName(QStringLiteral("/none:") + path(QStringLiteral("plugins"))));
        const Finding other = Uicov::Doctor::checkPluginPath(own);
        before.isNull() ? qunsetenv("QT_PLUGIN_PATH") : qputenv("QT_PLUGIN_PATH", before);
        compare(same, Result::Ok, own.pluginFolder());
        compare(other, Result::Warning, path(m_starter));
    }

    void aFolderThatAListCannotHold() {
        compare(Uicov::Doctor::checkPluginPath(Installation(QStringLiteral("/opt/a:b"))),
                Result::Problem, QStringLiteral("colon"));
    }
};

QTEST_GUILESS_MAIN(TestInstallationChecks)
#include "tst_installationchecks.moc"
