// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"

#include <QString>
#include <QStringList>

// The sentences about the sums of runs of the controls extension that the reports for people share.
namespace Uicov::Report {

/** Both numbers: "Views seen: 2 of 3. Controls used: 3 of 8 (38%)."
 * @param digits behind the point of percentages */
QString controlsSummary(const Coverage::CoverageTree::Totals& totals, int digits);

/** How many controls were never enabled; empty for none. */
QString unavailableNote(const Coverage::CoverageTree::Totals& totals);

/** What the words of the table mean, a line each. */
QStringList controlsLegend();

/** Titles of the table's columns, and a row of it. */
QStringList controlsTitles();
QStringList controlsRow(const QString& name, const Coverage::CoverageTree::Totals& totals,
                        int digits);

} // namespace Uicov::Report
