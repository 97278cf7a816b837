#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

namespace Uicov::Report::Html {

/**
 * Puts texts of applications into pages so that they stay data: nothing in them is ever read as
 * markup, turns the writing direction of what stands around it, or is invisible.
 */
namespace HtmlText {

/** As the content of an element, kept apart from the direction of the text around it; what cannot
 * be seen stands as a marked escape. */
QString content(const QString& text);
/** As the value of an attribute in double quotes, or the page's title. */
QString attribute(const QString& text);
/** Without markup of its own: no more than & < > and quotes are replaced. */
QString escaped(const QString& text);

/** A text that nobody will read to its end loses its middle, and says how much there was. */
QString capped(const QString& text);

/** As the content of a script element that holds data. */
QByteArray json(const QJsonObject& object);

} // namespace HtmlText

} // namespace Uicov::Report::Html
