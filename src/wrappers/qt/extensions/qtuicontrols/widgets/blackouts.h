// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRegularExpression>
#include <QStringList>

#include <vector>

QT_BEGIN_NAMESPACE
class QImage;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * Blackens in pictures what must not be seen in them: inputs that hide what is typed, and the
 * widgets that a person has named. GUI thread only.
 */
class BlackOuts {
public:
    /** @param patterns wildcard patterns; what matches one wholly, by its object's or class's name,
     * is blackened with all that lies in it */
    explicit BlackOuts(const QStringList& patterns);

    /** Blackens these in the picture of the widget, in which its device pixel ratio is set. */
    void apply(QImage& picture, const QWidget* widget) const;

    bool isHidden(const QWidget* widget) const;

private:
    std::vector<QRegularExpression> m_patterns;
};

} // namespace UIControls
} // namespace Vorsk
