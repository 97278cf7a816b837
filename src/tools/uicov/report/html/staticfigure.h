// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "report/html/pagemodel.h"
#include "report/html/picturelinks.h"

namespace Uicov::Report::Html {

/** A surface with what is outlined on it, for browsers without scripts and for paper. */
class StaticFigure {
public:
    /** Both outlive this. */
    StaticFigure(const PageModel& model, const PictureLinks& links)
        : m_model(model)
        , m_links(links) {}

    /** Empty for a view that nobody saw, or of which nothing can be drawn. */
    QString toString(PageModel::SurfaceId id) const;

private:
    using SurfaceId = PageModel::SurfaceId;

    QString caption(const PageModel::Surface& surface) const;
    QVector<SurfaceId> shownWith(SurfaceId id) const;
    QString outlines(int index, const QVector<SurfaceId>& surfaces) const;
    static QString outline(const QString& state, const QRect& place, bool isTicked);
    bool isContainer(int index) const;

    const PageModel& m_model;
    const PictureLinks& m_links;
};

} // namespace Uicov::Report::Html
