// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/quietwriter.h"
#include "host/support/recordingparser.h"
#include "testlib/testcase.h"
#include "vorskhook/recordingwriter.h"

#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace VorskHost;

/*
 * Contexts in a recording: marks, and the test functions of a Qt Test program.
 */

namespace {

int writeCalls = 0;

ssize_t countedWrite(int descriptor, const void* data, size_t length) {
    ++writeCalls;
    return ::write(descriptor, data, length);
}

/** What Qt Test is to answer. */
const char* function = nullptr;

TestFunction pretendedTestFunction() {
    return TestFunction([] { return function; }, [] { return static_cast<const char*>(nullptr); },
                        [] { return static_cast<QObject*>(nullptr); });
}

/** Marks in brackets, "message" and "log". */
QStringList sequence(const QString& path) {
    constexpr int textStart = 4;
    const RecordingParser parsed = RecordingParser::parseFile(path);
    QStringList steps;
    for (const RecordingParser::Frame& frame : parsed.frames) {
        if (frame.type == 2) {
            steps.append(QStringLiteral("message"));
        } else if (frame.type == 3) {
            steps.append(QStringLiteral("log"));
        } else if (frame.type == 4) {
            steps.append(QLatin1Char('[') + QString::fromUtf8(frame.body.mid(textStart)) +
                         QLatin1Char(']'));
        }
    }
    return parsed.error.isEmpty() ? steps : QStringList{parsed.error};
}

} // namespace

class tst_RecordingWriterMarks : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aMarkIsWrittenAtOnce();
    void aTestFunctionIsMarkedInFrontOfItsFirstMessage();
    void aTestFunctionWithoutMessagesIsNotMarked();
    void ofAMarkAndATestFunctionTheLaterCounts();
    void aRefusedMessageDoesNotLoseItsMark();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    RecordingFormat::ProcessInfo m_info{{QStringLiteral("pid"), QStringLiteral("12")}};
};

void tst_RecordingWriterMarks::init() {
    TestCase::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath(QStringLiteral("r.uirec"));
    writeCalls = 0;
    function = nullptr;
}

void tst_RecordingWriterMarks::cleanup() {
    m_folder.reset();
    TestCase::cleanup();
}

void tst_RecordingWriterMarks::aMarkIsWrittenAtOnce() {
    RecordingWriter writer;
    writer.setTestFunction(pretendedTestFunction());
    writer.mark(QStringLiteral("too early"));
    QVERIFY(writer.open(m_path, m_info));
    writer.mark(QStringLiteral("r\u00e9"));
    QCOMPARE(sequence(m_path), QStringList{QStringLiteral("[r\u00e9]")});
    writer.mark(QString());
    writer.close();
    writer.mark(QStringLiteral("too late"));
    QCOMPARE(sequence(m_path), QStringList({QStringLiteral("[r\u00e9]"), QStringLiteral("[]")}));
}

void tst_RecordingWriterMarks::aTestFunctionIsMarkedInFrontOfItsFirstMessage() {
    RecordingWriter writer;
    writer.setTestFunction(pretendedTestFunction());
    writer.setWriteFunction(countedWrite);
    QVERIFY(writer.open(m_path, m_info));
    QVERIFY(send(writer, "before"));
    function = "first";
    writer.appendLog(RecordingFormat::Severity::Info, QStringLiteral("waits"));
    QVERIFY(send(writer, "1"));
    QVERIFY(send(writer, "2"));
    function = "second";
    QVERIFY(send(writer, "3"));
    function = nullptr;
    QVERIFY(send(writer, "after"));
    QCOMPARE(writeCalls, 6); // one for the start, one for each message
    writer.close();
    QCOMPARE(sequence(m_path),
             QStringList(
                 {QStringLiteral("message"), QStringLiteral("log"), QStringLiteral("[first]"),
                  QStringLiteral("message"), QStringLiteral("message"), QStringLiteral("[second]"),
                  QStringLiteral("message"), QStringLiteral("[]"), QStringLiteral("message")}));
}

void tst_RecordingWriterMarks::aTestFunctionWithoutMessagesIsNotMarked() {
    RecordingWriter writer;
    writer.setTestFunction(pretendedTestFunction());
    QVERIFY(writer.open(m_path, m_info));
    function = "sends";
    QVERIFY(send(writer, "1"));
    function = "silent";
    writer.appendLog(RecordingFormat::Severity::Info, QStringLiteral("only a line"));
    function = "sends";
    QVERIFY(send(writer, "2"));
    function = "last";
    writer.close();
    QCOMPARE(sequence(m_path), QStringList({QStringLiteral("[sends]"), QStringLiteral("message"),
                                            QStringLiteral("log"), QStringLiteral("message")}));
}

void tst_RecordingWriterMarks::ofAMarkAndATestFunctionTheLaterCounts() {
    RecordingWriter writer;
    writer.setTestFunction(pretendedTestFunction());
    QVERIFY(writer.open(m_path, m_info));
    function = "one";
    QVERIFY(send(writer, "1"));
    writer.mark(QStringLiteral("outside"));
    QVERIFY(send(writer, "2"));
    function = "two";
    QVERIFY(send(writer, "3"));
    writer.close();
    QCOMPARE(sequence(m_path), QStringList({QStringLiteral("[one]"), QStringLiteral("message"),
                                            QStringLiteral("[outside]"), QStringLiteral("message"),
                                            QStringLiteral("[two]"), QStringLiteral("message")}));
}

void tst_RecordingWriterMarks::aRefusedMessageDoesNotLoseItsMark() {
    RecordingWriter writer;
    writer.setTestFunction(pretendedTestFunction());
    QVERIFY(writer.open(m_path, m_info));
    function = "one";
    Vorsk::ArgumentList tooMany;
    for (int i = 0; i < 256; ++i) {
        tooMany.append(i);
    }
    expectWarning(QRegularExpression(QStringLiteral("message-refused: .*")));
    QVERIFY(!writer.appendMessage(7, QStringLiteral("data"), tooMany));
    QVERIFY(send(writer, "1"));
    writer.close();
    QCOMPARE(sequence(m_path), QStringList({QStringLiteral("[one]"), QStringLiteral("message")}));
}

QTEST_GUILESS_MAIN(tst_RecordingWriterMarks)
#include "tst_recordingwritermarks.moc"
