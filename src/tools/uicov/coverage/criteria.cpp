// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/criteria.h"

namespace Uicov::Coverage {

namespace {

QString enabled() {
    return QStringLiteral("enabled");
}

QString wayStart() {
    return QStringLiteral("way=");
}

QString wayOf(const QString& criterion) {
    return criterion.mid(wayStart().size());
}

bool asksForWay(const QString& criterion) {
    return criterion.startsWith(wayStart());
}

} // namespace

bool isCriterion(const QString& criterion) {
    return asksForWay(criterion) ? !wayOf(criterion).isEmpty()
                                 : !criterion.contains(QLatin1Char('='));
}

bool asksForAttribute(const QString& criterion) {
    return criterion == enabled() || asksForWay(criterion);
}

QStringList askedOf(const CoverageTree::Node& control, const QStringList& criteria) {
    QStringList asked;
    for (const QString& criterion : criteria) {
        if (!asksForWay(criterion)) {
            if (criterion == enabled() || control.events.contains(criterion)) {
                asked.append(criterion);
            }
            continue;
        }
        for (const QString& way : control.ways) {
            if (wayOf(criterion) == way || wayOf(criterion) == QLatin1String("*")) {
                asked.append(wayStart() + way);
            }
        }
    }
    asked.removeDuplicates();
    return asked;
}

bool isMet(const QString& criterion, const CoverageTree::Node& control, const Events& events) {
    if (criterion == enabled()) {
        return control.wasEnabled;
    }
    return asksForWay(criterion) ? control.usedWays.contains(wayOf(criterion))
                                 : events.value(criterion).isCovered();
}

} // namespace Uicov::Coverage
