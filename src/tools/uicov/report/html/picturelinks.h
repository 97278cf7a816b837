// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "report/html/pagemodel.h"

#include <QRect>
#include <QString>
#include <QStringList>

namespace Uicov::Report::Html {

/** How a page refers to its pictures: to a copy inside it, or to files beside it. A value. */
class PictureLinks {
public:
    /** Inside the page. */
    PictureLinks() = default;
    /** @param files relative to the page, by the index of the picture */
    explicit PictureLinks(QStringList files);

    bool areFiles() const { return m_areFiles; }
    const QStringList& files() const { return m_files; }

    /** SVG that draws the picture over that rectangle. */
    QString drawing(const PageModel& model, PageModel::PictureId picture, const QRect& over) const;

    /** The SVG that has all pictures of the model, for links inside the page. */
    static QByteArray library(const PageModel& model);

private:
    bool m_areFiles = false;
    QStringList m_files;
};

} // namespace Uicov::Report::Html
