// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QJsonDocument>

// JSON that can be printed: what applications say is in it, and a terminal finds nothing to obey.
namespace Uicov::Base {

/**
 * The document in UTF-8. All control characters are written as \uHHHH, also those above the ASCII
 * ones, which JSON allows to stand there as they are and terminals may take for commands.
 */
QByteArray jsonText(const QJsonDocument& document,
                    QJsonDocument::JsonFormat format = QJsonDocument::Indented);

} // namespace Uicov::Base
