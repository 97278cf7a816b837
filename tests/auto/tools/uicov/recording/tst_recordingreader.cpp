// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/recordingreader.h"
#include "testlib/recordingbuilder.h"
#include "testlib/testcase.h"

#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <sys/resource.h>

using TestLib::RecordingBuilder;
using Uicov::Base::Message;
using Uicov::Recording::Ending;
using Uicov::Recording::Frame;
using Uicov::Recording::RecordingReader;
using Kind = Uicov::Recording::Ending::Kind;

Q_DECLARE_METATYPE(Uicov::Base::Message)

namespace {

constexpr int headerSize = 12;

QByteArray bigEndian(quint32 value) {
    QByteArray bytes(4, Qt::Uninitialized);
    qToBigEndian(value, bytes.data());
    return bytes;
}

} // namespace

class TestRecordingReader : public TestLib::TestCase {
    Q_OBJECT

public:
    struct Outcome {
        std::optional<Message> problem;
        int frames = 0;
        Ending ending;
    };

private:
    Outcome read(const QByteArray& bytes) {
        const QString path = m_folder.filePath(QStringLiteral("x.uirec"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            return {};
        }
        file.close();
        Outcome outcome;
        RecordingReader reader(path);
        if (const auto problem = reader.open()) {
            outcome.problem = problem->message;
            m_text = problem->text;
            return outcome;
        }
        Frame frame;
        while (reader.next(frame)) {
            ++outcome.frames;
        }
        outcome.ending = reader.ending();
        return outcome;
    }

    /** As it is while it is written through shared memory: these frames, and room for more. */
    static QByteArray shared(const QByteArray& frames, qint64 end, int room, qint64 heldPlace = 0,
                             qint64 heldLength = 0) {
        const auto number = [](qint64 value) {
            QByteArray bytes(8, '\0');
            qToBigEndian(value, bytes.data());
            return bytes;
        };
        const QByteArray magic(RecordingFormat::magic, sizeof RecordingFormat::magic);
        return magic + bigEndian(2) + bigEndian(0) + number(end) + number(heldPlace) +
               number(heldLength) + frames + QByteArray(room, '\0');
    }
    static QByteArray frames(const RecordingBuilder& recording) {
        return recording.bytes().mid(RecordingFormat::headerSize);
    }

    QTemporaryDir m_folder;
    QString m_text;

private Q_SLOTS:
    void aCompleteRecording() {
        RecordingBuilder recording;
        recording.addProcess({{QStringLiteral("pid"), QStringLiteral("1")}});
        recording.setTime(77);
        recording.addRecord(7, RecordingBuilder::payload(QStringLiteral("id"), QString()));
        recording.addLog(RecordingFormat::Severity::Info, QStringLiteral("x"));
        recording.addMark(QStringLiteral("a"));
        recording.addEnd();
        const QString path = m_folder.filePath(QStringLiteral("whole.uirec"));
        QVERIFY(recording.write(path));

        RecordingReader reader(path);
        QVERIFY(!reader.open());
        using Type = RecordingFormat::FrameType;
        Frame frame;
        for (const Type type : {Type::Process, Type::Message, Type::Log, Type::Mark, Type::End}) {
            QVERIFY(reader.next(frame));
            QCOMPARE(static_cast<int>(frame.type), static_cast<int>(type));
            QCOMPARE(frame.time, type == Type::Process ? quint64{0} : quint64{77});
        }
        QVERIFY(!reader.next(frame));
        QVERIFY(!reader.next(frame)); // and it stays ended
        QCOMPARE(reader.ending().kind, Kind::Complete);
        QCOMPARE(reader.ending().soundBytes, qint64{recording.bytes().size()});
        QCOMPARE(reader.ending().lostBytes, qint64{0});
    }

    void roomBehindASharedRecordingIsNotPartOfIt() {
        RecordingBuilder recording;
        recording.addProcess({});
        recording.addLog(RecordingFormat::Severity::Info, QStringLiteral("x"));
        const int end = RecordingFormat::sharedHeaderSize + frames(recording).size();
        for (const int room : {0, 1, 3, 7, 8, 100000}) {
            const Outcome outcome = read(shared(frames(recording), end, room));
            QCOMPARE(outcome.frames, 2);
            QCOMPARE(outcome.ending.kind, Ending::Kind::NoEndFrame);
            QCOMPARE(outcome.ending.soundBytes, qint64{end});
            QCOMPARE(outcome.ending.lostBytes, qint64{0});
        }
        recording.addEnd();
        const int whole = RecordingFormat::sharedHeaderSize + frames(recording).size();
        QCOMPARE(read(shared(frames(recording), whole, 0)).ending.kind, Ending::Kind::Complete);
        QCOMPARE(read(shared(frames(recording), whole, 500)).ending.kind, Ending::Kind::Complete);
    }

    void aFrameThatWasBegunAndNotEndedIsTorn() {
        RecordingBuilder recording;
        recording.addProcess({});
        const int end = RecordingFormat::sharedHeaderSize + frames(recording).size();
        const Outcome outcome = read(shared(frames(recording), end + 50, 100));
        QCOMPARE(outcome.frames, 1);
        QCOMPARE(outcome.ending.kind, Ending::Kind::Torn);
        QCOMPARE(outcome.ending.soundBytes, qint64{end});
        QCOMPARE(outcome.ending.lostBytes, qint64{50});
    }

    void aHoleWithOtherFramesBehindItIsTorn() {
        RecordingBuilder before;
        before.addProcess({});
        RecordingBuilder behind;
        behind.addMark(QStringLiteral("lost"));
        const QByteArray all = frames(before) + QByteArray(30, '\0') + frames(behind);
        const Outcome outcome =
            read(shared(all, RecordingFormat::sharedHeaderSize + all.size(), 10));
        QCOMPARE(outcome.frames, 1);
        QCOMPARE(outcome.ending.kind, Ending::Kind::Torn);
        QCOMPARE(outcome.ending.lostBytes, qint64{30 + frames(behind).size()});
    }

    void aHeldPlaceIsSteppedOver() {
        RecordingBuilder before;
        before.addProcess({});
        RecordingBuilder behind;
        behind.addLog(RecordingFormat::Severity::Info, QStringLiteral("x"));
        const QByteArray all = frames(before) + QByteArray(30, '\0') + frames(behind);
        const qint64 end = RecordingFormat::sharedHeaderSize + all.size();
        const qint64 hole = RecordingFormat::sharedHeaderSize + frames(before).size();
        const Outcome outcome = read(shared(all, end, 10, hole, 30));
        QCOMPARE(outcome.frames, 2);
        QCOMPARE(outcome.ending.kind, Ending::Kind::NoEndFrame);
        // One that claims more than there is leads nowhere.
        for (const qint64 length :
             {qint64{0}, qint64{7}, end, std::numeric_limits<qint64>::max()}) {
            QCOMPARE(read(shared(all, end, 10, hole, length)).frames, 1);
        }
    }

    void aHeldPlaceThatIsCutShortIsTorn() {
        RecordingBuilder recording;
        recording.addProcess({});
        const QByteArray all = frames(recording);
        const qint64 hole = RecordingFormat::sharedHeaderSize + all.size();
        for (int there = 8; there < 30; ++there) {
            const Outcome outcome = read(shared(all, hole + 30, there, hole, 30));
            QCOMPARE(outcome.frames, 1);
            QCOMPARE(outcome.ending.kind, Ending::Kind::Torn);
            QCOMPARE(outcome.ending.soundBytes, hole);
            QCOMPARE(outcome.ending.lostBytes, qint64{30});
        }
    }

    void aFileThatCannotBeUsedSaysWhy_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Message>("message");
        QTest::addColumn<QString>("part");
        const QByteArray magic(RecordingFormat::magic, sizeof RecordingFormat::magic);
        QTest::newRow("empty") << QByteArray() << Message::InputEmpty << "is empty";
        QTest::newRow("text") << QByteArray("hello, world, this is text") << Message::InputForeign
                              << "is not a recording";
        QTest::newRow("short text")
            << QByteArray("hi") << Message::InputForeign << "is not a recording";
        QTest::newRow("half a magic") << magic.left(3) << Message::InputTorn << "after 3 bytes";
        QTest::newRow("no version") << magic << Message::InputTorn << "after 8 bytes";
        QTest::newRow("line ends changed") << QByteArray("UIREC\n\x1a\0\0\0\1", 12)
                                           << Message::InputForeign << "is not a recording";
        QTest::newRow("newer") << magic + bigEndian(3) << Message::InputNewer
                               << "version 3, and this uicov reads up to version 2";
        QTest::newRow("shared, half a header") << magic + bigEndian(2) + QByteArray(27, '\0')
                                               << Message::InputTorn << "after 39 bytes";
        QTest::newRow("version 0") << magic + bigEndian(0) << Message::InputForeign << "version 0";
    }

    void aFileThatCannotBeUsedSaysWhy() {
        QFETCH(QByteArray, bytes);
        QFETCH(Message, message);
        QFETCH(QString, part);
        const Outcome outcome = read(bytes);
        QVERIFY(outcome.problem);
        QCOMPARE(*outcome.problem, message);
        QVERIFY2(m_text.contains(part), qPrintable(m_text));
    }

    void aMissingFileAndAFolder() {
        QCOMPARE(RecordingReader(m_folder.filePath(QStringLiteral("none"))).open()->message,
                 Message::InputMissing);
        QCOMPARE(RecordingReader(m_folder.path()).open()->message, Message::InputUnreadable);
    }

    void onlyAHeaderEndedAbnormally() {
        const Outcome outcome = read(RecordingBuilder().bytes());
        QVERIFY(!outcome.problem);
        QCOMPARE(outcome.ending.kind, Kind::NoEndFrame);
        QCOMPARE(outcome.frames, 0);
    }

    void withoutAnEndFrameItEndedAbnormally() {
        RecordingBuilder recording;
        recording.addMark(QStringLiteral("a"));
        QCOMPARE(read(recording.bytes()).ending.kind, Kind::NoEndFrame);
    }

    void framesBehindTheEndFrameMeanThatItWasNotTheEnd() {
        RecordingBuilder recording;
        recording.addEnd();
        recording.addLog(RecordingFormat::Severity::Info, QStringLiteral("a"));
        const Outcome outcome = read(recording.bytes());
        QCOMPARE(outcome.frames, 2);
        QCOMPARE(outcome.ending.kind, Kind::NoEndFrame);
    }

    void aMarkThatCameTooLateDoesNotUndoTheEnd() {
        RecordingBuilder recording;
        recording.addEnd();
        recording.addMark(QStringLiteral("a"));
        const Outcome outcome = read(recording.bytes());
        QCOMPARE(outcome.frames, 2);
        QCOMPARE(outcome.ending.kind, Kind::Complete);
    }

    void anEndFrameThatCountedOtherwiseIsDamage() {
        RecordingBuilder recording;
        recording.addRecord(7, QByteArray());
        recording.addEnd(2);
        QCOMPARE(read(recording.bytes()).ending.kind, Kind::Damaged);
    }

    void framesOfUnknownTypesArePassedOver() {
        RecordingBuilder recording;
        recording.addFrame(0, QByteArray("?"));
        recording.addFrame(7, QByteArray("?"));
        recording.addFrame(255, QByteArray());
        recording.addEnd();
        const Outcome outcome = read(recording.bytes());
        QCOMPARE(outcome.frames, 1);
        QCOMPARE(outcome.ending.kind, Kind::Complete);
    }

    void tornAtAnyByteAllBeforeItIsUsed() {
        RecordingBuilder recording;
        QVector<int> frameEnds{headerSize};
        const auto note = [&] { frameEnds.append(recording.bytes().size()); };
        recording.addProcess({{QStringLiteral("pid"), QStringLiteral("1")}});
        note();
        recording.addRecord(7, RecordingBuilder::payload(QStringLiteral("id"), QString()));
        note();
        recording.addEnd();
        note();
        const QByteArray bytes = recording.bytes();
        for (int size = headerSize; size < bytes.size(); ++size) {
            const Outcome outcome = read(bytes.left(size));
            QVERIFY(!outcome.problem);
            const auto end = std::upper_bound(frameEnds.cbegin(), frameEnds.cend(), size) - 1;
            QCOMPARE(outcome.frames, static_cast<int>(end - frameEnds.cbegin()));
            const bool isBetweenFrames = *end == size;
            QCOMPARE(outcome.ending.kind, isBetweenFrames ? Kind::NoEndFrame : Kind::Torn);
            QCOMPARE(outcome.ending.soundBytes, qint64{*end});
            QCOMPARE(outcome.ending.lostBytes, qint64{size - *end});
        }
    }

    void anyByteChangedIsNoticed() {
        RecordingBuilder recording;
        recording.addMark(QStringLiteral("a"));
        const int sound = recording.bytes().size();
        recording.addRecord(7, RecordingBuilder::payload(QStringLiteral("id"), QString()));
        const int damagedEnd = recording.bytes().size();
        recording.addEnd();
        const QByteArray bytes = recording.bytes();
        for (int at = sound; at < damagedEnd; ++at) {
            for (const int mask : {0x01, 0x80, 0xff}) {
                QByteArray damaged = bytes;
                damaged[at] = static_cast<char>(damaged.at(at) ^ mask);
                const Outcome outcome = read(damaged);
                QCOMPARE(outcome.frames, 1);
                QVERIFY(outcome.ending.kind == Kind::Damaged || outcome.ending.kind == Kind::Torn);
                QCOMPARE(outcome.ending.soundBytes, qint64{sound});
                QCOMPARE(outcome.ending.lostBytes, qint64{bytes.size() - sound});
            }
        }
    }

    /** What stood there when the file object read ahead is old. */
    void aFrameThatIsWrittenMeanwhileIsReadFromTheFile() {
        RecordingBuilder one;
        one.addMark(QStringLiteral("a"));
        RecordingBuilder two;
        two.addMark(QStringLiteral("a"));
        two.addEnd();
        const qint64 end = RecordingFormat::sharedHeaderSize + frames(two).size();
        const QString path = m_folder.filePath(QStringLiteral("growing.uirec"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        const QByteArray before = shared(frames(one), end, 4096);
        QCOMPARE(file.write(before), qint64{before.size()});
        RecordingReader reader(path);
        QVERIFY(!reader.open());
        Frame frame;
        QVERIFY(reader.next(frame));
        QVERIFY(file.seek(RecordingFormat::sharedHeaderSize));
        QCOMPARE(file.write(frames(two)), qint64{frames(two).size()});
        QVERIFY(reader.next(frame));
        QCOMPARE(static_cast<int>(frame.type), static_cast<int>(RecordingFormat::FrameType::End));
    }

    void zerosBehindTheLastFrameAreDamage() {
        RecordingBuilder recording;
        recording.addMark(QStringLiteral("a"));
        const Outcome outcome = read(recording.bytes() + QByteArray(4096, '\0'));
        QCOMPARE(outcome.frames, 1);
        QCOMPARE(outcome.ending.kind, Kind::Damaged);
        QCOMPARE(outcome.ending.lostBytes, qint64{4096});
    }

    /** The greatest length that is not damage by itself takes no memory unless the bytes are there.
     */
    void aHugeLengthTakesNoMemory() {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        const long kilobytesBefore = usage.ru_maxrss;
        const QByteArray header = RecordingBuilder().bytes();
        const Outcome outcome =
            read(header + bigEndian(RecordingFormat::maximumPayloadSize) + QByteArray(100, 'x'));
        QCOMPARE(outcome.ending.kind, Kind::Torn);
        getrusage(RUSAGE_SELF, &usage);
        constexpr long allowedKilobytes = 64L * 1024; // of the 512 MB that the length claims
        QVERIFY(usage.ru_maxrss - kilobytesBefore < allowedKilobytes);
        const Outcome tooLong = read(header + bigEndian(RecordingFormat::maximumPayloadSize + 1) +
                                     QByteArray(100, 'x'));
        QCOMPARE(tooLong.ending.kind, Kind::Damaged);
    }

    void looksLikeRecordingTellsByTheStart() {
        const QString path = m_folder.filePath(QStringLiteral("y.uirec"));
        QVERIFY(!RecordingReader::looksLikeRecording(path));
        QVERIFY(RecordingBuilder().write(path));
        QVERIFY(RecordingReader::looksLikeRecording(path));
        QFile file(path);
        QVERIFY(file.resize(7));
        QVERIFY(!RecordingReader::looksLikeRecording(path));
    }

    void endingsReadWell() {
        Ending ending;
        ending.soundBytes = 120;
        ending.lostBytes = 1;
        ending.kind = Kind::Torn;
        QCOMPARE(ending.toString(), QStringLiteral("is torn after 120 bytes: 1 byte is lost"));
        ending.lostBytes = 7;
        ending.kind = Kind::Damaged;
        QCOMPARE(ending.toString(), QStringLiteral("is damaged at byte 120: 7 bytes are lost"));
    }
};

QTEST_GUILESS_MAIN(TestRecordingReader)
#include "tst_recordingreader.moc"
