// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/jsontext.h"

namespace Uicov::Base {

namespace {

constexpr char deleteCharacter = '\x7f';
/** In UTF-8 the characters from U+0080 to U+009F are this and a byte of the same number. */
constexpr char leadOfControls = '\xc2';
constexpr char lastControl = '\x9f';

bool isControl(const QByteArray& json, int position) {
    const auto byte = static_cast<unsigned char>(json.at(position));
    return json.at(position) == deleteCharacter ||
           (byte <= static_cast<unsigned char>(lastControl) && position > 0 &&
            json.at(position - 1) == leadOfControls);
}

} // namespace

QByteArray jsonText(const QJsonDocument& document, QJsonDocument::JsonFormat format) {
    const QByteArray json = document.toJson(format);
    QByteArray result;
    int done = 0;
    for (int i = 0; i < json.size(); ++i) {
        if (isControl(json, i)) {
            const int start = json.at(i) == deleteCharacter ? i : i - 1;
            result += json.mid(done, start - done) + "\\u00" +
                      QByteArray::number(static_cast<unsigned char>(json.at(i)), 16);
            done = i + 1;
        }
    }
    return done == 0 ? json : result + json.mid(done);
}

} // namespace Uicov::Base
