#pragma once

#include "launch/finding.h"

#include <QString>

namespace Uicov::Launch {

class Application;
class Installation;
class QtLibraries;

/** What must be right about one application. Nothing of it is run. */
namespace ApplicationChecks {

/**
 * In the order in which one thing depends on the other; ends with the first that makes the rest
 * pointless.
 */
Findings all(Application& application, const Installation& installation);

/** Whether it is started through a box that has libraries of its own. */
Finding sandbox(const Application& application);
Finding privileges(const Application& application);
/** Plugins of a newer Qt are refused by an older one. */
Finding qtVersion(const QtLibraries& qt, const QString& builtFor);
Finding gui(const QtLibraries& qt);
/** The application's loader finds everything that the application needs. */
Finding loading(const Application& application);
/** It finds everything that the extension needs beside that. */
Finding extensionLoading(const Application& application, const Installation& installation);

} // namespace ApplicationChecks

} // namespace Uicov::Launch
