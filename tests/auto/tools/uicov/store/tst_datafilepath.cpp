// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafilepath.h"
#include "testlib/testcase.h"

#include <QCoreApplication>
#include <QSysInfo>
#include <QTest>

class TestDataFilePath : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() {
        qunsetenv("UICOV_FILE");
        TestLib::TestCase::cleanup();
    }

    void placeholdersAreReplaced_data() {
        QTest::addColumn<QByteArray>("option");
        QTest::addColumn<QString>("path");
        const QString process = QString::number(QCoreApplication::applicationPid());
        QTest::newRow("nothing") << QByteArray() << ".uicov";
        QTest::newRow("plain") << QByteArray("a/b.uicov") << "a/b.uicov";
        QTest::newRow("process") << QByteArray("x-%p.uicov")
                                 << QStringLiteral("x-%1.uicov").arg(process);
        QTest::newRow("host") << QByteArray("%h") << QSysInfo::machineHostName();
        QTest::newRow("percent") << QByteArray("100%%p") << "100%p";
        QTest::newRow("others stay") << QByteArray("%x %") << "%x %";
    }

    void placeholdersAreReplaced() {
        QFETCH(QByteArray, option);
        QFETCH(QString, path);
        QCOMPARE(Uicov::Store::dataFilePath(option.toStdString()), path);
    }

    void theVariableTellsTheCurrentOne() {
        QCOMPARE(Uicov::Store::currentDataFile(), QStringLiteral(".uicov"));
        qputenv("UICOV_FILE", "there.uicov");
        QCOMPARE(Uicov::Store::currentDataFile(), QStringLiteral("there.uicov"));
        qputenv("UICOV_FILE", "");
        QCOMPARE(Uicov::Store::currentDataFile(), QStringLiteral(".uicov"));
    }

    void argumentsCanBePastedIntoAShell_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("argument");
        QTest::newRow("default") << ".uicov"
                                 << "";
        QTest::newRow("plain") << "a/b-1.uicov"
                               << "a/b-1.uicov";
        QTest::newRow("space") << "a b"
                               << "'a b'";
        QTest::newRow("quote") << "it's"
                               << "'it'\\''s'";
        QTest::newRow("command") << "$(x)"
                                 << "'$(x)'";
    }

    void argumentsCanBePastedIntoAShell() {
        QFETCH(QString, path);
        QFETCH(QString, argument);
        QCOMPARE(Uicov::Store::dataFileArgument(path), argument);
    }
};

QTEST_GUILESS_MAIN(TestDataFilePath)
#include "tst_datafilepath.moc"
