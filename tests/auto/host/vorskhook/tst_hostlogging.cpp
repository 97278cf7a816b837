#include "testlib/testcase.h"
#include "vorskhook/hostlogging.h"

#include <QTest>

using namespace VorskHost;

class tst_HostLogging : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void defaults();
    void problemIsOneLine();
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

QTEST_GUILESS_MAIN(tst_HostLogging)
#include "tst_hostlogging.moc"
