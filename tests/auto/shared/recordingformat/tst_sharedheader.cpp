// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordingformat/frames.h"
#include "recordingformat/sharedheader.h"
#include "testlib/testcase.h"

#include <QTemporaryFile>
#include <QTest>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <thread>
#include <vector>

using RecordingFormat::SharedHeader;

namespace {

constexpr quint64 headerEnd = RecordingFormat::sharedHeaderSize;

/** A header as it is in a new file, aligned as mapped memory is. */
struct Memory {
    Memory() {
        const QByteArray header = RecordingFormat::fileHeader(RecordingFormat::sharedVersion);
        std::copy(header.cbegin(), header.cend(), bytes.begin());
    }

    quint64 at(int offset) const { return qFromBigEndian<quint64>(bytes.data() + offset); }

    alignas(quint64) std::array<char, RecordingFormat::sharedHeaderSize> bytes{};
};

} // namespace

class tst_SharedHeader : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void reservingMovesTheEnd() {
        Memory memory;
        const SharedHeader header(memory.bytes.data());
        QCOMPARE(header.end(), headerEnd);
        quint64 place = header.end();
        QVERIFY(header.tryReserve(place, 17));
        QCOMPARE(place, headerEnd);
        QCOMPARE(header.end(), headerEnd + 17);
        QCOMPARE(memory.at(RecordingFormat::endOffset), headerEnd + 17);
    }

    void whoComesSecondIsGivenThePresentEnd() {
        Memory memory;
        const SharedHeader header(memory.bytes.data());
        quint64 first = header.end();
        quint64 second = first;
        QVERIFY(header.tryReserve(first, 10));
        QVERIFY(!header.tryReserve(second, 20));
        QCOMPARE(second, headerEnd + 10);
        QCOMPARE(header.end(), headerEnd + 10);
        QVERIFY(header.tryReserve(second, 20));
        QCOMPARE(header.end(), headerEnd + 30);
    }

    void placesOfManyWritersDoNotOverlap() {
        Memory memory;
        const SharedHeader header(memory.bytes.data());
        constexpr int writers = 4;
        constexpr int frames = 1000;
        constexpr quint64 length = 3;
        std::array<std::vector<quint64>, writers> places;
        std::vector<std::thread> threads;
        for (std::vector<quint64>& own : places) {
            threads.emplace_back([&header, &own] {
                for (int i = 0; i < frames; ++i) {
                    quint64 place = header.end();
                    while (!header.tryReserve(place, length)) {
                    }
                    own.push_back(place);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        std::vector<quint64> all;
        for (const std::vector<quint64>& own : places) {
            QVERIFY(std::is_sorted(own.cbegin(), own.cend()));
            all.insert(all.end(), own.cbegin(), own.cend());
        }
        std::sort(all.begin(), all.end());
        for (std::size_t i = 0; i < all.size(); ++i) {
            QCOMPARE(all[i], headerEnd + i * length);
        }
        QCOMPARE(header.end(), headerEnd + all.size() * length);
    }

    void heldPlaceIsThereUntilItIsReleased() {
        Memory memory;
        const SharedHeader header(memory.bytes.data());
        QCOMPARE(header.heldPlace(), quint64{0});
        header.hold(100, 30);
        QCOMPARE(header.heldPlace(), quint64{100});
        QCOMPARE(header.heldLength(), quint64{30});
        QCOMPARE(memory.at(RecordingFormat::heldPlaceOffset), quint64{100});
        QCOMPARE(memory.at(RecordingFormat::heldLengthOffset), quint64{30});
        header.releaseHeldPlace();
        QCOMPARE(header.heldPlace(), quint64{0});
    }

    void committedFramesAreInMemoryAndFileAlike() {
        const QByteArray frame = RecordingFormat::markFrame(5, QStringLiteral("name"));
        QByteArray memory(frame.size() + 2, '\0');
        RecordingFormat::commit(memory.data() + 1, frame);
        QCOMPARE(memory, '\0' + frame + '\0');
        QTemporaryFile file;
        QVERIFY(file.open());
        QVERIFY(RecordingFormat::commit(file.handle(), 3, frame));
        QCOMPARE(file.readAll(), QByteArray(3, '\0') + frame);
    }

    void commitToAFileThatCannotBeWrittenFails() {
        QVERIFY(!RecordingFormat::commit(-1, 0, RecordingFormat::markFrame(0, QString())));
    }

    void fillerFrameIsOfTheLengthAsked() {
        constexpr quint64 least = RecordingFormat::frameHeaderSize;
        for (quint64 length = least; length < least + 20; ++length) {
            const QByteArray frame = RecordingFormat::fillerFrame(length);
            QCOMPARE(static_cast<quint64>(frame.size()), length);
            QCOMPARE(quint64{qFromBigEndian<quint32>(frame.constData())}, length - least);
        }
    }
};

QTEST_GUILESS_MAIN(tst_SharedHeader)
#include "tst_sharedheader.moc"
