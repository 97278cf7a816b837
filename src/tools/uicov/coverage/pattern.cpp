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

QString expressionFor(const QString& glob) {
    QString expression;
    for (int i = 0; i < glob.size(); ++i) {
        const QChar character = glob.at(i);
        const int end = character == QLatin1Char('[') ? endOfSet(glob, i) : -1;
        if (end > 0) {
            QString set = glob.mid(i + 1, end - i - 1);
            const bool isNegated = set.startsWith(QLatin1Char('!'));
            set = set.mid(isNegated ? 1 : 0);
            set.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
            set.replace(QLatin1Char('['), QLatin1String("\\["));
            set.replace(QLatin1Char(']'), QLatin1String("\\]"));
            set.replace(QLatin1Char('^'), QLatin1String("\\^"));
            expression +=
                (isNegated ? QStringLiteral("[^") : QStringLiteral("[")) + set + QLatin1Char(']');
            i = end;
        } else if (character == QLatin1Char('*')) {
            expression += QStringLiteral(".*");
        } else if (character == QLatin1Char('?')) {
            expression += QLatin1Char('.');
        } else {
            expression += QRegularExpression::escape(QString(character));
        }
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
