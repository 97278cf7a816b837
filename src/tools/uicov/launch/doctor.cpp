#include "launch/doctor.h"

#include "launch/application.h"
#include "launch/applicationchecks.h"
#include "launch/displaychecks.h"
#include "launch/installation.h"
#include "launch/installationchecks.h"
#include "launch/machinechecks.h"

namespace Uicov::Launch {

using Result = Finding::Result;

Doctor::Doctor(const Installation& installation, const QString& output)
    : m_installation(installation)
    , m_output(output) {}

Findings Doctor::examineInstallation() const {
    return InstallationChecks::all(m_installation);
}

Findings Doctor::examineMachine() const {
    return MachineChecks::all(m_output) << DisplayChecks::display();
}

Findings Doctor::examineApplication(Application& application) const {
    return ApplicationChecks::all(application, m_installation);
}

QStringList Doctor::likelyCauses(Application& application, int signal) const {
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

} // namespace Uicov::Launch
