// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "vorskhook/hostlogging.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace VorskHost;

namespace {

QString contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QSet<QString> captured(const QString& text, const QString& pattern) {
    QSet<QString> result;
    auto matches =
        QRegularExpression(pattern, QRegularExpression::MultilineOption).globalMatch(text);
    while (matches.hasNext()) {
        result.insert(matches.next().captured(1));
    }
    return result;
}

} // namespace

class tst_HostLogging : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void defaults();
    void problemIsOneLine();
    void everyProblemIsExplained();
};

void tst_HostLogging::defaults() {
    QVERIFY(hostLog().isWarningEnabled());
    QVERIFY(!extensionLog().isInfoEnabled());
    QVERIFY(!extensionLog().isWarningEnabled());
    QCOMPARE(QString::fromLatin1(hostLog().categoryName()), QStringLiteral("vorsk.host"));
    QCOMPARE(QString::fromLatin1(extensionLog().categoryName()), QStringLiteral("vorsk.extension"));
}

void tst_HostLogging::problemIsOneLine() {
    expectWarning(QStringLiteral("a\\x0ab\\x1b[31m\\x85 \u00e9"));
    reportProblem(QStringLiteral("a\nb\x1b[31m\u0085 \u00e9"));
}

/** The names that the sources begin a problem with are those that the documentation explains. */
void tst_HostLogging::everyProblemIsExplained() {
    QString sources;
    QDirIterator files(QStringLiteral(SOURCE_DIR "/host"), {QStringLiteral("*.cpp")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        sources += contents(files.next());
    }
    const QSet<QString> reported = captured(sources, QStringLiteral("\"([a-z]+(?:-[a-z]+)+): "));
    const QSet<QString> explained =
        captured(contents(QStringLiteral(SOURCE_DIR "/docs/host-standin.md")),
                 QStringLiteral("^\\| `([a-z]+(?:-[a-z]+)+)` \\| [^|]+ \\| [^|]+ \\|$"));
    QVERIFY(reported.size() > 10);
    QCOMPARE(QSet<QString>(reported).subtract(explained), QSet<QString>());
    QCOMPARE(QSet<QString>(explained).subtract(reported), QSet<QString>());
}

QTEST_GUILESS_MAIN(tst_HostLogging)
#include "tst_hostlogging.moc"
