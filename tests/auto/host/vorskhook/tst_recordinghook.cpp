// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/recordingparser.h"
#include "testlib/testcase.h"
#include "vorskhook/recordinghook.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace VorskHost;

class tst_RecordingHook : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void wholeLife();
};

/** One function, because a process has one hook, and it has it for good. */
void tst_RecordingHook::wholeLife() {
    QTemporaryDir dir;
    QVERIFY(Vorsk::Hook::hook == nullptr);
    QVERIFY(RecordingHook::instance() == nullptr);

    expectWarning(QRegularExpression(QStringLiteral("recording-not-made: .*")));
    QVERIFY(RecordingHook::start(dir.filePath(QStringLiteral("none/a.uirec")), {}) == nullptr);
    QVERIFY(Vorsk::Hook::hook == nullptr);

    const QString path = dir.filePath(QStringLiteral("a.uirec"));
    RecordingHook* hook = RecordingHook::start(path, {});
    QVERIFY(hook != nullptr);
    QCOMPARE(Vorsk::Hook::hook, static_cast<Vorsk::Hook*>(hook));
    QCOMPARE(RecordingHook::instance(), hook);
    QCOMPARE(RecordingHook::start(dir.filePath(QStringLiteral("b.uirec")), {}), hook);
    QVERIFY(!QDir(dir.path()).exists(QStringLiteral("b.uirec")));

    QCOMPARE(Vorsk::Hook::hook->appId(), static_cast<int>(getpid()));
    QVERIFY(Vorsk::Hook::hook->send(Vorsk::Hook::hook->channel, QStringLiteral("uiCoverageData"),
                                    {hook->appId(), 1, 7, QByteArray("payload")}));
    hook->writer().close();
    QVERIFY(!Vorsk::Hook::hook->send(1, QStringLiteral("uiCoverageData"), {}));

    const RecordingParser parsed = RecordingParser::parseFile(path);
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.messages().size(), 1);
    const RecordingParser::Message message = parsed.messages().first();
    QCOMPARE(message.channel, hook->channel);
    QCOMPARE(message.name, QStringLiteral("uiCoverageData"));
    QCOMPARE(message.arguments, (QVariantList{getpid(), 1, 7, QByteArray("payload")}));
}

QTEST_GUILESS_MAIN(tst_RecordingHook)
#include "tst_recordinghook.moc"
