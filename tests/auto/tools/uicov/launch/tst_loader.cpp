// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/elffile.h"
#include "launch/loader.h"
#include "testlib/cprogram.h"
#include "testlib/emulation.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using TestLib::buildC;
using Uicov::Launch::ElfFile;

class TestLoader : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;

    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
    QByteArray interpreter() const { return ElfFile(path("program")).interpreter(); }

    /** A library whose one function has a version of that name. */
    bool buildVersioned(const char* file, const char* version) const {
        QFile map(path("map"));
        if (!map.open(QIODevice::WriteOnly) ||
            map.write(QByteArray(version) + " { global: f; };\n") < 0) {
            return false;
        }
        map.close();
        return buildC(QStringLiteral("int f(void) { return 1; }"), path(file),
                      {QStringLiteral("-shared"), QStringLiteral("-fPIC"),
                       QStringLiteral("-Wl,-soname,libversioned.so.1"),
                       QStringLiteral("-Wl,--version-script=") + path("map")});
    }

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(buildC(QStringLiteral("int main(void) { return 3; }"), path("program")));
        QVERIFY(buildC(QStringLiteral("int x;"), path("libplain.so"),
                       {QStringLiteral("-shared"), QStringLiteral("-fPIC")}));
    }

    void whatAProgramLoadsIsListed() {
        const QStringList lines = Uicov::Launch::listLibraries(interpreter(), path("program"));
        QVERIFY(!lines.filter(QStringLiteral("libc.so.6 => /")).isEmpty());
        QCOMPARE(Uicov::Launch::loaderComplaints(lines), QStringList());
    }

    void aPreloadedLibraryIsListedToo() {
        if (TestLib::isEmulated()) {
            QSKIP(TestLib::preloadedTwice);
        }
        const QStringList lines =
            Uicov::Launch::listLibraries(interpreter(), path("program"), path("libplain.so"));
        QVERIFY(!lines.filter(path("libplain.so")).isEmpty());
        QCOMPARE(Uicov::Launch::loaderComplaints(lines), QStringList());
    }

    void whatOthersPreloadGivesWayToIt() {
        qputenv("LD_PRELOAD", QFile::encodeName(path("none.so")));
        const QStringList lines =
            Uicov::Launch::listLibraries(interpreter(), path("program"), path("libplain.so"));
        qunsetenv("LD_PRELOAD");
        QVERIFY(lines.filter(QStringLiteral("none.so")).isEmpty());
    }

    void aLibraryThatIsNotThereIsNamed() {
        QVERIFY(buildC(QStringLiteral("int y;"), path("libgone.so"),
                       {QStringLiteral("-shared"), QStringLiteral("-fPIC"),
                        QStringLiteral("-Wl,-soname,libgone.so.7")}));
        QVERIFY(buildC(QStringLiteral("int main(void) { return 0; }"), path("needy"),
                       {QStringLiteral("-Wl,--no-as-needed"), path("libgone.so")}));
        const QStringList lines = Uicov::Launch::listLibraries(interpreter(), path("needy"));
        QCOMPARE(Uicov::Launch::loaderComplaints(lines),
                 QStringList{QStringLiteral("libgone.so.7 is not found")});
    }

    void aVersionThatALibraryDoesNotHaveIsNamed() {
        if (TestLib::isEmulated()) {
            QSKIP(TestLib::preloadedTwice);
        }
        QVERIFY(buildVersioned("libversioned.so", "V_5.15"));
        QVERIFY(buildC(QStringLiteral("int f(void); int g(void) { return f(); }"),
                       path("libuser.so"),
                       {QStringLiteral("-shared"), QStringLiteral("-fPIC"), path("libversioned.so"),
                        QStringLiteral("-Wl,-rpath,") + m_folder.path()}));
        QVERIFY(buildVersioned("libversioned.so.1", "V_5.12"));
        const QStringList complaints = Uicov::Launch::loaderComplaints(
            Uicov::Launch::listLibraries(interpreter(), path("program"), path("libuser.so")));
        QCOMPARE(complaints.size(), 1);
        QVERIFY2(complaints.first().contains(QStringLiteral("version `V_5.15' not found")),
                 qPrintable(complaints.first()));
        QVERIFY2(complaints.first().endsWith(path("libuser.so") + QLatin1Char(')')),
                 qPrintable(complaints.first()));
    }

    void whatCannotBePreloadedIsToldOf() {
        const QStringList complaints = Uicov::Launch::loaderComplaints(
            Uicov::Launch::listLibraries(interpreter(), path("program"), path("none.so")));
        QCOMPARE(complaints.size(), 1);
        QVERIFY(complaints.first().contains(QStringLiteral("none.so")));
    }

    void withoutALoaderThereIsNothing() {
        QCOMPARE(Uicov::Launch::listLibraries(QByteArray(), path("program")), QStringList());
        QCOMPARE(Uicov::Launch::loaderComplaints(
                     Uicov::Launch::listLibraries("/none/ld.so", path("program"))),
                 QStringList());
    }
};

QTEST_GUILESS_MAIN(TestLoader)
#include "tst_loader.moc"
