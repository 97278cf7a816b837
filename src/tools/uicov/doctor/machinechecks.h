// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "doctor/finding.h"

// What must be right about the machine and the place that "uicov run" would be started in.
namespace Uicov::Doctor {

/** @param output the data file that would be written; relative to the working folder */
Findings checkMachine(const QString& output);

/** A recording and a data file can be made in that folder. */
Finding checkOutputFolder(const QString& output);
Finding checkTemporaryFolder();
/** Where both of these are. */
Finding checkFreeSpace(const QString& output);
Finding checkFileSizeLimit();
/** Whether uicov itself runs in a box that shuts out what the application is to load. */
Finding checkSandbox();
/** Whether a filter of system calls (seccomp) is on, which the application would inherit. */
Finding checkSystemCallFilter();
/** Whether runs with that data file are left that could not be finished. */
Finding checkEarlierRuns(const QString& output);

} // namespace Uicov::Doctor
