// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/storedtext.h"

namespace Uicov::Runs {

QString storedText(const QString& text) {
    QString sound = text;
    for (int i = 0; i < sound.size(); ++i) {
        const QChar character = sound.at(i);
        if (!character.isSurrogate()) {
            continue;
        }
        const bool isPair =
            character.isHighSurrogate() && i + 1 < sound.size() && sound.at(i + 1).isLowSurrogate();
        if (isPair) {
            ++i;
        } else {
            sound[i] = QChar(QChar::ReplacementCharacter);
        }
    }
    return sound;
}

} // namespace Uicov::Runs
