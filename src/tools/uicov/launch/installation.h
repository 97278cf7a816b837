// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace Uicov::Launch {

/** Which of the two extensions goes into an application. */
enum class Extension {
    Controls, ///< knows every view and control, and counts what a person did
    Classic   ///< the older one, whose stream is prescribed
};

/** Where the libraries are that go into the application, relative to this very program. */
class Installation {
public:
    /** @param libraryFolder where they are said to be; empty to look for them */
    explicit Installation(const QString& libraryFolder, Extension extension = Extension::Controls);

    /** The problem when one of them is not there, or is not what it should be. */
    std::optional<Base::Problem> problem() const;

    QString extension() const;
    /** What Qt has to be told to find the plugin that brings the rest in. */
    QString pluginFolder() const { return file(QStringLiteral("plugins")); }
    QString starter() const { return file(QStringLiteral("plugins/generic/libvorskstarter.so")); }
    QString pluginKey() const { return QStringLiteral("vorsk"); }

    /** Where is looked, in this order: as installed, then as in a build tree. */
    static QStringList candidates(const QString& programFolder);

private:
    QString file(const QString& name) const { return m_folder + QLatin1Char('/') + name; }

    Extension m_extension;
    QString m_folder;
    QStringList m_searched;
};

} // namespace Uicov::Launch
