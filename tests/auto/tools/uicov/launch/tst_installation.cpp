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
using Uicov::Launch::Extension;
using Uicov::Launch::Installation;

Q_DECLARE_METATYPE(Uicov::Launch::Extension)

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
        for (const char* extension : {"libqtuicontrols.so", "libqtuicoverage.so"}) {
            QVERIFY(buildLibrary(extension, "void init_extension(void) {}"));
        }
        for (const char* name : {"libqtuicontrolsquick.so", "libvorskhook.so",
                                 "libvorskqtwrapper.so", "plugins/generic/libvorskstarter.so"}) {
            QVERIFY(buildLibrary(name, "int x;"));
        }
    }

    void aWholeOneHasNoProblem() {
        const Installation installation(m_folder.path());
        QVERIFY(!installation.problem());
        QCOMPARE(installation.extension(), path("libqtuicontrols.so"));
        QCOMPARE(installation.pluginFolder(), path("plugins"));
        QCOMPARE(installation.pluginKey(), QStringLiteral("vorsk"));
    }

    void eachLibraryIsMissed_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<Extension>("extension");
        for (const char* name :
             {"libvorskhook.so", "libvorskqtwrapper.so", "plugins/generic/libvorskstarter.so"}) {
            QTest::addRow("%s, controls", name) << name << Extension::Controls;
            QTest::addRow("%s, classic", name) << name << Extension::Classic;
        }
        QTest::newRow("controls") << "libqtuicontrols.so" << Extension::Controls;
        QTest::newRow("controls of Qt Quick") << "libqtuicontrolsquick.so" << Extension::Controls;
        QTest::newRow("classic") << "libqtuicoverage.so" << Extension::Classic;
    }

    void eachLibraryIsMissed() {
        QFETCH(QString, name);
        QFETCH(Extension, extension);
        const QString moved = m_folder.filePath(QStringLiteral("moved"));
        QVERIFY(QFile::rename(m_folder.filePath(name), moved));
        const auto problem = Installation(m_folder.path(), extension).problem();
        QVERIFY(QFile::rename(moved, m_folder.filePath(name)));
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::LibrariesMissing);
        QVERIFY2(problem->text.contains(QFileInfo(name).fileName()), qPrintable(problem->text));
        QVERIFY2(problem->text.contains(m_folder.path()), qPrintable(problem->text));
    }

    void theClassicOneDoesWithoutTheControls() {
        const char* const controls[] = {"libqtuicontrols.so", "libqtuicontrolsquick.so"};
        for (const char* name : controls) {
            QVERIFY(QFile::rename(path(name), path(name) + QStringLiteral(".moved")));
        }
        const Installation classic(m_folder.path(), Extension::Classic);
        const bool hasProblem = classic.problem().has_value();
        for (const char* name : controls) {
            QVERIFY(QFile::rename(path(name) + QStringLiteral(".moved"), path(name)));
        }
        QVERIFY(!hasProblem);
        QCOMPARE(classic.extension(), path("libqtuicoverage.so"));
    }

    void anExtensionWithoutItsEntryIsUnusable() {
        const QString moved = path("moved");
        const QString extension = path("libqtuicontrols.so");
        QVERIFY(QFile::rename(extension, moved));
        QVERIFY(buildLibrary("libqtuicontrols.so", "int init_extensions;"));
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
