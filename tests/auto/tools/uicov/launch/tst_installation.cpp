// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/installation.h"
#include "testlib/cprogram.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using TestLib::buildC;
using Uicov::Base::Message;
using Uicov::Launch::Installation;

class TestInstallation : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;

    QString path(const char* name) { return m_folder.filePath(QLatin1String(name)); }

    bool buildLibrary(const char* name, const char* source) {
        return buildC(QLatin1String(source), path(name),
                      {QStringLiteral("-shared"), QStringLiteral("-fPIC")});
    }

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("plugins/generic")));
        QVERIFY(buildLibrary("libqtuicoverage.so", "void init_extension(void) {}"));
        for (const char* name :
             {"libvorskhook.so", "libvorskqtwrapper.so", "plugins/generic/libvorskstarter.so"}) {
            QVERIFY(buildLibrary(name, "int x;"));
        }
    }

    void aWholeOneHasNoProblem() {
        const Installation installation(m_folder.path());
        QVERIFY(!installation.problem());
        QCOMPARE(installation.extension(), path("libqtuicoverage.so"));
        QCOMPARE(installation.pluginFolder(), path("plugins"));
        QCOMPARE(installation.pluginKey(), QStringLiteral("vorsk"));
    }

    void eachLibraryIsMissed_data() {
        QTest::addColumn<QString>("name");
        for (const char* name : {"libqtuicoverage.so", "libvorskhook.so", "libvorskqtwrapper.so",
                                 "plugins/generic/libvorskstarter.so"}) {
            QTest::newRow(name) << name;
        }
    }

    void eachLibraryIsMissed() {
        QFETCH(QString, name);
        const QString moved = m_folder.filePath(QStringLiteral("moved"));
        QVERIFY(QFile::rename(m_folder.filePath(name), moved));
        const auto problem = Installation(m_folder.path()).problem();
        QVERIFY(QFile::rename(moved, m_folder.filePath(name)));
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::LibrariesMissing);
        QVERIFY2(problem->text.contains(QFileInfo(name).fileName()), qPrintable(problem->text));
        QVERIFY2(problem->text.contains(m_folder.path()), qPrintable(problem->text));
    }

    void anExtensionWithoutItsEntryIsUnusable() {
        const QString moved = path("moved");
        const QString extension = path("libqtuicoverage.so");
        QVERIFY(QFile::rename(extension, moved));
        QVERIFY(buildLibrary("libqtuicoverage.so", "int init_extensions;"));
        const auto problem = Installation(m_folder.path()).problem();
        QVERIFY(QFile::remove(extension));
        QVERIFY(QFile::rename(moved, extension));
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::LibraryUnusable);
    }

    void theInstalledPlaceComesBeforeTheBuildTrees() {
        const QStringList folders = Installation::candidates(QStringLiteral("/opt/x/bin"));
        QCOMPARE(folders.last(), QStringLiteral("/opt/x/lib"));
        QVERIFY(folders.contains(QStringLiteral("/opt/x/lib/uicov")));
        QVERIFY(folders.indexOf(QStringLiteral("/opt/x/lib/uicov")) < folders.size() - 1);
    }
};

QTEST_GUILESS_MAIN(TestInstallation)
#include "tst_installation.moc"
