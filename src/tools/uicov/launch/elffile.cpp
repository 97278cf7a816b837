// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/elffile.h"

#include <QByteArrayMatcher>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <iterator>

#include <elf.h>

namespace Uicov::Launch {

namespace {

/** Where a field stands in the forms of both widths. */
struct Offsets {
    quint64 in32;
    quint64 in64;
};

// The structures differ between the widths; these are the few fields that are needed.
constexpr Offsets programHeaderOffset{offsetof(Elf32_Ehdr, e_phoff), offsetof(Elf64_Ehdr, e_phoff)};
constexpr Offsets programHeaderSize{offsetof(Elf32_Ehdr, e_phentsize),
                                    offsetof(Elf64_Ehdr, e_phentsize)};
constexpr Offsets programHeaderCount{offsetof(Elf32_Ehdr, e_phnum), offsetof(Elf64_Ehdr, e_phnum)};
constexpr Offsets sectionHeaderOffset{offsetof(Elf32_Ehdr, e_shoff), offsetof(Elf64_Ehdr, e_shoff)};
constexpr Offsets sectionHeaderSize{offsetof(Elf32_Ehdr, e_shentsize),
                                    offsetof(Elf64_Ehdr, e_shentsize)};
constexpr Offsets sectionHeaderCount{offsetof(Elf32_Ehdr, e_shnum), offsetof(Elf64_Ehdr, e_shnum)};
constexpr Offsets segmentOffset{offsetof(Elf32_Phdr, p_offset), offsetof(Elf64_Phdr, p_offset)};
constexpr Offsets sectionOffset{offsetof(Elf32_Shdr, sh_offset), offsetof(Elf64_Shdr, sh_offset)};
constexpr Offsets sectionSize{offsetof(Elf32_Shdr, sh_size), offsetof(Elf64_Shdr, sh_size)};
constexpr Offsets sectionLink{offsetof(Elf32_Shdr, sh_link), offsetof(Elf64_Shdr, sh_link)};
constexpr Offsets sectionEntrySize{offsetof(Elf32_Shdr, sh_entsize),
                                   offsetof(Elf64_Shdr, sh_entsize)};
constexpr Offsets symbolInfo{offsetof(Elf32_Sym, st_info), offsetof(Elf64_Sym, st_info)};
constexpr Offsets symbolSection{offsetof(Elf32_Sym, st_shndx), offsetof(Elf64_Sym, st_shndx)};

quint64 pick(Offsets offsets, bool is64Bit) {
    return is64Bit ? offsets.in64 : offsets.in32;
}

struct Machine {
    quint16 number;
    const char* name;
};

constexpr Machine machines[] = {
    {EM_386, "x86"},       {EM_X86_64, "x86-64"}, {EM_ARM, "ARM"},
    {EM_AARCH64, "ARM64"}, {EM_RISCV, "RISC-V"},  {EM_PPC, "PowerPC"},
    {EM_PPC64, "PowerPC"}, {EM_MIPS, "MIPS"},     {EM_S390, "S/390"},
};

} // namespace

ElfFile::ElfFile(const QString& path)
    : m_file(path) {
    if (!m_file.open(QIODevice::ReadOnly) || m_file.size() < EI_NIDENT) {
        return;
    }
    m_data = m_file.map(0, m_file.size());
    m_size = m_data == nullptr ? 0 : static_cast<quint64>(m_file.size());
    if (m_data == nullptr || std::memcmp(m_data, ELFMAG, SELFMAG) != 0) {
        return;
    }
    m_is64Bit = m_data[EI_CLASS] == ELFCLASS64;
    m_isBigEndian = m_data[EI_DATA] == ELFDATA2MSB;
    m_isElf = isInside(0, m_is64Bit ? sizeof(Elf64_Ehdr) : sizeof(Elf32_Ehdr));
}

bool ElfFile::isAppImage() const {
    constexpr quint64 markOffset = EI_ABIVERSION; // where they have "AI" and the type, 1 or 2
    return m_isElf && m_data[markOffset] == 'A' && m_data[markOffset + 1] == 'I' &&
           (m_data[markOffset + 2] == 1 || m_data[markOffset + 2] == 2);
}

bool ElfFile::isInside(quint64 offset, quint64 size) const {
    return offset <= m_size && size <= m_size - offset;
}

template <class Integer>
Integer ElfFile::readAs(quint64 offset) const {
    if (!isInside(offset, sizeof(Integer))) {
        return 0;
    }
    const uchar* const source = m_data + offset;
    return m_isBigEndian ? qFromBigEndian<Integer>(source) : qFromLittleEndian<Integer>(source);
}

quint16 ElfFile::half(quint64 offset) const {
    return readAs<quint16>(offset);
}

quint32 ElfFile::word(quint64 offset) const {
    return readAs<quint32>(offset);
}

quint64 ElfFile::address(quint64 offset) const {
    return m_is64Bit ? readAs<quint64>(offset) : readAs<quint32>(offset);
}

QByteArray ElfFile::textAt(quint64 offset) const {
    if (!isInside(offset, 1)) {
        return {};
    }
    const auto* const start = reinterpret_cast<const char*>(m_data + offset);
    const auto limit = static_cast<uint>(qMin<quint64>(m_size - offset, PATH_MAX));
    return {start, static_cast<int>(qstrnlen(start, limit))};
}

QString ElfFile::architecture() const {
    if (!m_isElf) {
        return QStringLiteral("no ELF file");
    }
    const quint16 number = half(offsetof(Elf64_Ehdr, e_machine)); // at the same place in both
    const auto* const machine =
        std::find_if(std::begin(machines), std::end(machines),
                     [number](const Machine& known) { return known.number == number; });
    QString text = machine != std::end(machines) ? QString::fromLatin1(machine->name)
                                                 : QStringLiteral("machine %1").arg(number);
    text += m_is64Bit ? QStringLiteral(", 64 bit") : QStringLiteral(", 32 bit");
    return m_isBigEndian ? text + QStringLiteral(", big-endian") : text;
}

bool ElfFile::hasSameArchitectureAs(const ElfFile& other) const {
    return m_isElf && other.m_isElf && architecture() == other.architecture();
}

std::optional<ElfFile::Table> ElfFile::programHeaders() const {
    const Table table{address(pick(programHeaderOffset, m_is64Bit)),
                      half(pick(programHeaderSize, m_is64Bit)),
                      half(pick(programHeaderCount, m_is64Bit))};
    return m_isElf && table.entrySize > 0 ? std::make_optional(table) : std::nullopt;
}

std::optional<ElfFile::Table> ElfFile::sectionHeaders() const {
    const Table table{address(pick(sectionHeaderOffset, m_is64Bit)),
                      half(pick(sectionHeaderSize, m_is64Bit)),
                      half(pick(sectionHeaderCount, m_is64Bit))};
    return m_isElf && table.entrySize > 0 ? std::make_optional(table) : std::nullopt;
}

QByteArray ElfFile::interpreter() const {
    const auto table = programHeaders();
    for (quint64 i = 0; table && i < table->count; ++i) {
        const quint64 header = table->offset + i * table->entrySize;
        if (isInside(header, table->entrySize) && word(header) == PT_INTERP) {
            return textAt(address(header + pick(segmentOffset, m_is64Bit)));
        }
    }
    return {};
}

bool ElfFile::definesSymbol(const QByteArray& name) const {
    const auto table = sectionHeaders();
    for (quint64 i = 0; table && i < table->count; ++i) {
        const quint64 header = table->offset + i * table->entrySize;
        constexpr quint64 typeOffset = offsetof(Elf64_Shdr, sh_type); // at the same place in both
        if (isInside(header, table->entrySize) && word(header + typeOffset) == SHT_DYNSYM &&
            symbolTableDefines(header, *table, name)) {
            return true;
        }
    }
    return false;
}

bool ElfFile::symbolTableDefines(quint64 section, const Table& sections,
                                 const QByteArray& name) const {
    const quint64 start = address(section + pick(sectionOffset, m_is64Bit));
    const quint64 size = address(section + pick(sectionSize, m_is64Bit));
    const quint64 entrySize = address(section + pick(sectionEntrySize, m_is64Bit));
    const quint64 link = word(section + pick(sectionLink, m_is64Bit));
    if (!isInside(start, size) || entrySize < sizeof(Elf32_Sym) || link >= sections.count) {
        return false;
    }
    const quint64 texts =
        address(sections.offset + link * sections.entrySize + pick(sectionOffset, m_is64Bit));
    for (quint64 symbol = start; symbol + entrySize <= start + size; symbol += entrySize) {
        const bool isDefined = half(symbol + pick(symbolSection, m_is64Bit)) != SHN_UNDEF;
        // Sections of the file may be listed too, without a name.
        const bool isLocal =
            ELF64_ST_BIND(m_data[symbol + pick(symbolInfo, m_is64Bit)]) == STB_LOCAL;
        if (isDefined && !isLocal && textAt(texts + word(symbol)) == name) {
            return true;
        }
    }
    return false;
}

QByteArray ElfFile::qtBuildText() const {
    // "Qt 5.15.2 (x86_64-little_endian-lp64 static release build; by GCC 12.2.0)"
    static const QByteArrayMatcher start(QByteArrayLiteral("_endian-"));
    const auto* const bytes = reinterpret_cast<const char*>(m_data);
    const int size = static_cast<int>(qMin<quint64>(m_size, INT_MAX));
    for (int at = start.indexIn(bytes, size); at >= 0; at = start.indexIn(bytes, size, at + 1)) {
        int first = at;
        while (first > 0 && bytes[first - 1] != '\0' && at - first < 64) {
            --first;
        }
        QByteArray text = textAt(static_cast<quint64>(first));
        if (text.startsWith("Qt ")) {
            return text;
        }
    }
    return {};
}

} // namespace Uicov::Launch
