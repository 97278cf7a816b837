// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/configuration.h"

namespace Uicov::Coverage {

QString IgnoreRule::toString() const {
    QStringList parts;
    const auto add = [&parts](const char* name, const Pattern& pattern) {
        if (pattern.isSet()) {
            parts.append(QLatin1String(name) + QStringLiteral(" = \"") + pattern.glob() +
                         QLatin1Char('"'));
        }
    };
    add("key", key);
    add("window", window);
    add("type", type);
    add("class", className);
    add("text", text);
    return parts.join(QStringLiteral(", "));
}

QStringList Gates::differences() {
    return {QStringLiteral("lost"), QStringLiteral("new-missed"), QStringLiteral("removed")};
}

QStringList ReportDefaults::sorts() {
    const QStringList names{QStringLiteral("name"), QStringLiteral("elements"),
                            QStringLiteral("missed"), QStringLiteral("cover")};
    QStringList reversed = names;
    return names +
           reversed.replaceInStrings(QRegularExpression(QStringLiteral("^")), QStringLiteral("-"));
}

QString Configuration::groupOf(const QString& key) const {
    for (const auto& group : groups) {
        for (const Pattern& pattern : group.second) {
            if (pattern.matches(key)) {
                return group.first;
            }
        }
    }
    return {};
}

QString Configuration::appliedTo(const QString& label) const {
    QString result = label;
    for (const LabelRule& rule : labelRules) {
        result.replace(rule.pattern, rule.replacement);
    }
    return result.simplified();
}

} // namespace Uicov::Coverage
