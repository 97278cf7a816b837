// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRegularExpression>
#include <QString>

namespace Uicov::Coverage {

/**
 * A glob over a whole text: "*" stands for any characters, also none, "?" for one, "[abc]" and
 * "[!abc]" for one of, or none of, these. Case counts. There are no folders: "*" takes everything.
 */
class Pattern {
public:
    /** Matches nothing. */
    Pattern() = default;
    explicit Pattern(const QString& glob);

    bool matches(const QString& text) const;
    QString glob() const { return m_glob; }
    /** Given at all. */
    bool isSet() const { return !m_glob.isNull(); }

private:
    QString m_glob;
    QRegularExpression m_expression;
};

} // namespace Uicov::Coverage
