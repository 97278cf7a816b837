// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/configuration.h"
#include "coverage/coverageresult.h"
#include "recording/recordingreader.h"
#include "report/jsonreport.h"
#include "run/runloader.h"
#include "scratchfile.h"
#include "testlib/testcase.h"

#include <QTest>
#include <QtEndian>

#include <zlib.h>

using Uicov::Base::Message;
using Uicov::Recording::Ending;
using Uicov::Recording::Frame;
using Uicov::Recording::RecordingReader;
using Uicov::Runs::Run;
using Uicov::Runs::RunLoader;
using Kind = Uicov::Recording::Ending::Kind;

namespace {

using RecordingFormat::frameHeaderSize;

QByteArray reportOf(const Run& run) {
    const Uicov::Coverage::Configuration configuration;
    Uicov::Coverage::CoverageResult coverage(configuration);
    coverage.add(run);
    coverage.finish();
    return Uicov::Report::JsonReport(coverage).toBytes();
}

} // namespace

/** A recording of a real program, cut off and damaged at every byte. */
class TestDamagedRecording : public TestLib::TestCase {
    Q_OBJECT

    struct Outcome {
        std::optional<Message> problem;
        QVector<QByteArray> bodies;
        Ending ending;
    };

    void write(const QByteArray& bytes) const {
        m_file.setContents(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size()));
    }

    Outcome read() const {
        Outcome outcome;
        RecordingReader reader(m_file.path());
        if (const auto problem = reader.open()) {
            outcome.problem = problem->message;
            return outcome;
        }
        Frame frame;
        while (reader.next(frame)) {
            outcome.bodies.append(frame.body);
        }
        outcome.ending = reader.ending();
        return outcome;
    }

    /** Number of the frame that the byte is in, from 0. */
    int frameAt(int byte) const {
        return static_cast<int>(std::upper_bound(m_starts.cbegin(), m_starts.cend(), byte) -
                                m_starts.cbegin() - 1);
    }

    /** In memory: a disk would take minutes. */
    Fuzz::ScratchFile m_file;
    QByteArray m_golden;
    int m_headerSize = 0;
    /** Whether the header says how much was in the recording. */
    bool m_saysItsEnd = false;
    /** Of each frame, then the end of the file. */
    QVector<int> m_starts;
    Outcome m_whole;

private Q_SLOTS:
    void initTestCase_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("headerSize");
        QTest::newRow("written with write") << "version-1" << RecordingFormat::headerSize;
        QTest::newRow("written through memory") << "version-2" << RecordingFormat::sharedHeaderSize;
    }

    void init() {
        TestCase::init();
        QFETCH_GLOBAL(QString, name);
        QFETCH_GLOBAL(int, headerSize);
        QFile golden(QStringLiteral(UICOV_GOLD_DIR "/recordings/") + name);
        QVERIFY(golden.open(QIODevice::ReadOnly));
        m_golden = golden.readAll();
        m_headerSize = headerSize;
        m_saysItsEnd = headerSize > RecordingFormat::headerSize;
        m_starts.clear();
        for (int at = headerSize; at < m_golden.size();) {
            m_starts.append(at);
            at += frameHeaderSize +
                  static_cast<int>(qFromBigEndian<quint32>(m_golden.constData() + at));
        }
        m_starts.append(m_golden.size());
        write(m_golden);
        m_whole = read();
        QCOMPARE(m_whole.ending.kind, Kind::Complete);
        QCOMPARE(m_whole.bodies.size(), m_starts.size() - 1);
    }

    void theGoldenRecordingReadsWhole() {
        write(m_golden);
        RunLoader loader(m_file.path());
        QVERIFY(!loader.load());
        QVERIFY(loader.problems().isEmpty());
        QVERIFY(loader.run().isComplete);
        QVERIFY(loader.run().elements.size() > 10);
    }

    void cutOffInsideTheHeaderItIsRefused() {
        for (int size = 0; size < m_headerSize; ++size) {
            write(m_golden.left(size));
            QCOMPARE(*read().problem, size == 0 ? Message::InputEmpty : Message::InputTorn);
        }
    }

    void cutOffAtAnyByteThePrefixIsRead() {
        for (int size = m_headerSize; size < m_golden.size(); ++size) {
            write(m_golden.left(size));
            const Outcome outcome = read();
            QVERIFY(!outcome.problem);
            const int frames = frameAt(size);
            QCOMPARE(outcome.bodies, m_whole.bodies.mid(0, frames));
            const int soundBytes = m_starts.at(frames);
            QCOMPARE(outcome.ending.kind,
                     size == soundBytes && !m_saysItsEnd ? Kind::NoEndFrame : Kind::Torn);
            QCOMPARE(outcome.ending.soundBytes, qint64{soundBytes});
            QCOMPARE(outcome.ending.lostBytes,
                     qint64{(m_saysItsEnd ? m_golden.size() : size) - soundBytes});
        }
    }

    void anyByteOfTheHeaderFlippedItIsRefused() {
        for (int at = 0; at < RecordingFormat::headerSize; ++at) {
            QByteArray damaged = m_golden;
            damaged[at] = static_cast<char>(~damaged.at(at));
            write(damaged);
            const bool isVersion = at >= static_cast<int>(sizeof RecordingFormat::magic);
            QCOMPARE(*read().problem, isVersion ? Message::InputNewer : Message::InputForeign);
        }
    }

    /** It is there for those who append, and for what ended on the way. */
    void theRestOfALongerHeaderMattersToNoWholeRecording() {
        for (int at = RecordingFormat::headerSize; at < m_headerSize; ++at) {
            QByteArray damaged = m_golden;
            damaged[at] = static_cast<char>(~damaged.at(at));
            write(damaged);
            const Outcome outcome = read();
            QVERIFY(!outcome.problem);
            QCOMPARE(outcome.bodies, m_whole.bodies);
        }
    }

    /** As a disk leaves it that lost its power: whole blocks of zeros. */
    void zerosInItAreDamage() {
        for (int frame = 0; frame < m_starts.size() - 1; ++frame) {
            QByteArray damaged = m_golden;
            const int start = m_starts.at(frame);
            const int length = m_starts.at(frame + 1) - start;
            damaged.replace(start, length, QByteArray(length, '\0'));
            write(damaged);
            const Outcome outcome = read();
            QCOMPARE(outcome.bodies, m_whole.bodies.mid(0, frame));
            QVERIFY(outcome.ending.kind == Kind::Damaged || outcome.ending.kind == Kind::Torn);
            QCOMPARE(outcome.ending.lostBytes, qint64{m_golden.size() - start});
        }
    }

    void anyByteFlippedThePrefixIsRead() {
        for (int at = m_headerSize; at < m_golden.size(); ++at) {
            QByteArray damaged = m_golden;
            damaged[at] = static_cast<char>(~damaged.at(at));
            write(damaged);
            const Outcome outcome = read();
            QVERIFY(!outcome.problem);
            const int frames = frameAt(at);
            QCOMPARE(outcome.bodies, m_whole.bodies.mid(0, frames));
            QVERIFY(outcome.ending.kind == Kind::Damaged || outcome.ending.kind == Kind::Torn);
            QCOMPARE(outcome.ending.soundBytes, qint64{m_starts.at(frames)});
            QCOMPARE(outcome.ending.lostBytes, qint64{m_golden.size() - m_starts.at(frames)});
        }
    }

    void aReportOfEveryPrefixSaysPartial() {
        for (int frames = 0; frames < m_starts.size() - 1; ++frames) {
            write(m_golden.left(m_starts.at(frames)));
            RunLoader loader(m_file.path());
            QVERIFY(!loader.load());
            QCOMPARE(loader.problems().size(), 1);
            QCOMPARE(loader.problems().first().message,
                     m_saysItsEnd ? Message::RecordingTorn : Message::EndedAbnormally);
            const Run run = loader.run();
            QVERIFY(!run.isComplete);
            QVERIFY(!run.partialReason.isEmpty());
            QVERIFY(reportOf(run).contains("\"complete\": false"));
        }
    }

    /** As if the sender had sent it that way: what the checksum cannot find. */
    void anyByteSentOtherwiseIsReadOrCounted() {
        int runsWithLosses = 0;
        for (int frame = 0; frame < m_starts.size() - 1; ++frame) {
            const int payload = m_starts.at(frame) + frameHeaderSize;
            const int end = m_starts.at(frame + 1);
            for (int at = payload; at < end; ++at) {
                QByteArray damaged = m_golden;
                damaged[at] = static_cast<char>(~damaged.at(at));
                const uLong checksum =
                    crc32(0, reinterpret_cast<const Bytef*>(damaged.constData() + payload),
                          static_cast<uInt>(end - payload));
                qToBigEndian(static_cast<quint32>(checksum), damaged.data() + payload - 4);
                write(damaged);
                RunLoader loader(m_file.path());
                QVERIFY(!loader.load());
                const Run run = loader.run();
                QVERIFY(run.messagesLost <= run.messages);
                QCOMPARE(run.isComplete, loader.problems().isEmpty());
                runsWithLosses += run.messagesLost > 0 ? 1 : 0;
            }
        }
        QVERIFY(runsWithLosses > 0);
    }
};

QTEST_GUILESS_MAIN(TestDamagedRecording)
#include "tst_damagedrecording.moc"
