// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/blackouts.h"

#include "qtuicontrols/widgets/widgetnames.h"
#include "tracking/classname.h"

#include <QImage>
#include <QPainter>
#include <QWidget>

#include <algorithm>

namespace Vorsk {
namespace UIControls {

namespace {

QRegularExpression fromWildcard(const QString& pattern) {
    QString expression = QRegularExpression::escape(pattern);
    expression.replace(QLatin1String("\\*"), QLatin1String(".*"));
    expression.replace(QLatin1String("\\?"), QLatin1String("."));
    return QRegularExpression(QLatin1String("\\A(?:") + expression + QLatin1String(")\\z"),
                              QRegularExpression::DotMatchesEverythingOption);
}

} // namespace

BlackOuts::BlackOuts(const QStringList& patterns) {
    for (const QString& pattern : patterns) {
        m_patterns.push_back(fromWildcard(pattern));
    }
}

bool BlackOuts::isHidden(const QWidget* widget) const {
    if (isSensitive(widget)) {
        return true;
    }
    if (m_patterns.empty()) {
        return false;
    }
    const QString name = widget->objectName();
    const QString cls = UICoverage::className(widget);
    return std::any_of(m_patterns.cbegin(), m_patterns.cend(),
                       [&](const QRegularExpression& pattern) {
                           return (!name.isEmpty() && pattern.match(name).hasMatch()) ||
                                  pattern.match(cls).hasMatch();
                       });
}

void BlackOuts::apply(QImage& picture, const QWidget* widget) const {
    std::vector<QRect> places;
    std::vector<const QWidget*> open{widget};
    while (!open.empty()) {
        const QWidget* const inner = open.back();
        open.pop_back();
        if (isHidden(inner)) {
            places.emplace_back(inner->mapTo(const_cast<QWidget*>(widget),
                                             QPoint(0, 0)), // NOLINT(*-const-cast): takes it so
                                inner->size());
            continue;
        }
        for (const QObject* child : inner->children()) {
            const auto* const part = qobject_cast<const QWidget*>(child);
            if (part != nullptr && part->isVisible() && !part->isWindow()) {
                open.push_back(part);
            }
        }
    }
    if (places.empty()) {
        return;
    }
    QPainter painter(&picture);
    for (const QRect& place : places) {
        painter.fillRect(place, Qt::black);
    }
}

} // namespace UIControls
} // namespace Vorsk
