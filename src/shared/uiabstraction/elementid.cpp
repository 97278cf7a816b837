// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "uiabstraction/elementid.h"

#include <QString>
#include <QUuid>

#include <array>
#include <cstring>
#include <random>

#include <pthread.h>

namespace Vorsk {
namespace UIAbstraction {

namespace {

using Generator = std::mt19937_64;

/** Begun with as much that is random as 32 ids have. */
Generator seeded() {
    constexpr std::size_t ids = 32;
    std::array<quint32, ids * sizeof(QUuid) / sizeof(quint32)> random{};
    for (std::size_t i = 0; i < ids; ++i) {
        const QUuid id = QUuid::createUuid();
        std::memcpy(random.data() + i * sizeof id / sizeof(quint32), &id.data1, sizeof id);
    }
    std::seed_seq sequence(random.cbegin(), random.cend());
    return Generator(sequence);
}

/** A forked child would go on with its parent's ids. */
bool isForked = false;

} // namespace

QString newElementId() {
    static bool isWatchingForks = false;
    if (!isWatchingForks) {
        isWatchingForks = ::pthread_atfork(nullptr, nullptr, [] { isForked = true; }) == 0;
    }
    static Generator generator = seeded();
    if (isForked) {
        generator = seeded();
        isForked = false;
    }
    const quint64 high = generator();
    const quint64 low = generator();
    const auto byteOf = [](quint64 number, unsigned place) {
        return static_cast<uchar>(number >> (8U * place));
    };
    constexpr uint version = 0x4000;
    constexpr uint versionMask = 0x0FFF;
    constexpr uchar variant = 0x80;
    constexpr uchar variantMask = 0x3F;
    return QUuid(static_cast<uint>(high >> 32U), static_cast<ushort>(high >> 16U),
                 static_cast<ushort>((high & versionMask) | version),
                 static_cast<uchar>((byteOf(low, 7) & variantMask) | variant), byteOf(low, 6),
                 byteOf(low, 5), byteOf(low, 4), byteOf(low, 3), byteOf(low, 2), byteOf(low, 1),
                 byteOf(low, 0))
        .toString();
}

} // namespace UIAbstraction
} // namespace Vorsk
