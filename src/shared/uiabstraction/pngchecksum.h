#pragma once

#include <QtGlobal>

namespace Vorsk {
namespace UIAbstraction {

/** CRC-32 of the bytes from begin to before end, as each chunk of a PNG carries it. */
quint32 pngChecksum(const char* begin, const char* end);

} // namespace UIAbstraction
} // namespace Vorsk
