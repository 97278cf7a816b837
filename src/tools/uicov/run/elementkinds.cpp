// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/elementkinds.h"

#include <QSet>

namespace Uicov::Runs {

QString controlsExtension() {
    return QStringLiteral("libqtuicontrols");
}

bool isViewType(const QString& type) {
    static const QSet<QString> types{QStringLiteral("Window"), QStringLiteral("Dialog"),
                                     QStringLiteral("Menu"),   QStringLiteral("Popup"),
                                     QStringLiteral("Drawer"), QStringLiteral("Page")};
    return types.contains(type);
}

namespace AttributeName {

QString accessibleName() {
    return QStringLiteral("accessibleName");
}

QString enabled() {
    return QStringLiteral("enabled");
}

QString group() {
    return QStringLiteral("group");
}

QString hidden() {
    return QStringLiteral("hidden");
}

QString label() {
    return QStringLiteral("label");
}

QString objectName() {
    return QStringLiteral("objectName");
}

QString opens() {
    return QStringLiteral("opens");
}

QString page() {
    return QStringLiteral("page");
}

QString placeholder() {
    return QStringLiteral("placeholder");
}

QString qmlId() {
    return QStringLiteral("qmlId");
}

QString showing() {
    return QStringLiteral("showing");
}

QString toolTip() {
    return QStringLiteral("toolTip");
}

QString usedWays() {
    return QStringLiteral("usedWays");
}

QString ways() {
    return QStringLiteral("ways");
}

} // namespace AttributeName

} // namespace Uicov::Runs
