// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/framedecoder.h"
#include "recording/markwriter.h"
#include "recording/recordingreader.h"
#include "testlib/recordingbuilder.h"
#include "testlib/testcase.h"
#include "vorskhook/recordingwriter.h"

#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <sys/wait.h>
#include <unistd.h>

using RecordingFormat::FrameType;
using Uicov::Recording::Frame;
using Uicov::Recording::RecordingReader;
using VorskHost::RecordingWriter;

class TestMarkWriter : public TestLib::TestCase {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;

    void open(RecordingWriter& writer) const {
        writer.setTestFunction(VorskHost::TestFunction(nullptr, nullptr, nullptr));
        QVERIFY(
            writer.open(m_path, {qMakePair(QStringLiteral("pid"), QString::number(::getpid()))}));
    }

    /** Writes a number into the recording's header. */
    bool put(int offset, qint64 value) const {
        QFile file(m_path);
        QByteArray bytes(8, '\0');
        qToBigEndian(value, bytes.data());
        return file.open(QIODevice::ReadWrite | QIODevice::Unbuffered) && file.seek(offset) &&
               file.write(bytes) == bytes.size();
    }

    static bool send(RecordingWriter& writer, int number) {
        return writer.appendMessage(1, QString::number(number), Vorsk::ArgumentList());
    }

    /** Messages by their name, marks in brackets, and how it ended. */
    QStringList frames() const {
        RecordingReader reader(m_path);
        QStringList lines;
        Frame frame;
        quint64 lastTime = 0;
        if (reader.open()) {
            return {};
        }
        while (reader.next(frame)) {
            if (frame.type == FrameType::Message) {
                lines.append(Uicov::Recording::decodeMessage(frame.body)->name);
            } else if (frame.type == FrameType::Mark) {
                lines.append(QLatin1Char('[') + *Uicov::Recording::decodeMark(frame.body) +
                             QLatin1Char(']'));
            }
            if (frame.time + 1000000 < lastTime) {
                lines.append(QStringLiteral("time runs backwards"));
            }
            lastTime = frame.time;
        }
        return lines << (reader.ending().isComplete() ? QStringLiteral("complete")
                                                      : reader.ending().toString());
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral("x.uirec"));
    }

    void cleanup() { TestLib::TestCase::cleanup(); }

    void aMarkStandsExactlyBetweenTwoMessages() {
        RecordingWriter writer;
        open(writer);
        QStringList expected;
        for (int i = 0; i < 50; ++i) {
            QVERIFY(send(writer, i));
            QVERIFY(Uicov::Recording::appendMark(m_path, QStringLiteral("test %1").arg(i)));
            expected << QString::number(i) << QStringLiteral("[test %1]").arg(i);
        }
        QVERIFY(send(writer, 50));
        writer.close();
        QCOMPARE(frames(), expected << QStringLiteral("50") << QStringLiteral("complete"));
    }

    void framesStayWholeUnderManyWriters_data() {
        QTest::addColumn<bool>("isShared");
        QTest::newRow("shared memory") << true;
        QTest::newRow("write") << false;
    }

    void framesStayWholeUnderManyWriters() {
        QFETCH(bool, isShared);
        constexpr int markers = 2;
        constexpr int marks = 300;
        RecordingWriter writer;
        writer.setShared(isShared);
        open(writer);
        QVector<pid_t> children;
        for (int marker = 0; marker < markers; ++marker) {
            const pid_t child = ::fork();
            if (child == 0) {
                int failures = 0;
                for (int i = 0; i < marks; ++i) {
                    const QString name = QStringLiteral("%1:%2").arg(marker).arg(i);
                    failures += Uicov::Recording::appendMark(m_path, name) ? 0 : 1;
                }
                ::_exit(failures == 0 ? 0 : 1);
            }
            children.append(child);
        }
        int sent = 0;
        int running = markers;
        while (running > 0) {
            QVERIFY(send(writer, sent++));
            int status = -1;
            if (::waitpid(-1, &status, WNOHANG) > 0) {
                QCOMPARE(status, 0);
                --running;
            }
        }
        writer.close();
        const QStringList lines = frames();
        QCOMPARE(lines.last(), QStringLiteral("complete"));
        QCOMPARE(lines.size(), sent + markers * marks + 1);
        for (int marker = 0; marker < markers; ++marker) {
            const QStringList own = lines.filter(QStringLiteral("[%1:").arg(marker));
            for (int i = 0; i < marks; ++i) {
                QCOMPARE(own.at(i), QStringLiteral("[%1:%2]").arg(marker).arg(i));
            }
        }
    }

    void aMarkBehindTheEndChangesNothing() {
        RecordingWriter writer;
        open(writer);
        QVERIFY(send(writer, 1));
        writer.close();
        QVERIFY(Uicov::Recording::appendMark(m_path, QStringLiteral("late")));
        QCOMPARE(frames().last(), QStringLiteral("complete"));
    }

    void whatAKilledMarkerLeftIsClosed() {
        RecordingWriter writer;
        open(writer);
        QVERIFY(send(writer, 1));
        constexpr qint64 length = 40;
        const qint64 place = writer.bytesWritten();
        QVERIFY(put(RecordingFormat::heldPlaceOffset, place));
        QVERIFY(put(RecordingFormat::heldLengthOffset, length));
        QVERIFY(put(RecordingFormat::endOffset, place + length));
        if (writer.bytesWritten() != place + length) {
            QSKIP("the file system of the temporary folder does not keep room that was allocated");
        }
        QVERIFY(send(writer, 2));
        const QString open =
            QStringLiteral("ended abnormally: the application was killed, crashed or still runs");
        QCOMPARE(frames(), QStringList({QStringLiteral("1"), QStringLiteral("2"), open}));
        QVERIFY(Uicov::Recording::appendMark(m_path, QStringLiteral("a")));
        QVERIFY(Uicov::Recording::appendMark(m_path, QStringLiteral("b")));
        writer.close();
        QCOMPARE(frames(),
                 QStringList({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("[a]"),
                              QStringLiteral("[b]"), QStringLiteral("complete")}));
    }

    void aMarkerThatWasKilledBeforeItTookThePlaceLeavesNothing() {
        RecordingWriter writer;
        open(writer);
        const qint64 place = writer.bytesWritten();
        QVERIFY(put(RecordingFormat::heldPlaceOffset, place));
        QVERIFY(put(RecordingFormat::heldLengthOffset, qint64{40}));
        QVERIFY(send(writer, 1));
        QVERIFY(Uicov::Recording::appendMark(m_path, QStringLiteral("a")));
        QVERIFY(send(writer, 2));
        writer.close();
        QCOMPARE(frames(), QStringList({QStringLiteral("1"), QStringLiteral("[a]"),
                                        QStringLiteral("2"), QStringLiteral("complete")}));
    }

    void aHeldPlaceThatNobodyCanHaveIsLeftAlone_data() {
        QTest::addColumn<qint64>("place"); // negative: that far in front of the end
        QTest::addColumn<qint64>("length");
        QTest::newRow("shorter than a frame") << qint64{-40} << qint64{7};
        QTest::newRow("beyond the end") << qint64{-40} << qint64{41};
        QTest::newRow("round the corner") << qint64{-40} << qint64{-1};
        QTest::newRow("in the header") << qint64{8} << qint64{24};
    }

    void aHeldPlaceThatNobodyCanHaveIsLeftAlone() {
        QFETCH(qint64, place);
        QFETCH(qint64, length);
        RecordingWriter writer;
        open(writer);
        QVERIFY(send(writer, 1));
        const qint64 end = writer.bytesWritten() + 40;
        QVERIFY(put(RecordingFormat::endOffset, end));
        if (writer.bytesWritten() != end) {
            QSKIP("the file system of the temporary folder does not keep room that was allocated");
        }
        QVERIFY(put(RecordingFormat::heldPlaceOffset, place < 0 ? end + place : place));
        QVERIFY(put(RecordingFormat::heldLengthOffset, length));
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray before = file.readAll().left(static_cast<int>(end));
        QVERIFY(Uicov::Recording::appendMark(m_path, QStringLiteral("a")));
        QVERIFY(file.seek(0));
        const QByteArray after = file.readAll().left(static_cast<int>(end));
        // But for the numbers in the header, which the mark has moved.
        QCOMPARE(after.left(RecordingFormat::endOffset), before.left(RecordingFormat::endOffset));
        QCOMPARE(after.mid(RecordingFormat::sharedHeaderSize),
                 before.mid(RecordingFormat::sharedHeaderSize));
        writer.close();
    }

    void onlyARecordingOfALivingProcessIsMarked() {
        const auto untouched = [this](const QByteArray& bytes) {
            QFile file(m_path);
            const bool isWritten =
                file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
            file.close();
            const bool isMarked = Uicov::Recording::appendMark(m_path, QStringLiteral("x"));
            return isWritten && !isMarked && file.size() == bytes.size();
        };
        QVERIFY(untouched("my notes"));
        QVERIFY(untouched(""));
        QVERIFY(untouched(TestLib::RecordingBuilder().bytes()));
        const pid_t child = ::fork();
        if (child == 0) {
            ::_exit(0);
        }
        ::waitpid(child, nullptr, 0);
        TestLib::RecordingBuilder dead;
        dead.addProcess({{QStringLiteral("pid"), QString::number(child)}});
        QVERIFY(untouched(dead.bytes()));
        QVERIFY(
            !Uicov::Recording::appendMark(m_folder->filePath(QStringLiteral("none")), QString()));
    }

    void aLinkIsNotFollowed() {
        RecordingWriter writer;
        open(writer);
        const QString link = m_folder->filePath(QStringLiteral("link"));
        QVERIFY(QFile::link(m_path, link));
        QVERIFY(!Uicov::Recording::appendMark(link, QStringLiteral("x")));
    }

    void aFailedMessageIsCutOffAndMarksBeforeItStay() {
        RecordingWriter writer;
        writer.setShared(false);
        open(writer);
        QVERIFY(send(writer, 1));
        QVERIFY(Uicov::Recording::appendMark(m_path, QStringLiteral("a")));
        writer.setWriteFunction([](int descriptor, const void* data, size_t size) -> ssize_t {
            // Half of it, then the disk is full.
            static bool isFull = false;
            isFull = !isFull;
            if (isFull) {
                return ::write(descriptor, data, size / 2);
            }
            errno = ENOSPC;
            return -1;
        });
        expectWarning(QRegularExpression(QStringLiteral("recording-ended: .*")));
        QVERIFY(!send(writer, 2));
        QCOMPARE(frames().mid(0, 2), QStringList({QStringLiteral("1"), QStringLiteral("[a]")}));
        QVERIFY2(frames().last().startsWith(QStringLiteral("ended abnormally")),
                 qPrintable(frames().last()));
    }
};

QTEST_GUILESS_MAIN(TestMarkWriter)
#include "tst_markwriter.moc"
