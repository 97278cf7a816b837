// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/filecontents.h"
#include "host/support/openfiles.h"
#include "host/support/quietwriter.h"
#include "host/support/recordingparser.h"
#include "testlib/testcase.h"
#include "vorskhook/recordingwriter.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

using namespace VorskHost;
using OpenFiles::descriptorOf;

namespace {

int writeCalls = 0;
/** The call that writes only half, and after which every call fails; -1 for none. */
int failingCall = -1;
int failure = 0;

/** As a disk does that becomes full on the way. */
ssize_t failingWrite(int descriptor, const void* data, size_t length) {
    const int call = writeCalls++;
    if (failingCall >= 0 && call > failingCall) {
        errno = failure;
        return -1;
    }
    return ::write(descriptor, data, call == failingCall ? length / 2 : length);
}

/** What the system itself says to a write that there is no room for. */
ssize_t writeToAFullDevice(int descriptor, const void* data, size_t length) {
    if (writeCalls++ < failingCall) {
        return ::write(descriptor, data, length);
    }
    const int device = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
    const ssize_t written = ::write(device, data, length);
    const int error = errno;
    ::close(device);
    errno = error;
    return written;
}

ssize_t reluctantWrite(int descriptor, const void* data, size_t length) {
    if (writeCalls++ % 2 == 0) {
        errno = EINTR;
        return -1;
    }
    return ::write(descriptor, data, std::min<size_t>(length, 3));
}

} // namespace

/** Writes that fail, each in its own way. */
class tst_RecordingWriterFailures : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void shortAndInterruptedWrites();
    void writeThatFails_data();
    void writeThatFails();
    void anyWriteMayFail_data();
    void anyWriteMayFail();
    void deviceThatIsFull();
    void headerThatCannotBeWritten();

private:
    QScopedPointer<QTemporaryDir> m_dir;
    QString m_path;
    RecordingFormat::ProcessInfo m_info{{QStringLiteral("pid"), QStringLiteral("12")}};
};

void tst_RecordingWriterFailures::init() {
    TestCase::init();
    m_dir.reset(new QTemporaryDir);
    m_path = m_dir->filePath(QStringLiteral("r\u00e9 1.uirec"));
    writeCalls = 0;
    failingCall = -1;
}

void tst_RecordingWriterFailures::cleanup() {
    m_dir.reset();
    TestCase::cleanup();
}

void tst_RecordingWriterFailures::shortAndInterruptedWrites() {
    QuietWriter writer;
    writer.setWriteFunction(reluctantWrite);
    QVERIFY(writer.open(m_path, m_info));
    QVERIFY(send(writer, QByteArray(500, 'y')));
    writer.close();
    const RecordingParser parsed = RecordingParser::parseFile(m_path);
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.messages().size(), 1);
    QVERIFY(parsed.hasEnd());
}

void tst_RecordingWriterFailures::writeThatFails_data() {
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("text");
    QTest::newRow("full disk") << ENOSPC << QStringLiteral("No space left on device");
    QTest::newRow("quota") << EDQUOT << QStringLiteral("Disk quota exceeded");
    QTest::newRow("broken pipe") << EPIPE << QStringLiteral("Broken pipe");
    QTest::newRow("input/output") << EIO << QStringLiteral("Input/output error");
}

void tst_RecordingWriterFailures::writeThatFails() {
    QFETCH(int, error);
    QFETCH(QString, text);
    QuietWriter writer;
    writer.setWriteFunction(failingWrite);
    QVERIFY(writer.open(m_path, m_info));
    QVERIFY(send(writer, "kept"));
    const QByteArray before = contents(m_path);
    failure = error;
    failingCall = writeCalls;
    expectWarning(QStringLiteral("recording-ended: cannot write to the recording %1: %2; it ends "
                                 "here and the application goes on, make room or choose another "
                                 "place")
                      .arg(m_path, text));
    QVERIFY(!send(writer, "lost"));
    // Half of the frame was written and is cut off again.
    QCOMPARE(contents(m_path), before);
    QVERIFY(!writer.isOpen());
    QCOMPARE(descriptorOf(m_path), -1);
    // No second warning, no further attempt.
    const int calls = writeCalls;
    QVERIFY(!send(writer, "lost too"));
    writer.appendLog(RecordingFormat::Severity::Info, QString(100000, QLatin1Char('x')));
    writer.close();
    QCOMPARE(writeCalls, calls);
    QCOMPARE(contents(m_path), before);
    QCOMPARE(writer.messagesWritten(), quint64(1));
}

void tst_RecordingWriterFailures::anyWriteMayFail_data() {
    QTest::addColumn<int>("number");
    for (int number = 1; number <= 8; ++number) {
        QTest::newRow(qPrintable(QString::number(number))) << number;
    }
}

/** The one with number 0 is that of the header. */
void tst_RecordingWriterFailures::anyWriteMayFail() {
    QFETCH(int, number);
    QuietWriter writer;
    writer.setWriteFunction(failingWrite);
    failure = EIO;
    failingCall = number;
    QVERIFY(writer.open(m_path, m_info));
    expectWarning(QRegularExpression(QStringLiteral("recording-ended: .*Input/output error.*")));
    int sent = 0;
    while (send(writer, "message")) {
        ++sent;
    }
    QCOMPARE(sent, number - 1);
    const RecordingParser parsed = RecordingParser::parseFile(m_path);
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.messages().size(), sent);
    QVERIFY(!parsed.hasEnd());
}

void tst_RecordingWriterFailures::deviceThatIsFull() {
    QuietWriter writer;
    writer.setWriteFunction(writeToAFullDevice);
    failingCall = 3;
    QVERIFY(writer.open(m_path, m_info));
    QVERIFY(send(writer, "kept"));
    QVERIFY(send(writer, "kept too"));
    expectWarning(QRegularExpression(QStringLiteral("recording-ended: .*No space left.*")));
    QVERIFY(!send(writer, "lost"));
    const RecordingParser parsed = RecordingParser::parseFile(m_path);
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.messages().size(), 2);
}

void tst_RecordingWriterFailures::headerThatCannotBeWritten() {
    QuietWriter writer;
    writer.setWriteFunction(failingWrite);
    failure = ENOSPC;
    failingCall = 0;
    expectWarning(QRegularExpression(QStringLiteral("recording-ended: .*No space.*")));
    QVERIFY(!writer.open(m_path, m_info));
    QVERIFY(!QFile::exists(m_path));
}

QTEST_GUILESS_MAIN(tst_RecordingWriterFailures)
#include "tst_recordingwriterfailures.moc"
