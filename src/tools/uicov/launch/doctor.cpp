#include "launch/doctor.h"

#include "launch/application.h"
#include "launch/applicationchecks.h"
#include "launch/displaychecks.h"
#include "launch/installation.h"
#include "launch/installationchecks.h"
#include "launch/machinechecks.h"

#include <algorithm>

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
    const Findings ofApplication = examineApplication(application);
    QStringList causes;
    // What the application itself is, and how it ended, says more than what surrounds it.
    const bool isSuspect =
        std::any_of(ofApplication.cbegin(), ofApplication.cend(),
                    [](const Finding& finding) { return finding.result == Result::Problem; });
    if (signal != 0 && !isSuspect) {
        causes.append(application.causeOfSilence(signal));
    }
    const Findings findings = ofApplication + examineMachine() + examineInstallation();
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
