// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/staticfigure.h"

#include "report/html/htmltext.h"

namespace Uicov::Report::Html {

using Coverage::State;

namespace {

constexpr int badgeSize = 14;

} // namespace

QString StaticFigure::caption(const PageModel::Surface& surface) const {
    const PageModel::Node& node = m_model.nodes.at(surface.node);
    QString text;
    if (m_model.isOfControls) {
        text = htmlContent(node.step.toString());
    } else if (surface.opener < 0) {
        text = QStringLiteral("The window");
    } else {
        text = QStringLiteral("The menu of ") +
               htmlContent(m_model.nodes.at(surface.opener).step.toString());
    }
    if (surface.isOlder) {
        text += QStringLiteral(", earlier");
    } else if (m_model.isOfControls && surface.totals.elements > 0) {
        text +=
            QStringLiteral(": %1 of %2 used").arg(surface.totals.used).arg(surface.totals.elements);
    }
    return text + (surface.picture == PageModel::PictureId::None
                       ? QStringLiteral(" (no picture was recorded)")
                       : QString());
}

/** The surface, and the pages that its picture shows. */
QVector<StaticFigure::SurfaceId> StaticFigure::shownWith(SurfaceId id) const {
    QVector<SurfaceId> shown{id};
    for (int i = 0; i < shown.size(); ++i) {
        for (const SurfaceId page : m_model.surface(shown.at(i)).shows) {
            if (!shown.contains(page)) {
                shown.append(page);
            }
        }
    }
    return shown;
}

QString StaticFigure::toString(SurfaceId id) const {
    const PageModel::Surface& surface = m_model.surface(id);
    const QVector<SurfaceId> surfaces = shownWith(id);
    const PageModel::Window& window = m_model.windows.at(surface.window);
    QString outlined;
    for (int i = window.node; i <= window.lastNode; ++i) {
        if (i != surface.node) {
            outlined += outlines(i, surfaces);
        }
    }
    const bool isEmpty = surface.picture == PageModel::PictureId::None && outlined.isEmpty();
    if (surface.bounds.isEmpty() || !surface.isSeen || (isEmpty && m_model.isOfControls)) {
        return {};
    }
    const QRect bounds = surface.bounds;
    QString html =
        QStringLiteral("<figure><figcaption>") + caption(surface) +
        QStringLiteral("</figcaption><svg class=\"picture\" role=\"img\" aria-label=\"Picture with "
                       "the elements outlined; the table lists them\" width=\"%3\" height=\"%4\" "
                       "viewBox=\"%1 %2 %3 %4\">")
            .arg(bounds.x())
            .arg(bounds.y())
            .arg(bounds.width())
            .arg(bounds.height());
    if (surface.picture != PageModel::PictureId::None) {
        html += m_links.drawing(m_model, surface.picture, bounds);
    }
    return html + outlined + QStringLiteral("</svg></figure>\n");
}

QString StaticFigure::outlines(int index, const QVector<SurfaceId>& surfaces) const {
    const PageModel::Node& node = m_model.nodes.at(index);
    QString html;
    for (const PageModel::Member& member : node.group) {
        if (member.place && surfaces.contains(member.surface)) {
            const State state = member.isUsed               ? State::Used
                                : node.state == State::Used ? State::Shown
                                                            : node.state;
            html += outline(wordFor(state), *member.place, true);
        }
    }
    if (html.isEmpty() && node.place && surfaces.contains(node.surface)) {
        const bool hasState = node.isCountable || node.isUnavailable();
        html = outline(hasState ? wordFor(node.state) : QStringLiteral("ignored"), *node.place,
                       !isContainer(index));
    }
    return html;
}

/** Whether other things lie on it, as on a tool bar: operating those does not operate it. */
bool StaticFigure::isContainer(int index) const {
    if (m_model.isOfControls || index + 1 >= m_model.nodes.size()) {
        return false;
    }
    const PageModel::Node& first = m_model.nodes.at(index + 1);
    return first.above == index && first.surface == m_model.nodes.at(index).surface;
}

QString StaticFigure::outline(const QString& state, const QRect& place, bool isTicked) {
    const QString box = QStringLiteral("x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\"")
                            .arg(place.x())
                            .arg(place.y())
                            .arg(place.width())
                            .arg(place.height());
    const QString badge = QStringLiteral("<use href=\"#badge-%1\" x=\"%2\" y=\"%3\" "
                                         "width=\"%4\" height=\"%4\"/>")
                              .arg(state)
                              .arg(place.x() + place.width() - badgeSize)
                              .arg(place.y())
                              .arg(badgeSize);
    const bool isHatched = state == wordFor(State::Missed) && isTicked;
    return QStringLiteral("<g class=\"outline %1\"><rect %2 fill=\"%3\"/><rect class=\"halo\" "
                          "%2/><rect class=\"line\" %2/>%4</g>")
        .arg(state, box, isHatched ? QStringLiteral("url(#hatch)") : QStringLiteral("none"),
             isTicked ? badge : QString());
}

} // namespace Uicov::Report::Html
