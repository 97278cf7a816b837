#include "uiabstraction/pngchecksum.h"

#include <array>

namespace Vorsk {
namespace UIAbstraction {

namespace {

/** Here and not from a library: the extension, which links this too, brings no library along. */
constexpr std::array<quint32, 256> makeChecksumTable() {
    std::array<quint32, 256> table{};
    for (quint32 i = 0; i < table.size(); ++i) {
        quint32 value = i;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value & 1U) != 0 ? 0xEDB88320U ^ (value >> 1U) : value >> 1U;
        }
        table[i] = value;
    }
    return table;
}

} // namespace

quint32 pngChecksum(const char* begin, const char* end) {
    static constexpr auto table = makeChecksumTable();
    quint32 value = 0xFFFFFFFFU;
    for (const char* byte = begin; byte != end; ++byte) {
        value = table[(value ^ static_cast<quint8>(*byte)) & 0xFFU] ^ (value >> 8U);
    }
    return ~value;
}

} // namespace UIAbstraction
} // namespace Vorsk
