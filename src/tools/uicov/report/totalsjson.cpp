// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/totalsjson.h"

#include "base/percentage.h"

#include <cmath>

namespace Uicov::Report {

using Coverage::CoverageTree;

namespace {

/** To a millionth: what remains would be another on another processor. */
double rounded(double percent) {
    constexpr double precision = 1e6;
    return std::round(percent * precision) / precision;
}

} // namespace

QJsonObject totalsJson(const CoverageTree::Totals& totals) {
    return {{QStringLiteral("elements"), totals.elements},
            {QStringLiteral("used"), totals.used},
            {QStringLiteral("shown"), totals.shown},
            {QStringLiteral("missed"), totals.missed},
            {QStringLiteral("percent"), rounded(Base::exactPercent(totals.used, totals.elements))},
            {QStringLiteral("events"), totals.events},
            {QStringLiteral("covered_events"), totals.coveredEvents},
            {QStringLiteral("never_counted_events"), totals.neverCountedEvents},
            {QStringLiteral("missed_perhaps_seen"), totals.missedUnseen},
            {QStringLiteral("unavailable"), totals.unavailable},
            {QStringLiteral("views"), totals.views},
            {QStringLiteral("seen_views"), totals.seenViews}};
}

} // namespace Uicov::Report
