// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/percentage.h"

#include <cmath>

namespace Uicov::Base {

double exactPercent(int part, int whole) {
    constexpr double all = 100;
    return whole == 0 ? all : all * part / whole;
}

QString percentNumber(int part, int whole, int digits) {
    constexpr double all = 100;
    const double step = std::pow(10, -digits);
    const double rounded = std::round(exactPercent(part, whole) / step) * step;
    if (rounded <= 0 && part > 0) {
        return QString::number(step, 'f', digits);
    }
    if (rounded >= all && part < whole) {
        return QString::number(all - step, 'f', digits);
    }
    return QString::number(rounded, 'f', digits);
}

QString percentText(int part, int whole, int digits) {
    return whole == 0 ? QStringLiteral("-") : percentNumber(part, whole, digits) + QLatin1Char('%');
}

} // namespace Uicov::Base
