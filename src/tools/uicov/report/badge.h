// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"

#include <QByteArray>
#include <QString>

// A small picture with the total, for the front page of a project.
namespace Uicov::Report {

/**
 * An SVG that needs nothing from anywhere: the number stands in it as text, in white on a colour
 * that goes from red to green with the share of what was used. Runs of the controls extension have
 * two numbers, views and controls.
 * @param title  what stands at the left
 * @param digits behind the point of percentages
 */
QByteArray badgeSvg(const QString& title, const Coverage::CoverageTree::Totals& totals, int digits);

} // namespace Uicov::Report
