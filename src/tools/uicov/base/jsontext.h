#pragma once

#include <QByteArray>
#include <QJsonDocument>

namespace Uicov::Base {

/** JSON that can be printed: what applications say is in it, and a terminal finds nothing to obey.
 */
namespace JsonText {

/**
 * The document in UTF-8. All control characters are written as \uHHHH, also those above the ASCII
 * ones, which JSON allows to stand there as they are and terminals may take for commands.
 */
QByteArray of(const QJsonDocument& document,
              QJsonDocument::JsonFormat format = QJsonDocument::Indented);

} // namespace JsonText

} // namespace Uicov::Base
