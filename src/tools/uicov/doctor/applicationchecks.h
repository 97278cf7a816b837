#pragma once

#include "doctor/finding.h"

#include <QString>

namespace Uicov::Launch {
class Application;
class Installation;
class QtLibraries;
} // namespace Uicov::Launch

namespace Uicov::Doctor {

/** What must be right about one application. Nothing of it is run. */
namespace ApplicationChecks {

/**
 * In the order in which one thing depends on the other; ends with the first that makes the rest
 * pointless.
 */
Findings all(Launch::Application& application, const Launch::Installation& installation);

/** Whether it is started through a box that has libraries of its own. */
Finding sandbox(const Launch::Application& application);
Finding privileges(const Launch::Application& application);
/** Plugins of a newer Qt are refused by an older one. */
Finding qtVersion(const Launch::QtLibraries& qt, const QString& builtFor);
Finding gui(const Launch::QtLibraries& qt);
/** The application's loader finds everything that the application needs. */
Finding loading(const Launch::Application& application);
/** It finds everything that the extension needs beside that. */
Finding extensionLoading(const Launch::Application& application,
                         const Launch::Installation& installation);

} // namespace ApplicationChecks

} // namespace Uicov::Doctor
