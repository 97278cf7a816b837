// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "checksum/crc32.h"

#include <QtEndian>

#include <array>

#if defined(__x86_64__)
#include <immintrin.h>
#elif defined(__aarch64__)
#include <arm_acle.h>
#include <sys/auxv.h>
#endif

namespace Checksum {

namespace {

/** Bytes that one look into each table takes in. */
constexpr std::size_t slice = 8;

using Table = std::array<quint32, 256>;

/** The first is the usual one; number n is for a byte with n bytes behind it. */
constexpr std::array<Table, slice> makeTables() {
    std::array<Table, slice> tables{};
    for (quint32 i = 0; i < 256; ++i) {
        quint32 value = i;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value & 1U) != 0 ? 0xEDB88320U ^ (value >> 1U) : value >> 1U;
        }
        tables[0][i] = value;
    }
    for (std::size_t n = 1; n < slice; ++n) {
        for (quint32 i = 0; i < 256; ++i) {
            const quint32 before = tables[n - 1][i];
            tables[n][i] = tables[0][before & 0xFFU] ^ (before >> 8U);
        }
    }
    return tables;
}

constexpr std::array<Table, slice> tables = makeTables();

/** Takes the bytes into the state, which is the complement of the checksum so far. */
quint32 updatedByTables(quint32 state, const char* data, std::size_t size) {
    for (; size >= slice; data += slice, size -= slice) {
        const quint32 low = state ^ qFromLittleEndian<quint32>(data);
        const auto high = qFromLittleEndian<quint32>(data + sizeof low);
        state = tables[7][low & 0xFFU] ^ tables[6][(low >> 8U) & 0xFFU] ^
                tables[5][(low >> 16U) & 0xFFU] ^ tables[4][low >> 24U] ^ tables[3][high & 0xFFU] ^
                tables[2][(high >> 8U) & 0xFFU] ^ tables[1][(high >> 16U) & 0xFFU] ^
                tables[0][high >> 24U];
    }
    for (; size > 0; ++data, --size) {
        state = tables[0][(state ^ static_cast<quint8>(*data)) & 0xFFU] ^ (state >> 8U);
    }
    return state;
}

using Update = quint32 (*)(quint32 state, const char* data, std::size_t size);

#if defined(__x86_64__)

constexpr std::size_t lane = sizeof(__m128i);

/** Folds each 16 bytes onto the next, so that 16 with the same remainder are left for the tables.
 */
__attribute__((target("sse2,pclmul"))) quint32 updatedByFolding(quint32 state, const char* data,
                                                                std::size_t size) {
    if (size < 2 * lane) {
        return updatedByTables(state, data, size);
    }
    // x^95 and x^159 modulo the polynomial, their bits in reverse order.
    const __m128i distance = _mm_set_epi64x(0x0CCAA009E, 0x1751997D0);
    const auto load = [](const char* from) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    };
    __m128i folded = _mm_xor_si128(load(data), _mm_cvtsi32_si128(static_cast<int>(state)));
    for (data += lane, size -= lane; size >= lane; data += lane, size -= lane) {
        const __m128i ahead = _mm_xor_si128(_mm_clmulepi64_si128(folded, distance, 0x00),
                                            _mm_clmulepi64_si128(folded, distance, 0x11));
        folded = _mm_xor_si128(ahead, load(data));
    }
    alignas(lane) char rest[lane];
    _mm_store_si128(reinterpret_cast<__m128i*>(rest), folded);
    return updatedByTables(updatedByTables(0, rest, lane), data, size);
}

Update best() {
    return __builtin_cpu_supports("pclmul") != 0 ? updatedByFolding : updatedByTables;
}

#elif defined(__aarch64__)

__attribute__((target("+crc"))) quint32 updatedByInstruction(quint32 state, const char* data,
                                                             std::size_t size) {
    constexpr std::size_t word = sizeof(quint64);
    for (; size >= word; data += word, size -= word) {
        state = __crc32d(state, qFromLittleEndian<quint64>(data));
    }
    for (; size > 0; ++data, --size) {
        state = __crc32b(state, static_cast<quint8>(*data));
    }
    return state;
}

Update best() {
    constexpr unsigned long hasCrc32 = 1UL << 7U; // HWCAP_CRC32, which older headers lack
    return (getauxval(AT_HWCAP) & hasCrc32) != 0 ? updatedByInstruction : updatedByTables;
}

#else

Update best() {
    return updatedByTables;
}

#endif

} // namespace

quint32 crc32(const char* data, std::size_t size) {
    static const Update update = best();
    return ~update(0xFFFFFFFFU, data, size);
}

quint32 crc32ByTables(const char* data, std::size_t size) {
    return ~updatedByTables(0xFFFFFFFFU, data, size);
}

} // namespace Checksum
