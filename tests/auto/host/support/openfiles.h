// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>
#include <QString>

/** What this process has open. */
namespace OpenFiles {

/** The number under which the file is open, by its canonical path; -1 when it is not. */
inline int descriptorOf(const QString& path) {
    for (int descriptor = 0; descriptor < 1024; ++descriptor) {
        if (QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(descriptor)) == path) {
            return descriptor;
        }
    }
    return -1;
}

} // namespace OpenFiles
