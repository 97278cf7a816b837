// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

namespace Fuzz {

/** A file for code that asks for a path: in memory where that can be had. */
class ScratchFile {
public:
    ScratchFile();
    ~ScratchFile();
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    void setContents(const std::uint8_t* data, std::size_t size) const;
    QByteArray contents() const;
    QString path() const { return QString::fromLatin1(m_path); }

private:
    QByteArray m_path;
    int m_descriptor;
};

} // namespace Fuzz
