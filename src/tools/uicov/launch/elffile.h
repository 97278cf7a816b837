// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <optional>

namespace Uicov::Launch {

/**
 * Looks at an executable or library without running anything of it: its machine, how it is linked,
 * what it defines. Reads 32 and 64 bit files of either byte order; damaged ones give less, never
 * more than is there.
 */
class ElfFile {
public:
    explicit ElfFile(const QString& path);

    bool isElf() const { return m_isElf; }
    /** An AppImage: a program that unpacks another one and starts it. */
    bool isAppImage() const;
    /** Machine, width and byte order, comparable with that of another file: "x86-64, 64 bit". */
    QString architecture() const;
    bool hasSameArchitectureAs(const ElfFile& other) const;
    /** The program that loads this one; empty for libraries and statically linked programs. */
    QByteArray interpreter() const;
    /** Has, in its table for the loader, a symbol of that name which it defines itself. */
    bool definesSymbol(const QByteArray& name) const;
    /** What a Qt library that is part of this very file says about its build; empty when none. */
    QByteArray qtBuildText() const;

private:
    struct Table {
        quint64 offset;
        quint64 entrySize;
        quint64 count;
    };

    template <class Integer>
    Integer readAs(quint64 offset) const;
    quint16 half(quint64 offset) const;
    quint32 word(quint64 offset) const;
    /** A value that is as wide as an address. */
    quint64 address(quint64 offset) const;
    bool isInside(quint64 offset, quint64 size) const;
    /** Up to the next zero byte. */
    QByteArray textAt(quint64 offset) const;
    std::optional<Table> programHeaders() const;
    std::optional<Table> sectionHeaders() const;
    bool symbolTableDefines(quint64 section, const Table& sections, const QByteArray& name) const;

    QFile m_file;
    const uchar* m_data = nullptr;
    quint64 m_size = 0;
    bool m_isElf = false;
    bool m_is64Bit = false;
    bool m_isBigEndian = false;
};

} // namespace Uicov::Launch
