// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "vorskqtwrapper/extensionlibrary.h"

#include <vorsk/extension.h>
#include <vorsk/extensionhost.h>

#include <QTemporaryDir>
#include <QTest>

using VorskHost::ExtensionLibrary;

namespace {

class NoHost final : public Vorsk::ExtensionHost {
public:
    void reserved3() override {}
    Vorsk::HostLogger* logger() override { return nullptr; }
};

} // namespace

class tst_ExtensionLibrary : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void soundLibrary();
    void faultyLibraries_data();
    void faultyLibraries();
    void libraryThatEverybodyCanReplace();
};

/** The library that declines, so that nothing of it calls the host while this program exits. */
void tst_ExtensionLibrary::soundLibrary() {
    const ExtensionLibrary library = ExtensionLibrary::load(QStringLiteral(TEST_EXTENSION));
    QCOMPARE(library.errorString(), QString());
    QVERIFY(library.isLoaded());
    QCOMPARE(library.path(), QStringLiteral(TEST_EXTENSION));
    NoHost host;
    qputenv("TEST_EXTENSION_DECLINES", "1");
    QVERIFY(library.create(host) == nullptr);
    QVERIFY(ExtensionLibrary::load(QStringLiteral(TEST_EXTENSION)).isLoaded());
}

void tst_ExtensionLibrary::faultyLibraries_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("error");
    QTest::newRow("not there") << QStringLiteral("/none/libx.so")
                               << QStringLiteral("^extension-missing: there is no extension "
                                                 "library /none/libx.so; ");
    QTest::newRow("folder") << QStringLiteral("/")
                            << QStringLiteral("^extension-not-loadable: .* cannot be loaded: ");
    QTest::newRow("not a library")
        << QStringLiteral(NOT_A_LIBRARY)
        << QStringLiteral("^extension-not-loadable: .* cannot be loaded: .*ELF header");
    QTest::newRow("without entry") << QStringLiteral(WITHOUT_ENTRY)
                                   << QStringLiteral("^extension-no-entry: .*\"init_extension\"");
    QTest::newRow("percent signs")
        << QStringLiteral("/%1%2.so") << QStringLiteral("^extension-missing: .* /%1%2.so; ");
}

void tst_ExtensionLibrary::faultyLibraries() {
    QFETCH(QString, path);
    QFETCH(QString, error);
    const ExtensionLibrary library = ExtensionLibrary::load(path);
    QVERIFY(!library.isLoaded());
    QVERIFY2(library.errorString().contains(QRegularExpression(error)),
             qPrintable(library.errorString()));
}

void tst_ExtensionLibrary::libraryThatEverybodyCanReplace() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("libx.so"));
    QVERIFY(QFile::copy(QStringLiteral(TEST_EXTENSION), path));
    QVERIFY(QFile::setPermissions(folder.path(), QFile::Permissions(0x7777)));
    const ExtensionLibrary library = ExtensionLibrary::load(path);
    QVERIFY(!library.isLoaded());
    QVERIFY(library.errorString().startsWith(QLatin1String("extension-unsafe: ")));
    QVERIFY(library.errorString().contains(QStringLiteral("can write to ") + folder.path()));
}

QTEST_GUILESS_MAIN(tst_ExtensionLibrary)
#include "tst_extensionlibrary.moc"
