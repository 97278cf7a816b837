// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/fakehost.h"
#include "testlib/testcase.h"
#include "tracking/logging.h"

#include <QTest>

#include <string>

using namespace Vorsk::UICoverage;

namespace {

/** Exchanges its logger from one message to the next. */
class AlternatingHost : public Vorsk::ExtensionHost {
public:
    void reserved3() override {}
    Vorsk::HostLogger* logger() override { return ++requests % 2 == 1 ? &first : &second; }

    TestLib::FakeLogger first;
    TestLib::FakeLogger second;
    int requests = 0;
};

} // namespace

class tst_Logging : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() {
        setExtensionHost(nullptr);
        TestCase::cleanup();
    }

    void infoAndWarningReachTheirOwnSink() {
        TestLib::FakeExtensionHost host;
        setExtensionHost(&host);
        logInfo("one %d", 1);
        logWarning("two %s", "2");
        QCOMPARE(host.fakeLogger.lines,
                 (QStringList{QStringLiteral("info: one 1"), QStringLiteral("warning: two 2")}));
    }

    void messageIsCutAt1023Characters_data() {
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("kept");
        QTest::newRow("nothing") << 0 << 0;
        QTest::newRow("one less than fits") << 1022 << 1022;
        QTest::newRow("as much as fits") << 1023 << 1023;
        QTest::newRow("one more than fits") << 1024 << 1023;
        QTest::newRow("2000 characters") << 2000 << 1023;
    }

    void messageIsCutAt1023Characters() {
        QFETCH(int, length);
        QFETCH(int, kept);
        TestLib::FakeExtensionHost host;
        setExtensionHost(&host);
        std::string text;
        for (int i = 0; i < length; ++i) {
            text += static_cast<char>('a' + i % 26);
        }
        logInfo("%s", text.c_str());
        logWarning("%s", text.c_str());
        const QString expected = QString::fromStdString(text).left(kept);
        QCOMPARE(host.fakeLogger.lines, (QStringList{QStringLiteral("info: ") + expected,
                                                     QStringLiteral("warning: ") + expected}));
    }

    void argumentsAreNoFormats() {
        TestLib::FakeExtensionHost host;
        setExtensionHost(&host);
        logWarning("text='%s'", "100 %s %n");
        QCOMPARE(host.fakeLogger.lines, QStringList{QStringLiteral("warning: text='100 %s %n'")});
    }

    void loggerIsAskedForWithEveryMessage() {
        AlternatingHost host;
        setExtensionHost(&host);
        logInfo("a");
        logWarning("b");
        logInfo("c");
        QCOMPARE(host.requests, 3);
        QCOMPARE(host.first.lines,
                 (QStringList{QStringLiteral("info: a"), QStringLiteral("info: c")}));
        QCOMPARE(host.second.lines, QStringList{QStringLiteral("warning: b")});
    }

    void laterHostReplacesTheEarlier() {
        TestLib::FakeExtensionHost first;
        TestLib::FakeExtensionHost second;
        setExtensionHost(&first);
        setExtensionHost(&second);
        QCOMPARE(extensionHost(), &second);
        logInfo("text");
        QCOMPARE(first.loggerRequests, 0);
        QCOMPARE(second.fakeLogger.lines, QStringList{QStringLiteral("info: text")});
    }

    void withoutAHostMessagesAreDropped() {
        TestLib::FakeExtensionHost host;
        setExtensionHost(&host);
        setExtensionHost(nullptr);
        logInfo("a");
        logWarning("b");
        QVERIFY(host.fakeLogger.lines.isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_Logging)
#include "tst_logging.moc"
