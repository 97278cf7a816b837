// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "vorskhook/testfunction.h"

#include <QTest>

using VorskHost::TestFunction;

namespace {

const char* function = nullptr;
const char* row = nullptr;
QObject* object = nullptr;

TestFunction pretended() {
    return TestFunction([] { return function; }, [] { return row; }, [] { return object; });
}

} // namespace

class tst_TestFunction : public TestLib::TestCase {
    Q_OBJECT

    TestFunction m_found;
    QStringList m_names;

    /** Adds what runs now, if it is another. */
    void look() {
        if (m_found.hasChanged()) {
            m_names.append(m_found.name());
        }
    }

private Q_SLOTS:
    void initTestCase() { look(); }

    void init() {
        TestCase::init();
        look();
        function = nullptr;
        row = nullptr;
        object = this;
    }

    void cleanup() {
        look();
        TestCase::cleanup();
    }

    /** Must come first: the names of what ran until here. */
    void initBelongsToTheFunctionBehindIt() {
        QCOMPARE(
            m_names,
            QStringList({QStringLiteral("tst_TestFunction::initTestCase"),
                         QStringLiteral("tst_TestFunction::initBelongsToTheFunctionBehindIt")}));
    }

    void cleanupBelongsToTheFunctionBeforeIt() {
        // This function's own init() is the first that was heard since.
        QCOMPARE(m_names.mid(2), QStringList{QStringLiteral(
                                     "tst_TestFunction::cleanupBelongsToTheFunctionBeforeIt")});
    }

    void thisVeryFunctionIsFound() {
        TestFunction found;
        QVERIFY(found.hasChanged());
        QCOMPARE(found.name(), QStringLiteral("tst_TestFunction::thisVeryFunctionIsFound"));
        QVERIFY(!found.hasChanged());
    }

    void rowsOfDataAreNamed_data() {
        QTest::addColumn<int>("unused");
        QTest::newRow("first row") << 1;
        QTest::newRow("second") << 2;
    }

    void rowsOfDataAreNamed() {
        TestFunction found;
        QVERIFY(found.hasChanged());
        QCOMPARE(found.name(), QStringLiteral("tst_TestFunction::rowsOfDataAreNamed(%1)")
                                   .arg(QLatin1String(QTest::currentDataTag())));
    }

    void changesAreToldOnce() {
        TestFunction found = pretended();
        QVERIFY(!found.hasChanged());
        QCOMPARE(found.name(), QString());
        function = "a";
        QVERIFY(found.hasChanged());
        QVERIFY(!found.hasChanged());
        QCOMPARE(found.name(), QStringLiteral("tst_TestFunction::a"));
        row = "1";
        QVERIFY(found.hasChanged());
        QCOMPARE(found.name(), QStringLiteral("tst_TestFunction::a(1)"));
        row = nullptr;
        QVERIFY(found.hasChanged());
        function = nullptr;
        QVERIFY(found.hasChanged());
        QCOMPARE(found.name(), QString());
        QVERIFY(!found.hasChanged());
    }

    void anAddressThatIsUsedAgainIsAnotherFunction() {
        char name[] = "first";
        TestFunction found = pretended();
        function = name;
        QVERIFY(found.hasChanged());
        qstrcpy(name, "other");
        QVERIFY(found.hasChanged());
        QCOMPARE(found.name(), QStringLiteral("tst_TestFunction::other"));
    }

    void withoutATestObjectTheFunctionStandsAlone() {
        TestFunction found = pretended();
        function = "a";
        object = nullptr;
        QVERIFY(found.hasChanged());
        QCOMPARE(found.name(), QStringLiteral("a"));
    }

    void withoutQtTestNothingEverRuns() {
        function = "a";
        TestFunction found(
            nullptr, [] { return row; }, [] { return object; });
        QVERIFY(!found.hasChanged());
        QCOMPARE(found.name(), QString());
    }
};

QTEST_GUILESS_MAIN(tst_TestFunction)
#include "tst_testfunction.moc"
