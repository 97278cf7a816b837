// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/markdowntext.h"

#include "base/displaytext.h"

namespace Uicov::Report {

QString markdownEscaped(const QString& text) {
    return markdownMarkup(Base::escaped(text));
}

QString markdownMarkup(const QString& displayed) {
    QString result;
    for (const QChar character : displayed) {
        switch (character.unicode()) {
        case '&':
            result += QLatin1String("&amp;");
            break;
        case '<':
            result += QLatin1String("&lt;");
            break;
        case '>':
            result += QLatin1String("&gt;");
            break;
        case '@': // would call people by their names
            result += QLatin1String("&#64;");
            break;
        case '\\':
        case '`':
        case '*':
        case '_':
        case '[':
        case ']':
        case '|':
        case '~':
        case '!':
        case '#':
        case '$':
        case ':':
            result += QLatin1Char('\\');
            result += character;
            break;
        default:
            result += character;
        }
    }
    return result;
}

} // namespace Uicov::Report
