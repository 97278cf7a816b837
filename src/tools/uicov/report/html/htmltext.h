// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

// Puts texts of applications into pages so that they stay data: nothing in them is ever read as
// markup, turns the writing direction of what stands around it, or is invisible.
namespace Uicov::Report::Html {

/** As the content of an element, kept apart from the direction of the text around it; what cannot
 * be seen stands as a marked escape. */
QString htmlContent(const QString& text);
/** As the value of an attribute in double quotes, or the page's title. */
QString htmlAttribute(const QString& text);
/** Without markup of its own: no more than & < > and quotes are replaced. */
QString htmlEscaped(const QString& text);

/** A text that nobody will read to its end loses its middle, and says how much there was. */
QString cappedText(const QString& text);

/** As the content of a script element that holds data. */
QByteArray scriptJson(const QJsonObject& object);

} // namespace Uicov::Report::Html
