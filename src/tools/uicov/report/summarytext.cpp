// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/summarytext.h"

#include "base/percentage.h"

namespace Uicov::Report {

using Coverage::CoverageTree;

QString controlsSummary(const CoverageTree::Totals& totals, int digits) {
    return QStringLiteral("Views seen: %1 of %2. Controls used: %3 of %4 (%5).")
        .arg(totals.seenViews)
        .arg(totals.views)
        .arg(totals.used)
        .arg(totals.elements)
        .arg(Base::percentText(totals.used, totals.elements, digits));
}

QString unavailableNote(const CoverageTree::Totals& totals) {
    return totals.unavailable == 0
               ? QString()
               : QStringLiteral("Controls that were never enabled, and so are not counted: %1.")
                     .arg(totals.unavailable);
}

QStringList controlsLegend() {
    return {QStringLiteral("Used: a person operated it. Seen: it was on the screen and enabled, "
                           "but was not used."),
            QStringLiteral("Missed: its view was never seen, or it was hidden there."),
            QStringLiteral("Views: seen/known. Cover: share of the controls used.")};
}

QStringList controlsTitles() {
    return {QStringLiteral("Window"), QStringLiteral("Views"), QStringLiteral("Controls"),
            QStringLiteral("Used"),   QStringLiteral("Seen"),  QStringLiteral("Missed"),
            QStringLiteral("Cover")};
}

QStringList controlsRow(const QString& name, const CoverageTree::Totals& totals, int digits) {
    return {name,
            QStringLiteral("%1/%2").arg(totals.seenViews).arg(totals.views),
            QString::number(totals.elements),
            QString::number(totals.used),
            QString::number(totals.shown),
            QString::number(totals.missed),
            Base::percentText(totals.used, totals.elements, digits)};
}

} // namespace Uicov::Report
