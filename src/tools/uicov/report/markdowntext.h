// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Uicov::Report {

/** The text so that no character of it means anything to a terminal, Markdown or HTML. */
QString markdownEscaped(const QString& text);
/** The same for a text that was made fit for a terminal already. */
QString markdownMarkup(const QString& displayed);

} // namespace Uicov::Report
