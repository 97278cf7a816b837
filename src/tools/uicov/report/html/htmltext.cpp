// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/htmltext.h"

#include "base/displaytext.h"
#include "base/jsontext.h"

#include <QJsonDocument>

namespace Uicov::Report::Html {

namespace {

constexpr int longestText = 2000;

/** The code point at that position, of one or two units. */
QString characterAt(const QString& text, int position) {
    const bool isPair = text.at(position).isHighSurrogate() && position + 1 < text.size() &&
                        text.at(position + 1).isLowSurrogate();
    return text.mid(position, isPair ? 2 : 1);
}

} // namespace

QString htmlEscaped(const QString& text) {
    return text.toHtmlEscaped().replace(QLatin1Char('\''), QLatin1String("&#39;"));
}

QString htmlAttribute(const QString& text) {
    return htmlEscaped(Base::escaped(cappedText(text)));
}

QString htmlContent(const QString& text) {
    const QString shown = cappedText(text);
    QString result = QStringLiteral("<bdi>");
    QString character;
    for (int i = 0; i < shown.size(); i += character.size()) {
        character = characterAt(shown, i);
        const QString visible = Base::escaped(character);
        const bool isVisible = visible == character || character == QLatin1String("\\");
        result += isVisible ? htmlEscaped(character)
                            : QStringLiteral("<span class=\"unseen\">") + htmlEscaped(visible) +
                                  QStringLiteral("</span>");
    }
    return result + QStringLiteral("</bdi>");
}

QString cappedText(const QString& text) {
    if (text.size() <= longestText) {
        return text;
    }
    return text.left(longestText / 2) + QStringLiteral(" … (%1 characters) … ").arg(text.size()) +
           text.right(longestText / 4);
}

QByteArray scriptJson(const QJsonObject& object) {
    // Inside strings only, where these escapes mean the same; and "</script>" cannot be there.
    return Base::jsonText(QJsonDocument(object), QJsonDocument::Compact)
        .replace('<', "\\u003c")
        .replace('>', "\\u003e")
        .replace("\xe2\x80\xa8", "\\u2028")
        .replace("\xe2\x80\xa9", "\\u2029");
}

} // namespace Uicov::Report::Html
