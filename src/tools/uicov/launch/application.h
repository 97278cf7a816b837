// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "launch/qtlibraries.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace Uicov::Launch {

/**
 * The program that is to be run, looked at before it is: whether the extension can get into it at
 * all and, should nothing be recorded, why that may have been.
 */
class Application {
public:
    /** @param command as the shell would take it: a path, or a name to look up in PATH */
    explicit Application(const QString& command);

    /**
     * The problem when it cannot be run, or cannot be recorded.
     * @param extension path of the library that is to be loaded into it
     */
    std::optional<Base::Problem> check(const QString& extension);
    /** What to end with when check() found a problem: 127, 126 or 1, as a shell would. */
    int exitCode() const { return m_exitCode; }

    /** The file that is run; empty when none was found. */
    QString path() const { return m_path; }
    /** Without folders. */
    QString name() const;

    // Known after check():
    /** Starts other programs and is none itself that could be recorded. */
    bool isScript() const { return m_isScript; }
    bool isAppImage() const { return m_isAppImage; }
    const QtLibraries& qt() const { return m_qt; }
    /** The program that loads it; empty when none does. */
    QByteArray interpreter() const { return m_interpreter; }

    enum class Privilege { None, SameUser, Other };
    /** Whether its mode gives it other rights than those of who starts it. */
    Privilege privilege() const;

    /**
     * Why nothing was recorded, as the end of a sentence that says so, with what to do.
     * @param signal that ended it; 0 when it ended by itself
     */
    QString causeOfSilence(int signal) const;

private:
    std::optional<Base::Problem> checkFile();
    std::optional<Base::Problem> checkLinking(const QString& extension);
    QString m_command;
    QString m_path;
    int m_exitCode = 1;
    bool m_isScript = false;
    bool m_isAppImage = false;
    QByteArray m_interpreter;
    QtLibraries m_qt;
};

} // namespace Uicov::Launch
