// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/elffile.h"
#include "launch/qtlibraries.h"
#include "testlib/cprogram.h"
#include "testlib/testcase.h"

#include <QColor>
#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTest>

using Uicov::Launch::ElfFile;
using Uicov::Launch::QtLibraries;

class TestQtLibraries : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aLoadersLinesAreRead_data() {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<int>("major");
        QTest::addColumn<bool>("gui");
        const QString c = QStringLiteral("\tlibc.so.6 => /lib/libc.so.6 (0x00007f)");
        QTest::newRow("none") << QStringList{c} << 0 << false;
        QTest::newRow("nothing") << QStringList() << 0 << false;
        QTest::newRow("Qt 5 core")
            << QStringList{c, QStringLiteral("\tlibQt5Core.so.5 => /x/libQt5Core.so.5 (0x7f)")} << 5
            << false;
        QTest::newRow("Qt 5 GUI")
            << QStringList{QStringLiteral("\tlibQt5Gui.so.5 => /x/libQt5Gui.so.5 (0x7f)"),
                           QStringLiteral("\tlibQt5Core.so.5 => /x/libQt5Core.so.5 (0x7f)")}
            << 5 << true;
        QTest::newRow("Qt 6") << QStringList{QStringLiteral(
                                     "\tlibQt6Core.so.6 => /x/libQt6Core.so.6 (0x7f)")}
                              << 6 << false;
        QTest::newRow("Qt 4") << QStringList{QStringLiteral(
                                     "\tlibQtCore.so.4 => /x/libQtCore.so.4 (0x7f)")}
                              << 4 << false;
        QTest::newRow("not found")
            << QStringList{QStringLiteral("\tlibQt5Core.so.5 => not found")} << 5 << false;
        QTest::newRow("a library with a suffix")
            << QStringList{QStringLiteral("\tlibQt5Core_vendor.so.5 => /x/y.so (0x7f)")} << 5
            << false;
        QTest::newRow("somebody else's")
            << QStringList{QStringLiteral("\tlibNotQt5Core.so.5 => /x/y.so (0x7f)")} << 0 << false;
    }

    void aLoadersLinesAreRead() {
        QFETCH(QStringList, lines);
        QFETCH(int, major);
        QFETCH(bool, gui);
        const QtLibraries libraries(lines);
        QCOMPARE(libraries.major(), major);
        QCOMPARE(libraries.hasCore(), major > 0);
        QCOMPARE(libraries.hasGui(), gui);
    }

    void thisVeryProgramUsesThisQt() {
        QVERIFY(QColor(Qt::red).isValid()); // so that no linker leaves Qt Gui out
        const QString path = QCoreApplication::applicationFilePath();
        const QtLibraries libraries = QtLibraries::ofProgram(ElfFile(path).interpreter(), path);
        QCOMPARE(libraries.major(), QT_VERSION_MAJOR);
        QVERIFY(libraries.hasGui());
        QCOMPARE(libraries.version(), QString::fromLatin1(qVersion()));
    }

    void withoutALoaderNothingIsKnown() {
        QVERIFY(!QtLibraries::ofProgram(QByteArray(), QStringLiteral("/bin/sh")).hasCore());
        QVERIFY(!QtLibraries::ofProgram("/no/such/loader", QStringLiteral("/bin/sh")).hasCore());
    }

    void theProgramItselfIsNotRun() {
        QTemporaryDir folder;
        const QString program = folder.filePath(QStringLiteral("program"));
        const QString mark = folder.filePath(QStringLiteral("mark"));
        QVERIFY(
            TestLib::buildC(QStringLiteral("#include <stdio.h>\n"
                                           "int main(void) { return fopen(\"%1\", \"w\") == 0; }")
                                .arg(mark),
                            program));
        QtLibraries::ofProgram(ElfFile(program).interpreter(), program);
        QVERIFY(!QFile::exists(mark));
    }
};

QTEST_GUILESS_MAIN(TestQtLibraries)
#include "tst_qtlibraries.moc"
