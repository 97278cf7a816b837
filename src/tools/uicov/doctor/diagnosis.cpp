// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "doctor/diagnosis.h"

#include "doctor/applicationchecks.h"
#include "doctor/displaychecks.h"
#include "doctor/installationchecks.h"
#include "doctor/machinechecks.h"
#include "launch/application.h"
#include "launch/installation.h"

namespace Uicov::Doctor {

using Launch::Application;
using Launch::Installation;
using Result = Finding::Result;

Diagnosis::Diagnosis(const Installation& installation, const QString& output)
    : m_installation(installation)
    , m_output(output) {}

Findings Diagnosis::examineInstallation() const {
    return checkInstallation(m_installation);
}

Findings Diagnosis::examineMachine() const {
    return checkMachine(m_output) << checkDisplay();
}

Findings Diagnosis::examineApplication(Application& application) const {
    return checkApplication(application, m_installation);
}

QStringList Diagnosis::likelyCauses(Application& application, int signal) const {
    // What is known to be wrong says more than a signal, which is often only how it shows.
    const Findings findings =
        examineApplication(application) + examineMachine() + examineInstallation();
    QStringList causes;
    for (const Finding& finding : findings) {
        if (finding.result == Result::Problem) {
            causes.append(finding.seen + QStringLiteral("; ") + finding.advice);
        }
    }
    const QString last = application.causeOfSilence(signal);
    if (!causes.contains(last)) {
        causes.append(last);
    }
    return causes;
}

} // namespace Uicov::Doctor
