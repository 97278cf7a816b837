#pragma once

#include "launch/finding.h"

#include <QString>
#include <QStringList>

namespace Uicov::Launch {

class Application;
class Installation;

/**
 * Finds out whether an application can be recorded here and, if not, why: looks, and runs nothing
 * of the application. Used before a run, and after one that recorded nothing.
 */
class Doctor {
public:
    /** @param output the data file that would be written; relative to the working folder */
    Doctor(const Installation& installation, const QString& output);

    Findings examineInstallation() const;
    Findings examineMachine() const;
    /** @param application looked at by this; Application::check() need not have been called */
    Findings examineApplication(Application& application) const;

    /**
     * Why a run recorded nothing, likeliest first and never empty: each the end of a sentence that
     * says so, with what to do behind a semicolon.
     * @param signal that ended the application; 0 when it ended by itself
     */
    QStringList likelyCauses(Application& application, int signal) const;

private:
    const Installation& m_installation;
    QString m_output;
};

} // namespace Uicov::Launch
