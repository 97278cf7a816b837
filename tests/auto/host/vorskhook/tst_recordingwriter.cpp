// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/filecontents.h"
#include "host/support/openfiles.h"
#include "host/support/quietwriter.h"
#include "host/support/recordingparser.h"
#include "testlib/testcase.h"
#include "vorskhook/recordingwriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

using namespace VorskHost;
using OpenFiles::descriptorOf;

namespace {

int writeCalls = 0;
ssize_t countedWrite(int descriptor, const void* data, size_t length) {
    ++writeCalls;
    return ::write(descriptor, data, length);
}

} // namespace

class tst_RecordingWriter : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void emptyRecording();
    void messagesAndLogs();
    void messageIsInTheFileWhenAppendReturns_data();
    void messageIsInTheFileWhenAppendReturns();
    void oneWritePerMessage();
    void logsWaitForTheNextMessage();
    void manyLogsAreWritten();
    void withoutCloseThereIsNoEnd();
    void closeTwice();
    void nothingAfterClose();
    void timesDoNotRunBackwards();
    void folderThatIsNotThere();
    void descriptorThatTheApplicationClosed();
    void forkedChildDoesNotWrite();
    void survivesKill();
    void messageThatIsRefused();

private:
    QScopedPointer<QTemporaryDir> m_dir;
    QString m_path;
    RecordingFormat::ProcessInfo m_info{{QStringLiteral("pid"), QStringLiteral("12")}};
};

void tst_RecordingWriter::init() {
    TestCase::init();
    m_dir.reset(new QTemporaryDir);
    m_path = QDir(QFileInfo(m_dir->path()).canonicalFilePath())
                 .absoluteFilePath(QStringLiteral("r\u00e9 1.uirec"));
    writeCalls = 0;
}

void tst_RecordingWriter::cleanup() {
    m_dir.reset();
    TestCase::cleanup();
}

void tst_RecordingWriter::emptyRecording() {
    QuietWriter writer;
    QVERIFY(!writer.isOpen());
    QVERIFY(writer.open(m_path, m_info));
    QVERIFY(writer.isOpen());
    QCOMPARE(writer.path(), m_path);
    writer.close();
    QVERIFY(!writer.isOpen());
    const RecordingParser parsed = RecordingParser::parseFile(m_path);
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.frames.size(), 2);
    const auto info = parsed.processInfo();
    QCOMPARE(info.mid(0, m_info.size()), m_info);
    QCOMPARE(info.size(), m_info.size() + 1);
    QCOMPARE(info.last().first, QStringLiteral("clock"));
    QVERIFY(info.last().second.toLongLong() > 0);
    QCOMPARE(parsed.messagesAccordingToEnd(), qint64(0));
    QCOMPARE(writer.bytesWritten(), QFileInfo(m_path).size());
}

void tst_RecordingWriter::messagesAndLogs() {
    QuietWriter writer;
    QVERIFY(writer.open(m_path, m_info));
    writer.appendLog(RecordingFormat::Severity::Info, QStringLiteral("one"));
    QVERIFY(send(writer, "first"));
    writer.appendLog(RecordingFormat::Severity::Warning, QStringLiteral("two"));
    writer.appendLog(RecordingFormat::Severity::Warning, QStringLiteral("three"));
    QVERIFY(send(writer, "second"));
    writer.appendLog(RecordingFormat::Severity::Info, QStringLiteral("four"));
    writer.close();
    const RecordingParser parsed = RecordingParser::parseFile(m_path);
    QCOMPARE(parsed.error, QString());
    QString types;
    for (const auto& frame : parsed.frames) {
        types += QString::number(frame.type);
    }
    QCOMPARE(types, QStringLiteral("13233235"));
    QCOMPARE(parsed.logs(),
             (QStringList{QStringLiteral("info one"), QStringLiteral("warning two"),
                          QStringLiteral("warning three"), QStringLiteral("info four")}));
    QCOMPARE(parsed.messages().size(), 2);
    QCOMPARE(parsed.messages()[1].channel, 7);
    QCOMPARE(parsed.messages()[1].name, QStringLiteral("data"));
    QCOMPARE(parsed.messages()[1].arguments, (QVariantList{1, QByteArray("second")}));
    QCOMPARE(parsed.messagesAccordingToEnd(), qint64(2));
    QCOMPARE(writer.messagesWritten(), quint64(2));
}

void tst_RecordingWriter::messageIsInTheFileWhenAppendReturns_data() {
    QTest::addColumn<bool>("isShared");
    QTest::newRow("shared memory") << true;
    QTest::newRow("write") << false;
}

void tst_RecordingWriter::messageIsInTheFileWhenAppendReturns() {
    QFETCH(bool, isShared);
    QuietWriter writer;
    writer.setShared(isShared);
    QVERIFY(writer.open(m_path, m_info));
    for (int i = 1; i <= 5; ++i) {
        QVERIFY(send(writer, QByteArray::number(i)));
        const RecordingParser parsed = RecordingParser::parseFile(m_path);
        QCOMPARE(parsed.error, QString());
        QCOMPARE(parsed.messages().size(), i);
        QCOMPARE(writer.bytesWritten(), parsed.end > 0 ? parsed.end : QFileInfo(m_path).size());
    }
}

void tst_RecordingWriter::oneWritePerMessage() {
    QuietWriter writer;
    writer.setWriteFunction(countedWrite);
    QVERIFY(writer.open(m_path, m_info));
    QCOMPARE(writeCalls, 1);
    writer.appendLog(RecordingFormat::Severity::Info, QStringLiteral("goes along"));
    QVERIFY(send(writer, QByteArray(1000000, 'x')));
    QCOMPARE(writeCalls, 2);
}

void tst_RecordingWriter::logsWaitForTheNextMessage() {
    QuietWriter writer;
    writer.setWriteFunction(countedWrite);
    QVERIFY(writer.open(m_path, m_info));
    writer.appendLog(RecordingFormat::Severity::Info, QStringLiteral("waits"));
    QCOMPARE(writeCalls, 1);
    QCOMPARE(RecordingParser::parseFile(m_path).logs(), QStringList());
    QVERIFY(send(writer, "message"));
    QCOMPARE(RecordingParser::parseFile(m_path).logs(), QStringList(QStringLiteral("info waits")));
}

void tst_RecordingWriter::manyLogsAreWritten() {
    QuietWriter writer;
    QVERIFY(writer.open(m_path, m_info));
    const QString text(1000, QLatin1Char('x'));
    for (int i = 0; i < 100; ++i) {
        writer.appendLog(RecordingFormat::Severity::Info, text);
    }
    QVERIFY(RecordingParser::parseFile(m_path).logs().size() > 50);
    writer.close();
    QCOMPARE(RecordingParser::parseFile(m_path).logs().size(), 100);
}

void tst_RecordingWriter::withoutCloseThereIsNoEnd() {
    {
        QuietWriter writer;
        QVERIFY(writer.open(m_path, m_info));
        QVERIFY(send(writer, "message"));
    }
    const RecordingParser parsed = RecordingParser::parseFile(m_path);
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.messages().size(), 1);
    QVERIFY(!parsed.hasEnd());
}

void tst_RecordingWriter::closeTwice() {
    QuietWriter writer;
    writer.close();
    QVERIFY(writer.open(m_path, m_info));
    writer.close();
    writer.close();
    QCOMPARE(RecordingParser::parseFile(m_path).frames.size(), 2);
}

void tst_RecordingWriter::nothingAfterClose() {
    QuietWriter writer;
    QVERIFY(!send(writer, "before"));
    QVERIFY(writer.open(m_path, m_info));
    writer.close();
    const QByteArray before = contents(m_path);
    QVERIFY(!send(writer, "after"));
    writer.appendLog(RecordingFormat::Severity::Info, QStringLiteral("after"));
    QCOMPARE(contents(m_path), before);
}

void tst_RecordingWriter::timesDoNotRunBackwards() {
    QuietWriter writer;
    QVERIFY(writer.open(m_path, m_info));
    for (int i = 0; i < 50; ++i) {
        QVERIFY(send(writer, "message"));
        writer.appendLog(RecordingFormat::Severity::Info, QStringLiteral("line"));
    }
    writer.close();
    quint64 last = 0;
    const auto frames = RecordingParser::parseFile(m_path).frames;
    for (const auto& frame : frames) {
        QVERIFY(frame.time >= last);
        last = frame.time;
    }
    QVERIFY(last > 0);
}

void tst_RecordingWriter::folderThatIsNotThere() {
    const QString path = m_dir->filePath(QStringLiteral("none/file.uirec"));
    expectWarning(QStringLiteral("recording-not-made: cannot make the recording %1: No such file "
                                 "or directory; nothing is recorded, check that its folder exists "
                                 "and can be written")
                      .arg(path));
    QuietWriter writer;
    QVERIFY(!writer.open(path, m_info));
    QVERIFY(!writer.isOpen());
    QVERIFY(!send(writer, "message"));
    writer.close();
}

void tst_RecordingWriter::descriptorThatTheApplicationClosed() {
    QuietWriter writer;
    writer.setShared(false);
    QVERIFY(writer.open(m_path, m_info));
    const QByteArray before = contents(m_path);
    ::close(descriptorOf(m_path));
    expectWarning(QRegularExpression(
        QStringLiteral("recording-ended: .*its file was closed by the application.*")));
    QVERIFY(!send(writer, "lost"));
    QVERIFY(!send(writer, "lost too"));
    QCOMPARE(contents(m_path), before);
}

void tst_RecordingWriter::forkedChildDoesNotWrite() {
    QuietWriter writer;
    QVERIFY(writer.open(m_path, m_info));
    const pid_t child = fork();
    if (child == 0) {
        const bool sent = send(writer, "from the child");
        writer.appendLog(RecordingFormat::Severity::Info, QString(100000, QLatin1Char('x')));
        writer.close();
        _exit(sent ? 1 : 0);
    }
    int status = -1;
    QCOMPARE(waitpid(child, &status, 0), child);
    QCOMPARE(status, 0);
    QVERIFY(send(writer, "from the parent"));
    writer.close();
    const RecordingParser parsed = RecordingParser::parseFile(m_path);
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.frames.size(), 3);
    QCOMPARE(parsed.messages().first().arguments.last().toByteArray(),
             QByteArray("from the parent"));
}

void tst_RecordingWriter::survivesKill() {
    const pid_t child = fork();
    if (child == 0) {
        QuietWriter writer;
        writer.open(m_path, m_info);
        for (int i = 0; i < 1000; ++i) {
            send(writer, QByteArray::number(i));
        }
        _exit(raise(SIGKILL));
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status));
    const RecordingParser parsed = RecordingParser::parseFile(m_path);
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.messages().size(), 1000);
    QVERIFY(!parsed.hasEnd());
}

void tst_RecordingWriter::messageThatIsRefused() {
    QuietWriter writer;
    QVERIFY(writer.open(m_path, m_info));
    Vorsk::ArgumentList tooMany;
    for (int i = 0; i < 256; ++i) {
        tooMany.append(i);
    }
    expectWarning(QRegularExpression(QStringLiteral("message-refused: .*data.*")));
    QVERIFY(!writer.appendMessage(1, QStringLiteral("data"), tooMany));
    QVERIFY(!writer.appendMessage(1, QStringLiteral("data"), tooMany));
    QVERIFY(send(writer, "the next one"));
    writer.close();
    QCOMPARE(RecordingParser::parseFile(m_path).messagesAccordingToEnd(), qint64(1));
}

QTEST_GUILESS_MAIN(tst_RecordingWriter)
#include "tst_recordingwriter.moc"
