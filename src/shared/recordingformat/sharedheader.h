// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recordingformat/recordingformat.h"

#include <QByteArray>

/*
 * The append protocol of a recording of version 2, which several processes write at once. There is
 * no lock between the application and anybody else: the application never waits for another
 * process.
 *
 * `end` in the header is the high-water mark. To append is to reserve, then to commit:
 *
 *   reserve  one compare-and-swap moves `end` from P to P + length. Whoever's swap succeeded owns
 * the bytes [P, P + length) and nobody else ever writes there. commit   the frame is written to its
 * place except for its first four bytes, its length; then, behind a release fence, the length.
 *
 * Invariants that readers and writers rely on:
 *
 *   1. `end` never decreases. Places do not overlap, and their order is the order of the swaps.
 *   2. A length of zero marks a frame that is not committed. All bytes of a place are zero when it
 * is reserved: the file is extended with zeros, and only the application zeroes room, at and above
 *      `end`, while it holds the lock of 4.
 *   3. A place that is smaller than `end` and not committed belongs to a writer that is on its way
 * or was killed. The application's own places are committed in order, so only a place of another
 * process can be followed by committed ones.
 *   4. Another process than the application's holds an exclusive flock(2) on the file while it
 * appends, and stores length and place in `held length` and `held place`, in this order, before
 * each attempt to reserve; it zeroes `held place` once the frame is committed. So there is at most
 * one such place at a time. A reader steps over it; the next holder of the lock commits a filler
 * frame there.
 */
namespace RecordingFormat {

/**
 * The fields of the header in memory that is shared with the file. Does not own the memory. All
 * loads acquire and all stores release.
 */
class SharedHeader {
public:
    /** @param memory the first sharedHeaderSize bytes of the file, aligned as mmap() does */
    explicit SharedHeader(void* memory)
        : m_memory(static_cast<char*>(memory)) {}

    quint64 end() const { return load(endOffset); }

    /**
     * Reserves the bytes from the place on if `end` is still there; otherwise gives the present end
     * in place and returns false: somebody else was first.
     */
    bool tryReserve(quint64& place, quint64 length) const;

    quint64 heldPlace() const { return load(heldPlaceOffset); }
    quint64 heldLength() const { return load(heldLengthOffset); }
    /** Says which place is about to be reserved. Needs the lock on the file. */
    void hold(quint64 place, quint64 length) const;
    /** Needs the lock on the file. */
    void releaseHeldPlace() const;

private:
    quint64* field(int offset) const { return reinterpret_cast<quint64*>(m_memory + offset); }
    quint64 load(int offset) const;
    void store(int offset, quint64 value) const;

    char* m_memory;
};

/** Commits one or several whole frames to a place in memory that is shared with the file. */
void commit(char* target, const QByteArray& frames);

/** The same by writing to the file; false when the place could not be written. */
bool commit(int descriptor, quint64 place, const QByteArray& frame);

} // namespace RecordingFormat
