// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "doctor/finding.h"

namespace Uicov::Launch {
class Installation;
}

// What must be right about the libraries that go into every application.
namespace Uicov::Doctor {

/** Each of them is there, and can be loaded by a program of this machine. */
Findings checkInstallation(const Launch::Installation& installation);

/** Only the extension and its libraries: loads them in a process of their own. */
Finding checkExtension(const Launch::Installation& installation);
/** Qt must know the starter for a plugin of the right kind and key. */
Finding checkStarter(const Launch::Installation& installation);
/** A folder's path must be such that it can stand in QT_PLUGIN_PATH, with none of its kind before.
 */
Finding checkPluginPath(const Launch::Installation& installation);
/** Data files need Qt's driver for SQLite. */
Finding checkDataFiles();

/** The Qt that the starter is built for, as "5.15"; empty when that cannot be read. */
QString qtVersionOf(const Launch::Installation& installation);

} // namespace Uicov::Doctor
