// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"

#include <QList>
#include <QString>
#include <QStringList>

// In which order windows are listed.
namespace Uicov::Report {

/**
 * The tree's windows in which anything counts: by name; by elements or missed ones, most first; by
 * cover, least first. Windows that are alike in that stand by name. Applications stay together.
 * @param order one of Config::ReportDefaults::sorts(); empty for the order of names
 */
QList<Coverage::WindowId> sortedWindows(const Coverage::CoverageTree& tree, const QString& order);

} // namespace Uicov::Report
