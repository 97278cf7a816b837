// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Any file as a recording: what is read is a prefix that is sound, and the rest is counted as lost.

#include "acceptance.h"
#include "framewalk.h"
#include "fuzzcheck.h"
#include "recording/framedecoder.h"
#include "recording/recordingreader.h"
#include "scratchfile.h"

#include <QtEndian>

#include <ctime>
#include <vector>

using Uicov::Recording::Ending;
using Uicov::Recording::Frame;
using Uicov::Recording::RecordingReader;

namespace {

struct Outcome {
    bool isOpen = false;
    quint64 frames = 0;
    Ending ending;
};

void decodeBody(const Frame& frame) {
    Uicov::Recording::decodeProcess(frame.body);
    Uicov::Recording::decodeMessage(frame.body);
    Uicov::Recording::decodeLog(frame.body);
    Uicov::Recording::decodeMark(frame.body);
    Uicov::Recording::decodeEnd(frame.body);
}

Outcome read(const QString& path) {
    Outcome outcome;
    RecordingReader reader(path);
    const auto problem = reader.open();
    outcome.isOpen = !problem;
    if (problem) {
        FUZZ_CHECK(problem->text.startsWith(path));
        return outcome;
    }
    Frame frame;
    while (reader.next(frame)) {
        decodeBody(frame);
        ++outcome.frames;
    }
    FUZZ_CHECK(!reader.next(frame));
    outcome.ending = reader.ending();
    return outcome;
}

} // namespace

#ifdef UICOV_BUILD_FUZZERS
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size,
                                        std::size_t maximumSize);

/**
 * Every other change keeps the frames' checksums right, or none would be seen behind them; and
 * every third the place where the frames end, or what is behind it would hardly ever be.
 */
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maximumSize, unsigned seed) {
    const std::size_t newSize = LLVMFuzzerMutate(data, size, maximumSize);
    Fuzz::FrameWalk walk(data, newSize);
    while (walk.next() && walk.payloadSize() > 0) {
        if (seed % 2 == 0) {
            walk.repairChecksum();
        }
    }
    if (seed % 3 == 0) {
        walk.endHere();
    }
    return newSize;
}
#endif

/** Nothing else writes to the file, so that waiting for a frame to appear would only take time. */
extern "C" int nanosleep(const timespec*, timespec*) {
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Fuzz::ScratchFile file;
    file.setContents(data, size);
    const Outcome whole = read(file.path());
    if (!whole.isOpen) {
        return 0;
    }
    Fuzz::Acceptance::note();
    std::vector<std::uint8_t> prefix(data, data + size);
    Fuzz::FrameWalk walk(prefix.data(), prefix.size());
    const Ending& ending = whole.ending;
    FUZZ_CHECK(ending.soundBytes >= 0 && ending.soundBytes <= static_cast<qint64>(size));
    FUZZ_CHECK(ending.lostBytes >= 0);
    FUZZ_CHECK(walk.isShared() ||
               ending.soundBytes + ending.lostBytes == static_cast<qint64>(size));
    FUZZ_CHECK(!ending.isComplete() || ending.lostBytes == 0);
    FUZZ_CHECK(ending.kind != Ending::Kind::Torn || ending.lostBytes > 0);

    // What is said to be sound is: alone, it reads as it did, with nothing lost.
    prefix.resize(static_cast<std::size_t>(ending.soundBytes));
    if (walk.isShared()) {
        qToBigEndian(ending.soundBytes, prefix.data() + RecordingFormat::endOffset);
    }
    file.setContents(prefix.data(), prefix.size());
    const Outcome sound = read(file.path());
    FUZZ_CHECK(sound.isOpen);
    FUZZ_CHECK(sound.frames == whole.frames);
    FUZZ_CHECK(sound.ending.lostBytes == 0);
    return 0;
}
