// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "vorskqtwrapper/libraryplace.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using VorskHost::LibraryPlace::sharedPart;

class tst_LibraryPlace : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void sharedParts_data();
    void sharedParts();
    void linksAreFollowed();
    void whatIsNotThereIsNotShared();
};

void tst_LibraryPlace::sharedParts_data() {
    QTest::addColumn<uint>("above");
    QTest::addColumn<uint>("folder");
    QTest::addColumn<uint>("file");
    QTest::addColumn<QString>("shared");
    const QString none;
    QTest::newRow("private") << 0700U << 0755U << 0644U << none;
    QTest::newRow("of a group") << 0775U << 0775U << 0664U << none;
    QTest::newRow("file") << 0755U << 0755U << 0646U << QStringLiteral("above/folder/x.so");
    QTest::newRow("folder") << 0755U << 0777U << 0644U << QStringLiteral("above/folder");
    QTest::newRow("sticky folder") << 0755U << 01777U << 0644U << QStringLiteral("above/folder");
    QTest::newRow("folder above") << 0777U << 0755U << 0644U << QStringLiteral("above");
    QTest::newRow("sticky folder above") << 01777U << 0755U << 0644U << none;
}

void tst_LibraryPlace::sharedParts() {
    QFETCH(uint, above);
    QFETCH(uint, folder);
    QFETCH(uint, file);
    QFETCH(QString, shared);
    const QTemporaryDir place;
    const QDir root(QFileInfo(place.path()).canonicalFilePath());
    QVERIFY(root.mkpath(QStringLiteral("above/folder")));
    QFile library(root.filePath(QStringLiteral("above/folder/x.so")));
    QVERIFY(library.open(QIODevice::WriteOnly));
    QCOMPARE(::chmod(qPrintable(library.fileName()), file), 0);
    QCOMPARE(::chmod(qPrintable(root.filePath(QStringLiteral("above/folder"))), folder), 0);
    QCOMPARE(::chmod(qPrintable(root.filePath(QStringLiteral("above"))), above), 0);
    QCOMPARE(sharedPart(library.fileName()), shared.isEmpty() ? QString() : root.filePath(shared));
}

void tst_LibraryPlace::linksAreFollowed() {
    const QTemporaryDir place;
    const QDir root(QFileInfo(place.path()).canonicalFilePath());
    QVERIFY(root.mkpath(QStringLiteral("open")));
    QFile library(root.filePath(QStringLiteral("open/x.so")));
    QVERIFY(library.open(QIODevice::WriteOnly));
    QCOMPARE(::chmod(qPrintable(root.filePath(QStringLiteral("open"))), 0777), 0);
    const QString link = root.filePath(QStringLiteral("link.so"));
    QVERIFY(library.link(link));
    QCOMPARE(sharedPart(link), root.filePath(QStringLiteral("open")));
}

void tst_LibraryPlace::whatIsNotThereIsNotShared() {
    QCOMPARE(sharedPart(QStringLiteral("/none/x.so")), QString());
    QCOMPARE(sharedPart(QStringLiteral("/")), QString());
}

QTEST_GUILESS_MAIN(tst_LibraryPlace)
#include "tst_libraryplace.moc"
