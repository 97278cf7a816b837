// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/picturebudget.h"

#include "report/html/pagemodel.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <queue>

#include <algorithm>

namespace Uicov::Report::Html {

namespace {

constexpr double step = 0.7;
/** What is smaller than this says nothing any more. */
constexpr double smallestScale = 0.1;

QByteArray packed(const QImage& image) {
    QByteArray png;
    QBuffer buffer(&png);
    QImageWriter writer(&buffer, "png");
    writer.setQuality(0); // the most compression; it is without loss anyway
    writer.write(image);
    return png;
}

} // namespace

PictureBudget::PictureBudget(qint64 bytes)
    : m_budget(bytes) {}

void PictureBudget::apply(PageModel& model) {
    m_cost = 0;
    for (const PageModel::Picture& picture : qAsConst(model.pictures)) {
        m_cost += cost(picture.png.size());
    }
    if (m_budget <= 0 || m_cost <= m_budget) {
        return;
    }
    repack(model);
    m_scales.assign(static_cast<std::size_t>(model.pictures.size()), 1.0);
    m_whole.clear();
    for (const PageModel::Picture& picture : qAsConst(model.pictures)) {
        m_whole.append(picture.png);
    }
    // By size and, among equal ones, by index: the same data must give the same page.
    std::priority_queue<std::pair<qint64, int>> largest;
    for (int i = 0; i < model.pictures.size(); ++i) {
        largest.emplace(model.pictures.at(i).png.size(), i);
    }
    while (m_cost > m_budget && !largest.empty()) {
        const int index = largest.top().second;
        largest.pop();
        if (shrink(model, index)) {
            largest.emplace(model.pictures.at(index).png.size(), index);
        }
    }
    m_reduced = static_cast<int>(
        std::count_if(model.pictures.cbegin(), model.pictures.cend(),
                      [](const PageModel::Picture& picture) { return picture.isReduced; }));
    m_isKept = m_cost <= m_budget;
}

void PictureBudget::repack(PageModel& model) {
    for (PageModel::Picture& picture : model.pictures) {
        const QByteArray png = packed(QImage::fromData(picture.png, "PNG"));
        if (!png.isEmpty() && png.size() < picture.png.size()) {
            m_cost += cost(png.size()) - cost(picture.png.size());
            picture.png = png;
        }
    }
}

/** False when the picture is as small as it may become. */
bool PictureBudget::shrink(PageModel& model, int index) {
    PageModel::Picture& picture = model.pictures[index];
    double& scale = m_scales[static_cast<std::size_t>(index)];
    if (scale * step < smallestScale) {
        return false;
    }
    scale *= step;
    const QSize size = (QSizeF(picture.size) * scale).toSize().expandedTo(QSize(1, 1));
    const QImage image = QImage::fromData(m_whole.at(index), "PNG");
    const QByteArray png =
        packed(image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    if (png.isEmpty() || png.size() >= picture.png.size()) {
        return scale * step >= smallestScale; // soft edges can take more than hard ones at first
    }
    m_cost += cost(png.size()) - cost(picture.png.size());
    picture.png = png;
    picture.isReduced = true;
    return true;
}

} // namespace Uicov::Report::Html
