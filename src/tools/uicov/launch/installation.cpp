// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/installation.h"

#include "launch/elffile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace Uicov::Launch {

using Base::Message;
using Base::Problem;

namespace {

QString nameOf(Extension extension) {
    return extension == Extension::Classic ? QStringLiteral("libqtuicoverage.so")
                                           : QStringLiteral("libqtuicontrols.so");
}

} // namespace

QString Installation::extension() const {
    return file(nameOf(m_extension));
}

QStringList Installation::candidates(const QString& programFolder) {
    QStringList folders;
    const QStringList relative{QStringLiteral("../" UICOV_INSTALL_LIBDIR "/uicov"),
                               QStringLiteral("../lib/" UICOV_LIBRARY_ARCHITECTURE "/uicov"),
                               QStringLiteral("../lib/uicov"), QStringLiteral("../lib64/uicov"),
                               QStringLiteral("../lib")};
    for (const QString& path : relative) {
        const QString folder = QDir::cleanPath(programFolder + QLatin1Char('/') + path);
        if (!folders.contains(folder)) {
            folders.append(folder);
        }
    }
    return folders;
}

Installation::Installation(const QString& libraryFolder, Extension extension)
    : m_extension(extension)
    , m_searched(libraryFolder.isEmpty() ? candidates(QCoreApplication::applicationDirPath())
                                         : QStringList{QDir(libraryFolder).absolutePath()}) {
    m_folder = m_searched.first();
    for (const QString& folder : qAsConst(m_searched)) {
        if (QFileInfo::exists(folder + QLatin1Char('/') + nameOf(extension))) {
            m_folder = folder;
            return;
        }
    }
}

std::optional<Problem> Installation::problem() const {
    if (!QFileInfo::exists(extension())) {
        return Problem{Message::LibrariesMissing,
                       QStringLiteral("the extension ") + nameOf(m_extension) +
                           QStringLiteral(" is not in ") + m_searched.join(QStringLiteral(", ")) +
                           QStringLiteral("; install uicov anew or set UICOV_LIBDIR")};
    }
    QStringList others{QStringLiteral("libvorskhook.so"), QStringLiteral("libvorskqtwrapper.so"),
                       QStringLiteral("plugins/generic/libvorskstarter.so")};
    if (m_extension == Extension::Controls) {
        others.append(QStringLiteral("libqtuicontrolsquick.so"));
    }
    for (const QString& name : qAsConst(others)) {
        if (!QFileInfo::exists(file(name))) {
            return Problem{Message::LibrariesMissing,
                           QStringLiteral("the library ") + file(name) +
                               QStringLiteral(" is missing; install uicov anew or set "
                                              "UICOV_LIBDIR")};
        }
    }
    const ElfFile library(extension());
    if (!library.definesSymbol(QByteArrayLiteral("init_extension"))) {
        return Problem{Message::LibraryUnusable,
                       extension() + QStringLiteral(" does not export init_extension, so it is no "
                                                    "extension; install uicov anew or set "
                                                    "UICOV_LIBDIR")};
    }
    return std::nullopt;
}

} // namespace Uicov::Launch
