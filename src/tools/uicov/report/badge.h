#pragma once

#include <QByteArray>
#include <QString>

namespace Uicov::Report {

/** A small picture with the total, for the front page of a project. */
namespace Badge {

/**
 * An SVG that needs nothing from anywhere: the number stands in it as text, in black or white on a
 * colour that goes from red to green with the share.
 * @param title what stands at the left
 */
QByteArray toBytes(const QString& title, int used, int elements, int digits);

} // namespace Badge

} // namespace Uicov::Report
