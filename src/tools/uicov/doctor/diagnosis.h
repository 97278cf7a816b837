// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "doctor/finding.h"

#include <QString>
#include <QStringList>

namespace Uicov::Launch {
class Application;
class Installation;
} // namespace Uicov::Launch

namespace Uicov::Doctor {

/**
 * Finds out whether an application can be recorded here and, if not, why: looks, and runs nothing
 * of the application. Used before a run, and after one that recorded nothing.
 */
class Diagnosis {
public:
    /** @param output the data file that would be written; relative to the working folder */
    Diagnosis(const Launch::Installation& installation, const QString& output);

    Findings examineInstallation() const;
    Findings examineMachine() const;
    /** @param application looked at by this; Application::check() need not have been called */
    Findings examineApplication(Launch::Application& application) const;

    /**
     * Why a run recorded nothing, likeliest first and never empty: each the end of a sentence that
     * says so, with what to do behind a semicolon.
     * @param signal that ended the application; 0 when it ended by itself
     */
    QStringList likelyCauses(Launch::Application& application, int signal) const;

private:
    const Launch::Installation& m_installation;
    QString m_output;
};

} // namespace Uicov::Doctor
