// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "doctor/finding.h"

#include <QString>

namespace Uicov::Launch {
class Application;
class Installation;
class QtLibraries;
} // namespace Uicov::Launch

// What must be right about one application. Nothing of it is run.
namespace Uicov::Doctor {

/**
 * In the order in which one thing depends on the other; ends with the first that makes the rest
 * pointless.
 */
Findings checkApplication(Launch::Application& application,
                          const Launch::Installation& installation);

/** Whether it is started through a box that has libraries of its own. */
Finding checkApplicationSandbox(const Launch::Application& application);
Finding checkPrivileges(const Launch::Application& application);
/** Plugins of a newer Qt are refused by an older one. */
Finding checkQtVersion(const Launch::QtLibraries& qt, const QString& builtFor);
Finding checkGui(const Launch::QtLibraries& qt);
/** The application's loader finds everything that the application needs. */
Finding checkLoading(const Launch::Application& application);
/** It finds everything that the extension needs beside that. */
Finding checkExtensionLoading(const Launch::Application& application,
                              const Launch::Installation& installation);

} // namespace Uicov::Doctor
