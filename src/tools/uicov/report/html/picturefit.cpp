// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/picturefit.h"

#include <cmath>

namespace Uicov::Report::Html {

namespace {

/** Below this much deviation, of 255 grey levels, a picture is blank. */
constexpr double blankDeviation = 3.0;
/** Pressed, focused or filled-in controls stay far above, unrelated ones scatter around 0. */
constexpr double unrelated = 0.25;

} // namespace

PictureFit::PictureFit(const QImage& surface, const QImage& own, const QRect& place) {
    if (own.size() != place.size() || !surface.rect().contains(place)) {
        return;
    }
    const QImage shown = surface.copy(place).convertToFormat(QImage::Format_RGB32);
    const QImage drawn = own.convertToFormat(QImage::Format_RGB32);
    m_isSame = shown == drawn;
    m_likeness = m_isSame ? 1 : 0;
    if (!m_isSame) {
        correlate(shown, drawn);
    }
}

/** By what is drawn rather than by colour: another state changes colours, text and edges stay. */
void PictureFit::correlate(const QImage& shown, const QImage& own) {
    double sumA = 0;
    double sumB = 0;
    double sumAA = 0;
    double sumBB = 0;
    double sumAB = 0;
    for (int y = 0; y < own.height(); ++y) {
        for (int x = 0; x < own.width(); ++x) {
            const double a = qGray(shown.pixel(x, y));
            const double b = qGray(own.pixel(x, y));
            sumA += a;
            sumB += b;
            sumAA += a * a;
            sumBB += b * b;
            sumAB += a * b;
        }
    }
    const double count = double(own.width()) * own.height();
    const double varianceA = sumAA / count - (sumA / count) * (sumA / count);
    const double varianceB = sumBB / count - (sumB / count) * (sumB / count);
    const double covariance = sumAB / count - (sumA / count) * (sumB / count);
    if (varianceB < blankDeviation * blankDeviation) {
        return;
    }
    const double both = std::sqrt(qMax(varianceA, 0.0) * varianceB);
    m_likeness = both <= 0 ? 0 : covariance / both;
    m_isOther = m_likeness < unrelated;
}

} // namespace Uicov::Report::Html
