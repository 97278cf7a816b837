// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/badge.h"

#include "base/displaytext.h"
#include "base/percentage.h"

namespace Uicov::Report {

using Totals = Coverage::CoverageTree::Totals;

namespace {

/** Dark enough for white text on each of them (contrast 4.5 and more). */
QString colourOf(double percent) {
    constexpr double good = 90;
    constexpr double fair = 75;
    constexpr double poor = 50;
    if (percent >= good) {
        return QStringLiteral("#1a7f37");
    }
    if (percent >= fair) {
        return QStringLiteral("#4d7a00");
    }
    return percent >= poor ? QStringLiteral("#9a6700") : QStringLiteral("#b42318");
}

/** Pixels of the text in 11 px Verdana or DejaVu Sans, near enough to leave room at both sides. */
int widthOf(const QString& text) {
    constexpr int perColumn = 7;
    constexpr int margins = 12;
    return Base::displayWidth(text) * perColumn + margins;
}

QString numbersOf(const Totals& totals, int digits) {
    const QString used = Base::percentText(totals.used, totals.elements, digits);
    return totals.views == 0
               ? used
               : QStringLiteral("views %1, controls %2")
                     .arg(Base::percentText(totals.seenViews, totals.views, digits), used);
}

} // namespace

QByteArray badgeSvg(const QString& title, const Totals& totals, int digits) {
    const bool isEmpty = totals.elements == 0 && totals.views == 0;
    const QString left = Base::escaped(title);
    const QString right = isEmpty ? QStringLiteral("no data") : numbersOf(totals, digits);
    const int leftWidth = widthOf(left);
    const int rightWidth = widthOf(right);
    const QString colour = isEmpty ? QStringLiteral("#57606a")
                                   : colourOf(Base::exactPercent(totals.used, totals.elements));
    return QStringLiteral(
               "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1\" height=\"20\" role=\"img\" "
               "aria-label=\"%2: %3\">\n"
               "  <title>%2: %3</title>\n"
               "  <clipPath id=\"r\"><rect width=\"%1\" height=\"20\" rx=\"3\"/></clipPath>\n"
               "  <g clip-path=\"url(#r)\">\n"
               "    <rect width=\"%4\" height=\"20\" fill=\"#3d444d\"/>\n"
               "    <rect x=\"%4\" width=\"%5\" height=\"20\" fill=\"%6\"/>\n"
               "  </g>\n"
               "  <g fill=\"#fff\" text-anchor=\"middle\" "
               "font-family=\"Verdana,DejaVu Sans,sans-serif\" font-size=\"11\">\n"
               "    <text x=\"%7\" y=\"14\">%2</text>\n"
               "    <text x=\"%8\" y=\"14\">%3</text>\n"
               "  </g>\n"
               "</svg>\n")
        .arg(QString::number(leftWidth + rightWidth), left.toHtmlEscaped(), right.toHtmlEscaped(),
             QString::number(leftWidth), QString::number(rightWidth), colour,
             QString::number(leftWidth / 2), QString::number(leftWidth + rightWidth / 2))
        .toUtf8();
}

} // namespace Uicov::Report
