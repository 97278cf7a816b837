#include "report/html/htmltext.h"

#include "base/displaytext.h"
#include "base/jsontext.h"

#include <QJsonDocument>

namespace Uicov::Report::Html::HtmlText {

namespace {

constexpr int longestText = 2000;

/** The code point at that position, of one or two units. */
QString characterAt(const QString& text, int position) {
    const bool isPair = text.at(position).isHighSurrogate() && position + 1 < text.size() &&
                        text.at(position + 1).isLowSurrogate();
    return text.mid(position, isPair ? 2 : 1);
}

} // namespace

QString escaped(const QString& text) {
    return text.toHtmlEscaped().replace(QLatin1Char('\''), QLatin1String("&#39;"));
}

QString attribute(const QString& text) {
    return escaped(Base::DisplayText::escaped(capped(text)));
}

QString content(const QString& text) {
    const QString shown = capped(text);
    QString result = QStringLiteral("<bdi>");
    QString character;
    for (int i = 0; i < shown.size(); i += character.size()) {
        character = characterAt(shown, i);
        const QString visible = Base::DisplayText::escaped(character);
        const bool isVisible = visible == character || character == QLatin1String("\\");
        result += isVisible ? escaped(character)
                            : QStringLiteral("<span class=\"unseen\">") + escaped(visible) +
                                  QStringLiteral("</span>");
    }
    return result + QStringLiteral("</bdi>");
}

QString capped(const QString& text) {
    if (text.size() <= longestText) {
        return text;
    }
    return text.left(longestText / 2) + QStringLiteral(" … (%1 characters) … ").arg(text.size()) +
           text.right(longestText / 4);
}

QByteArray json(const QJsonObject& object) {
    // Inside strings only, where these escapes mean the same; and "</script>" cannot be there.
    return Base::JsonText::of(QJsonDocument(object), QJsonDocument::Compact)
        .replace('<', "\\u003c")
        .replace('>', "\\u003e")
        .replace("\xe2\x80\xa8", "\\u2028")
        .replace("\xe2\x80\xa9", "\\u2029");
}

} // namespace Uicov::Report::Html::HtmlText
