#pragma once

#include "doctor/finding.h"

namespace Uicov::Doctor {

/** What must be right about the machine and the place that "uicov run" would be started in. */
namespace MachineChecks {

/** @param output the data file that would be written; relative to the working folder */
Findings all(const QString& output);

/** A recording and a data file can be made in that folder. */
Finding outputFolder(const QString& output);
Finding temporaryFolder();
/** Where both of these are. */
Finding freeSpace(const QString& output);
Finding fileSizeLimit();
/** Whether uicov itself runs in a box that shuts out what the application is to load. */
Finding sandbox();

} // namespace MachineChecks

} // namespace Uicov::Doctor
