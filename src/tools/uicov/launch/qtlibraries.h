// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Uicov::Launch {

/** Which Qt a program loads when it starts, itself or through other libraries. */
class QtLibraries {
public:
    /**
     * Asks the program's own loader for everything that it would load, without running the program.
     * @param interpreter the program's loader, as ElfFile::interpreter() gives it
     */
    static QtLibraries ofProgram(const QByteArray& interpreter, const QString& program);

    /** From the lines that a loader prints: "libX.so.1 => /path/libX.so.1 (0x...)". */
    explicit QtLibraries(const QStringList& loaderLines);

    bool hasCore() const { return m_major > 0; }
    bool hasGui() const { return m_hasGui; }
    bool hasQuick() const { return m_hasQuick; }
    /** 4, 5, 6, ...; 0 when no Qt is loaded. */
    int major() const { return m_major; }
    /** As exact as the library's file name is: "5.15.8", or only "5". */
    QString version() const { return m_version; }
    /** Where libQt5Core is; empty when it is not found. */
    QString folder() const { return m_folder; }

private:
    int m_major = 0;
    bool m_hasGui = false;
    bool m_hasQuick = false;
    QString m_version;
    QString m_folder;
};

} // namespace Uicov::Launch
