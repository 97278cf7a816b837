// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordingformat/sharedheader.h"

#include <QtEndian>

#include <atomic>
#include <cstddef>
#include <cstring>

#include <unistd.h>

namespace RecordingFormat {

namespace {

/** The first bytes of a frame, by which it is there. */
constexpr std::size_t lengthSize = sizeof(quint32);

bool writeAt(int descriptor, quint64 place, const char* bytes, std::size_t size) {
    return ::pwrite(descriptor, bytes, size, static_cast<off_t>(place)) ==
           static_cast<ssize_t>(size);
}

} // namespace

quint64 SharedHeader::load(int offset) const {
    return qFromBigEndian(__atomic_load_n(field(offset), __ATOMIC_ACQUIRE));
}

void SharedHeader::store(int offset, quint64 value) const {
    __atomic_store_n(field(offset), qToBigEndian(value), __ATOMIC_RELEASE);
}

bool SharedHeader::tryReserve(quint64& place, quint64 length) const {
    quint64 expected = qToBigEndian(place);
    if (__atomic_compare_exchange_n(field(endOffset), &expected, qToBigEndian(place + length),
                                    false, __ATOMIC_ACQ_REL, __ATOMIC_ACQUIRE)) {
        return true;
    }
    place = qFromBigEndian(expected);
    return false;
}

void SharedHeader::hold(quint64 place, quint64 length) const {
    store(heldLengthOffset, length);
    store(heldPlaceOffset, place);
}

void SharedHeader::releaseHeldPlace() const {
    store(heldPlaceOffset, 0);
}

void commit(char* target, const QByteArray& frames) {
    const auto size = static_cast<std::size_t>(frames.size());
    std::memcpy(target + lengthSize, frames.constData() + lengthSize, size - lengthSize);
    std::atomic_thread_fence(std::memory_order_release);
    std::memcpy(target, frames.constData(), lengthSize);
}

bool commit(int descriptor, quint64 place, const QByteArray& frame) {
    const auto size = static_cast<std::size_t>(frame.size());
    return writeAt(descriptor, place + lengthSize, frame.constData() + lengthSize,
                   size - lengthSize) &&
           writeAt(descriptor, place, frame.constData(), lengthSize);
}

} // namespace RecordingFormat
