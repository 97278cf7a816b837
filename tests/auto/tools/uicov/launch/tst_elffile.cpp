// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/elffile.h"
#include "testlib/cprogram.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <elf.h>

using Uicov::Launch::ElfFile;

class TestElfFile : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_program = m_folder.filePath(QStringLiteral("program"));
    QString m_library = m_folder.filePath(QStringLiteral("library.so"));

    QByteArray contentsOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString written(const QByteArray& bytes) {
        QString path = m_folder.filePath(QStringLiteral("patched"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            path.clear();
        }
        return path;
    }

    QString patched(int offset, const QByteArray& hex) {
        QByteArray bytes = contentsOf(m_program);
        const QByteArray patch = QByteArray::fromHex(hex);
        return written(bytes.replace(offset, patch.size(), patch));
    }

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(TestLib::buildC(QStringLiteral("int main(void) { return 0; }"), m_program));
        QVERIFY(TestLib::buildC(
            QStringLiteral(
                "extern int other(void);\n"
                "__attribute__((visibility(\"hidden\"))) int secret(void) { return 1; }\n"
                "int init_extension(void) { return secret() + other(); }"),
            m_library, {QStringLiteral("-shared"), QStringLiteral("-fPIC")}));
    }

    void aProgramOfThisMachine() {
        const ElfFile program(m_program);
        QVERIFY(program.isElf());
        QVERIFY(program.hasSameArchitectureAs(ElfFile(m_library)));
        QVERIFY(QFile::exists(QString::fromLocal8Bit(program.interpreter())));
        QVERIFY(ElfFile(m_library).interpreter().isEmpty());
    }

    void onlyWhatIsExportedIsDefined() {
        const ElfFile library(m_library);
        QVERIFY(library.definesSymbol("init_extension"));
        QVERIFY(!library.definesSymbol("secret"));
        QVERIFY(!library.definesSymbol("other")); // it is needed, not offered
        QVERIFY(!library.definesSymbol("init_ext"));
        QVERIFY(!library.definesSymbol(""));
    }

    void otherMachinesHaveTheirNames_data() {
        QTest::addColumn<int>("offset");
        QTest::addColumn<QByteArray>("hex");
        QTest::addColumn<QString>("name");
        QTest::newRow("ARM64") << 18 << QByteArray("b700") << "ARM64, 64 bit";
        QTest::newRow("RISC-V") << 18 << QByteArray("f300") << "RISC-V, 64 bit";
        QTest::newRow("not known") << 18 << QByteArray("ff7f") << "machine 32767, 64 bit";
        QTest::newRow("32 bit") << static_cast<int>(EI_CLASS) << QByteArray("01")
                                << "x86-64, 32 bit";
        QTest::newRow("big-endian S/390")
            << static_cast<int>(EI_DATA) << QByteArray("020100000000000000000000030016")
            << "S/390, 64 bit, big-endian";
    }

    void otherMachinesHaveTheirNames() {
        if (ElfFile(m_program).architecture() != QLatin1String("x86-64, 64 bit")) {
            QSKIP("the patches below are for x86-64");
        }
        QFETCH(int, offset);
        QFETCH(QByteArray, hex);
        QFETCH(QString, name);
        const ElfFile other(patched(offset, hex));
        QCOMPARE(other.architecture(), name);
        QVERIFY(!other.hasSameArchitectureAs(ElfFile(m_program)));
    }

    void whatIsNoElfFileIsNone() {
        for (const QByteArray& bytes : {QByteArray(), QByteArray("#!/bin/sh\n"),
                                        QByteArray("\x7f"
                                                   "ELF"),
                                        QByteArray("\x7f"
                                                   "ELF\2\1\1") +
                                            QByteArray(20, '\0')}) {
            const ElfFile file(written(bytes));
            QVERIFY(!file.isElf());
            QVERIFY(file.interpreter().isEmpty());
            QVERIFY(!file.definesSymbol("x"));
            QVERIFY(!file.hasSameArchitectureAs(file));
            QVERIFY(file.qtBuildText().isEmpty());
        }
        QVERIFY(!ElfFile(m_folder.filePath(QStringLiteral("none"))).isElf());
        QVERIFY(!ElfFile(m_folder.path()).isElf());
    }

    void aStaticProgramHasNoInterpreter() {
        const QString path = m_folder.filePath(QStringLiteral("static"));
        QVERIFY(TestLib::buildC(QStringLiteral("int main(void) { return 0; }"), path,
                                {QStringLiteral("-static")}));
        QVERIFY(ElfFile(path).isElf());
        QVERIFY(ElfFile(path).interpreter().isEmpty());
    }

    void theQtThatIsLinkedInIsFound() {
        const QString path = m_folder.filePath(QStringLiteral("withqt"));
        QVERIFY(TestLib::buildC(
            QStringLiteral("#include <stdio.h>\n"
                           "int main(void) { puts(\"the _endian-, no Qt\"); puts(\"Qt 5.15.2 "
                           "(x86_64-little_endian-lp64 static release build; by GCC 12)\"); }"),
            path));
        QCOMPARE(
            ElfFile(path).qtBuildText(),
            QByteArray("Qt 5.15.2 (x86_64-little_endian-lp64 static release build; by GCC 12)"));
        QVERIFY(ElfFile(m_program).qtBuildText().isEmpty());
    }

    /** Damaged offsets and sizes lead nowhere: the sanitizers watch. */
    void everyTruncationAndEveryDamagedHeaderByteIsSurvived() {
        const QByteArray whole = contentsOf(m_library);
        for (int size = 0; size < whole.size(); size += size < 1200 ? 7 : 997) {
            const ElfFile file(written(whole.left(size)));
            QVERIFY(size >= whole.size() - 64 * 40 || !file.definesSymbol("init_extension"));
            QVERIFY(file.interpreter().isEmpty());
        }
        for (int at = 16; at < 64; ++at) {
            for (const char value : {'\x00', '\x7f', '\xff'}) {
                QByteArray damaged = whole;
                damaged[at] = value;
                const ElfFile file(written(damaged));
                QVERIFY(!file.definesSymbol("no such symbol"));
                QVERIFY(file.interpreter().size() < 4097);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestElfFile)
#include "tst_elffile.moc"
