// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/picturelinks.h"

#include <utility>

namespace Uicov::Report::Html {

PictureLinks::PictureLinks(QStringList files)
    : m_areFiles(true)
    , m_files(std::move(files)) {}

QString PictureLinks::drawing(const PageModel& model, PageModel::PictureId picture,
                              const QRect& over) const {
    if (areFiles()) {
        return QStringLiteral("<image href=\"%1\" x=\"%2\" y=\"%3\" width=\"%4\" height=\"%5\" "
                              "preserveAspectRatio=\"none\"/>")
            .arg(m_files.at(static_cast<int>(picture)))
            .arg(over.x())
            .arg(over.y())
            .arg(over.width())
            .arg(over.height());
    }
    const QSize size = model.picture(picture).size;
    return QStringLiteral("<use href=\"#picture-%1\" transform=\"translate(%2 %3) scale(%4 %5)\"/>")
        .arg(static_cast<int>(picture))
        .arg(over.x())
        .arg(over.y())
        .arg(double(over.width()) / size.width())
        .arg(double(over.height()) / size.height());
}

QByteArray PictureLinks::library(const PageModel& model) {
    QByteArray svg = "<svg class=\"library\" aria-hidden=\"true\"><defs>\n";
    for (int i = 0; i < model.pictures.size(); ++i) {
        const PageModel::Picture& picture = model.pictures.at(i);
        svg += "<image id=\"picture-" + QByteArray::number(i) + "\" width=\"" +
               QByteArray::number(picture.size.width()) + "\" height=\"" +
               QByteArray::number(picture.size.height()) +
               R"(" preserveAspectRatio="none" href="data:image/png;base64,)" +
               picture.png.toBase64() + "\"/>\n";
    }
    return svg + "</defs></svg>\n";
}

} // namespace Uicov::Report::Html
