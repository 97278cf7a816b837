// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/pattern.h"

namespace Uicov::Coverage {

namespace {

/** Where the set that begins there ends; -1 when it does not, so that "[" is a plain character. */
int endOfSet(const QString& glob, int start) {
    // A bracket right at the front is one of the characters.
    const int first = glob.mid(start + 1, 1) == QLatin1String("!") ? start + 2 : start + 1;
    return glob.indexOf(QLatin1Char(']'), first + 1);
}

/** Of a part of the glob without "*". */
QString expressionForPart(const QString& glob, int& position) {
    QString expression;
    for (; position < glob.size() && glob.at(position) != QLatin1Char('*'); ++position) {
        const QChar character = glob.at(position);
        const int end = character == QLatin1Char('[') ? endOfSet(glob, position) : -1;
        if (end > 0) {
            QString set = glob.mid(position + 1, end - position - 1);
            const bool isNegated = set.startsWith(QLatin1Char('!'));
            set = set.mid(isNegated ? 1 : 0);
            set.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
            set.replace(QLatin1Char('['), QLatin1String("\\["));
            set.replace(QLatin1Char(']'), QLatin1String("\\]"));
            set.replace(QLatin1Char('^'), QLatin1String("\\^"));
            expression +=
                (isNegated ? QStringLiteral("[^") : QStringLiteral("[")) + set + QLatin1Char(']');
            position = end;
        } else if (character == QLatin1Char('?')) {
            expression += QLatin1Char('.');
        } else {
            expression += QRegularExpression::escape(QString(character));
        }
    }
    return expression;
}

/**
 * What stands between two "*" is taken where it is found first, once for all: no later place could
 * do better. So the steps grow with the length of the text, not with its power.
 */
QString expressionFor(const QString& glob) {
    int position = 0;
    QString expression = expressionForPart(glob, position);
    while (position < glob.size()) {
        ++position; // the "*"
        const QString part = expressionForPart(glob, position);
        expression += position < glob.size() ? QStringLiteral("(?>.*?%1)").arg(part)
                                             : QStringLiteral(".*") + part;
    }
    return expression;
}

} // namespace

Pattern::Pattern(const QString& glob)
    : m_glob(glob.isNull() ? QStringLiteral("") : glob)
    , m_expression(QStringLiteral("\\A(?:%1)\\z").arg(expressionFor(glob)),
                   QRegularExpression::DotMatchesEverythingOption |
                       QRegularExpression::UseUnicodePropertiesOption) {}

bool Pattern::matches(const QString& text) const {
    return isSet() && m_expression.match(text).hasMatch();
}

} // namespace Uicov::Coverage
