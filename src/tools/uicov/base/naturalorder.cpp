// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/naturalorder.h"

namespace Uicov::Base {

namespace {

bool isDigit(QChar character) {
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

/** The digits that stand there, without zeros in front of them; the position moves behind them. */
QString takeNumber(const QString& text, int& position) {
    while (position < text.size() && text.at(position) == QLatin1Char('0')) {
        ++position;
    }
    const int start = position;
    while (position < text.size() && isDigit(text.at(position))) {
        ++position;
    }
    return text.mid(start, position - start);
}

/** Numbers of any length by their values. */
int compareNumbers(const QString& a, const QString& b) {
    return a.size() == b.size() ? a.compare(b) : a.size() - b.size();
}

} // namespace

int compareNaturally(const QString& a, const QString& b) {
    const QString foldedA = a.toCaseFolded();
    const QString foldedB = b.toCaseFolded();
    int i = 0;
    int j = 0;
    while (i < foldedA.size() && j < foldedB.size()) {
        int order = 0;
        if (isDigit(foldedA.at(i)) && isDigit(foldedB.at(j))) {
            const QString number = takeNumber(foldedA, i);
            order = compareNumbers(number, takeNumber(foldedB, j));
        } else {
            order = foldedA.at(i).unicode() - foldedB.at(j).unicode();
            ++i;
            ++j;
        }
        if (order != 0) {
            return order;
        }
    }
    const int rest = (foldedA.size() - i) - (foldedB.size() - j);
    return rest != 0 ? rest : a.compare(b);
}

} // namespace Uicov::Base
