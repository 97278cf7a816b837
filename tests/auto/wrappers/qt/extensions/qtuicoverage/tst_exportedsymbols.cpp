// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/fakehost.h"
#include "testlib/testcase.h"

#include <vorsk/extension.h>

#include <QProcess>
#include <QTest>

#include <dlfcn.h>

/** The finished library, from outside. */
class tst_ExportedSymbols : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void exportsItsEntryAndNothingElse() {
        const QStringList lines = run(
            QStringLiteral("nm"), {QStringLiteral("--dynamic"), QStringLiteral("--defined-only"),
                                   QStringLiteral("--extern-only"), library()});
        QStringList symbols;
        for (const QString& line : lines) {
            symbols.append(line.section(QLatin1Char(' '), 1));
        }
        QCOMPARE(symbols, QStringList{QStringLiteral("T init_extension")});
    }

    void everySymbolIsFoundInTheLibrariesThatItNames() {
        // Resolves all symbols, functions included, against the needed libraries and nothing else.
        const QStringList lines = run(QStringLiteral("ldd"), {QStringLiteral("-r"), library()});
        QVERIFY(!lines.isEmpty());
        if (!lines.filter(QStringLiteral("not a dynamic executable")).isEmpty()) {
            QSKIP("ldd here does not read libraries of this architecture");
        }
        QCOMPARE(lines.filter(QStringLiteral("undefined symbol")), QStringList());
        QCOMPARE(lines.filter(QStringLiteral("not found")), QStringList());
    }

    void needsTheHostsHookAndNoTestLibrary() {
        QStringList lines = run(QStringLiteral("ldd"), {library()});
        if (!lines.filter(QStringLiteral("not a dynamic executable")).isEmpty()) {
            QSKIP("ldd here does not read libraries of this architecture");
        }
        lines.replaceInStrings(QRegularExpression(QStringLiteral("^\\s*(\\S+).*$")),
                               QStringLiteral("\\1"));
        QCOMPARE(lines.filter(QStringLiteral("libvorskhook.so")).size(), 1);
        QCOMPARE(lines.filter(QStringLiteral("libQt5Test")), QStringList());
    }

    void entryGivesOneExtensionThatTalksToTheLastHost() {
        using Entry = Vorsk::Extension* (*)(Vorsk::ExtensionHost*);
        void* const handle = dlopen(UICOV_EXTENSION_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        QVERIFY2(handle != nullptr, dlerror());
        const auto entry = reinterpret_cast<Entry>(dlsym(handle, "init_extension"));
        QVERIFY(entry != nullptr);
        // They outlive the library, which stays until the process ends.
        static TestLib::FakeExtensionHost first;
        static TestLib::FakeExtensionHost second;
        Vorsk::Extension* const extension = entry(&first);
        QVERIFY(extension != nullptr);
        QCOMPARE(entry(&second), extension);
        TestLib::FakeOptionSet options;
        TestLib::FakeWrapperContext context;
        options.options = {{"enabled", {"1"}}, {"qtquick", {"1"}}};
        extension->options = &options;
        qputenv("VORSK_GUI_COVERAGE", "1");
        extension->initialize(&context);
        QCOMPARE(context.registrations.size(), 1);
        QVERIFY(first.fakeLogger.lines.isEmpty());
        QCOMPARE(second.fakeLogger.lines,
                 QStringList{QStringLiteral("info: Registered to track GUI coverage "
                                            "information.")});
    }

private:
    static QString library() { return QStringLiteral(UICOV_EXTENSION_LIBRARY); }

    static QStringList run(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, arguments);
        if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit ||
            process.exitCode() != 0) {
            return {QStringLiteral("failed: ") + QString::fromLocal8Bit(process.readAll())};
        }
        QStringList lines = QString::fromLocal8Bit(process.readAll()).split(QLatin1Char('\n'));
        lines.removeAll(QString());
        return lines;
    }
};

QTEST_GUILESS_MAIN(tst_ExportedSymbols)
#include "tst_exportedsymbols.moc"
