#pragma once

#include <QtGlobal>

#include <cstddef>

/**
 * CRC-32 as zlib, PNG and Ethernet have it, with what the processor has for it. Here and not from a
 * library: what runs in the application brings none along, and records are short, for which
 * libraries are slow.
 */
namespace Checksum {

quint32 crc32(const char* data, std::size_t size);

/** The same by tables alone, as processors without such instructions have it. */
quint32 crc32ByTables(const char* data, std::size_t size);

} // namespace Checksum
