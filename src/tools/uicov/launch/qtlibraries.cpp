// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/qtlibraries.h"

#include "launch/loader.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace Uicov::Launch {

QtLibraries QtLibraries::ofProgram(const QByteArray& interpreter, const QString& program) {
    return QtLibraries(listLibraries(interpreter, program));
}

QtLibraries::QtLibraries(const QStringList& loaderLines) {
    // Qt 4's libraries have no number in their names: libQtCore.so.4, libQt5Core.so.5.
    static const QRegularExpression qtLibrary(QStringLiteral(
        "^\\s*libQt\\d?(Core|Gui|Quick)[A-Za-z0-9_-]*\\.so\\.(\\d+)(?: => (\\S.*) \\(0x)?"));
    static const QRegularExpression exactVersion(QStringLiteral("\\.so\\.(\\d+(?:\\.\\d+)+)$"));
    for (const QString& line : loaderLines) {
        const auto match = qtLibrary.match(line);
        if (!match.hasMatch()) {
            continue;
        }
        const QString name = match.captured(1);
        if (name != QLatin1String("Core")) {
            m_hasGui = m_hasGui || name == QLatin1String("Gui");
            m_hasQuick = m_hasQuick || name == QLatin1String("Quick");
            continue;
        }
        m_major = match.captured(2).toInt();
        const QFileInfo file(match.captured(3));
        m_folder = match.captured(3).isEmpty() ? QString() : file.absolutePath();
        const auto exact = exactVersion.match(file.canonicalFilePath());
        m_version = exact.hasMatch() ? exact.captured(1) : match.captured(2);
    }
}

} // namespace Uicov::Launch
