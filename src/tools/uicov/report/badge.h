// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

// A small picture with the total, for the front page of a project.
namespace Uicov::Report {

/**
 * An SVG that needs nothing from anywhere: the number stands in it as text, in black or white on a
 * colour that goes from red to green with the share.
 * @param title what stands at the left
 */
QByteArray badgeSvg(const QString& title, int used, int elements, int digits);

} // namespace Uicov::Report
