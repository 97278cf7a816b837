// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/framedecoder.h"
#include "recording/recordingreader.h"
#include "testlib/testcase.h"
#include "vorskhook/recordingwriter.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <csignal>

#include <sched.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using Uicov::Recording::Ending;
using Uicov::Recording::Frame;
using Uicov::Recording::RecordingReader;
using VorskHost::RecordingWriter;

namespace {

/** Messages after which the sender is killed, at most; one of them is as large as a picture. */
constexpr int mostMessages = 400;
constexpr int pictureInterval = 16;
constexpr int pictureSize = 256 * 1024;

QByteArray payloadOf(int number) {
    return number % pictureInterval == 0 ? QByteArray(pictureSize, static_cast<char>(number))
                                         : QByteArray(40 + number % 200, static_cast<char>(number));
}

/** Sends until it is killed, and says after each send that it has returned. */
[[noreturn]] void sendForEver(const QString& path, bool isShared, std::atomic<int>& returned) {
    RecordingWriter writer;
    writer.setShared(isShared);
    writer.setTestFunction(VorskHost::TestFunction(nullptr, nullptr, nullptr));
    if (!writer.open(path, {})) {
        _exit(1);
    }
    for (int number = 0;; ++number) {
        if (!writer.appendMessage(1, QStringLiteral("data"), {number, payloadOf(number)})) {
            _exit(1);
        }
        returned.store(number + 1);
    }
}

} // namespace

/** What was sent survives the sender, whenever that is killed. */
class TestKill : public TestLib::TestCase {
    Q_OBJECT

    /** @return the number of messages in the recording; -1 when one of them is not what was sent */
    static int soundMessages(const QString& path, quint32 version, Ending& ending) {
        RecordingReader reader(path);
        if (reader.open() || reader.version() != version) {
            return -1;
        }
        Frame frame;
        int messages = 0;
        while (reader.next(frame)) {
            if (frame.type != RecordingFormat::FrameType::Message) {
                continue;
            }
            const auto message = Uicov::Recording::decodeMessage(frame.body);
            if (!message || message->arguments.at(0).integer != messages ||
                message->arguments.at(1).bytes != payloadOf(messages)) {
                return -1;
            }
            ++messages;
        }
        ending = reader.ending();
        return messages;
    }

    /** Of the recordings that are made there. */
    static quint32 versionIn(const QTemporaryDir& folder, bool isShared) {
        const QString path = folder.filePath(QStringLiteral("first.uirec"));
        RecordingWriter writer;
        writer.setShared(isShared);
        writer.open(path, {});
        RecordingReader reader(path);
        return reader.open() ? 0 : reader.version();
    }

private Q_SLOTS:
    void everyMessageWhoseSendReturnedIsThere_data() {
        QTest::addColumn<bool>("isShared");
        QTest::newRow("written through memory") << true;
        QTest::newRow("written with write") << false;
    }

    /** A hundred times; UICOV_KILLS says another number. */
    void everyMessageWhoseSendReturnedIsThere() {
        QFETCH(bool, isShared);
        constexpr int usualKills = 100;
        bool isNumber = false;
        const int asked = qEnvironmentVariableIntValue("UICOV_KILLS", &isNumber);
        const int kills = isNumber ? asked : usualKills;
        void* const shared = ::mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE,
                                    MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        QVERIFY(shared != MAP_FAILED);
        auto& returned = *new (shared) std::atomic<int>(0);
        QRandomGenerator random(7);
        const QTemporaryDir folder;
        const quint32 version = versionIn(folder, isShared);
        if (isShared && version != RecordingFormat::sharedVersion) {
            QSKIP("the file system of the temporary folder does not keep room that was allocated");
        }
        int recordings = 0;
        qint64 messagesChecked = 0;
        int tornRecordings = 0;
        int recordingsAhead = 0;
        for (int kill = 0; kill < kills; ++kill) {
            const QString path = folder.filePath(QStringLiteral("%1.uirec").arg(kill));
            const int moment = random.bounded(mostMessages);
            int turns = random.bounded(2000);
            returned.store(0);
            const pid_t sender = ::fork();
            if (sender == 0) {
                sendForEver(path, isShared, returned);
            }
            while (returned.load() < moment && ::waitpid(sender, nullptr, WNOHANG) == 0) {
                ::sched_yield();
            }
            while (moment > 0 && turns > 0) {
                returned.load(); // any moment within a send
                --turns;
            }
            QCOMPARE(::kill(sender, SIGKILL), 0);
            int status = 0;
            QCOMPARE(::waitpid(sender, &status, 0), sender);
            QVERIFY(WIFSIGNALED(status));
            if (!QFile::exists(path)) {
                QCOMPARE(returned.load(), 0);
                continue;
            }
            Ending ending;
            const int messages = soundMessages(path, version, ending);
            if (messages < 0 && returned.load() == 0) {
                continue; // killed before the header was whole
            }
            // One more may be there: it was written, and the sender died before it could say so.
            QVERIFY2(messages >= returned.load() && messages <= returned.load() + 1,
                     qPrintable(QStringLiteral("%1 messages, %2 sends returned")
                                    .arg(messages)
                                    .arg(returned.load())));
            QVERIFY(ending.kind == Ending::Kind::NoEndFrame || ending.kind == Ending::Kind::Torn);
            tornRecordings += ending.kind == Ending::Kind::Torn ? 1 : 0;
            ++recordings;
            messagesChecked += messages;
            recordingsAhead += messages > returned.load() ? 1 : 0;
            QVERIFY(QFile::remove(path));
        }
        qInfo("%d kills: %d recordings with %lld messages read, %d torn, %d with a message more "
              "than was told",
              kills, recordings, messagesChecked, tornRecordings, recordingsAhead);
        QVERIFY(messagesChecked > 0);
        ::munmap(shared, sizeof(std::atomic<int>));
    }
};

QTEST_GUILESS_MAIN(TestKill)
#include "tst_kill.moc"
