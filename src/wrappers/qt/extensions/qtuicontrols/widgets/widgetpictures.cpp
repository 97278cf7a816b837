// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetpictures.h"

#include "qtuicontrols/widgets/partelements.h"
#include "qtuicontrols/widgets/widgetplaces.h"
#include "qtuicontrols/widgets/widgetviews.h"
#include "tracking/grab.h"
#include "uiabstraction/uielement.h"

#include <QTimerEvent>

#include <algorithm>
#include <cstdlib>

namespace Vorsk {
namespace UIControls {

namespace {

/** Milliseconds from one picture of a view to the next; doubles with each. */
constexpr qint64 shortestPause = 300;
constexpr int mostDoublings = 7;

/** Side of the small pictures that are compared, and by how much a pixel differs. */
constexpr int smallSide = 32;
constexpr int visibleDifference = 16;

/** Whether more than a tenth of the pixels differ. */
bool differMuch(const QImage& one, const QImage& other) {
    if (one.size() != other.size()) {
        return true;
    }
    int differing = 0;
    for (int y = 0; y < one.height(); ++y) {
        const uchar* const left = one.constScanLine(y);
        const uchar* const right = other.constScanLine(y);
        for (int x = 0; x < one.width(); ++x) {
            differing += std::abs(int{left[x]} - int{right[x]}) > visibleDifference ? 1 : 0;
        }
    }
    return 10 * differing > one.width() * one.height();
}

QImage smallOf(const QImage& picture) {
    return picture.scaled(smallSide, smallSide).convertToFormat(QImage::Format_Grayscale8);
}

qint64 areaOf(const QRect& rect) {
    return qint64{rect.width()} * rect.height();
}

} // namespace

WidgetPictures::WidgetPictures(ElementBook& book, WidgetViews& views, PartElements& parts,
                               const QStringList& redacted)
    : m_book(book)
    , m_views(views)
    , m_parts(parts)
    , m_blackOuts(redacted) {
    m_clock.start();
}

void WidgetPictures::noteSeen(QWidget* widget, UIElement* view) {
    Shot& shot = m_shots[view];
    shot.widget = widget;
    // One that was seen before is likely to look the same.
    shot.isDue = true;
    schedule();
}

void WidgetPictures::notePainted(const QWidget* widget, const QRegion& region) {
    if (m_isTaking) {
        return;
    }
    const qint64 area = areaOf(region.boundingRect());
    for (const QWidget* at = widget; at != nullptr;
         at = at->isWindow() ? nullptr : at->parentWidget()) {
        UIElement* const view = m_views.knownView(at);
        const auto shot = view == nullptr ? m_shots.end() : m_shots.find(view);
        if (shot == m_shots.end()) {
            continue;
        }
        shot->painted += area;
        if (!shot->isDue && 2 * shot->painted > areaOf(at->rect())) {
            shot->isDue = true;
            schedule();
        }
    }
}

/** One timer for all: it ends when the earliest picture that is due may be taken. */
void WidgetPictures::schedule() {
    qint64 next = -1;
    for (const Shot& shot : qAsConst(m_shots)) {
        if (shot.isDue && (next < 0 || shot.earliest < next)) {
            next = shot.earliest;
        }
    }
    if (next >= 0) {
        m_timer.start(static_cast<int>(std::max<qint64>(0, next - m_clock.elapsed())), this);
    }
}

void WidgetPictures::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_timer.timerId()) {
        QObject::timerEvent(event);
        return;
    }
    m_timer.stop();
    if (m_isTaking) {
        return;
    }
    const QList<UIElement*> views = m_shots.keys();
    for (UIElement* view : views) {
        const Shot shot = m_shots.value(view);
        if (shot.isDue && shot.earliest <= m_clock.elapsed()) {
            take(view);
        }
    }
    schedule();
}

void WidgetPictures::takeFirst() {
    if (!m_timer.isActive() || m_isTaking) {
        return;
    }
    const QList<UIElement*> views = m_shots.keys();
    for (UIElement* view : views) {
        const Shot shot = m_shots.value(view);
        if (shot.isDue && shot.taken == 0) {
            take(view);
        }
    }
}

void WidgetPictures::take(UIElement* view) {
    Shot& shot = m_shots[view];
    shot.isDue = false;
    shot.painted = 0;
    const QPointer<QWidget> widget = shot.widget;
    if (widget.isNull() || !widget->isVisible()) {
        return;
    }
    m_isTaking = true;
    const QImage picture = render(widget);
    m_isTaking = false;
    if (picture.isNull() || widget.isNull()) {
        return;
    }
    const QImage small = smallOf(picture);
    Shot& taken = m_shots[view];
    if (!taken.small.isNull() && !differMuch(taken.small, small)) {
        taken.earliest = m_clock.elapsed() + shortestPause;
        return;
    }
    taken.small = small;
    taken.earliest = m_clock.elapsed() +
                     (shortestPause << static_cast<unsigned>(std::min(taken.taken, mostDoublings)));
    ++taken.taken;
    tellPlaces(widget, view);
    m_book.setPicture(view, picture);
}

/** Null where there is nothing to render, or too much. */
QImage WidgetPictures::render(QWidget* widget) const {
    const QPointer<QWidget> guard(widget);
    QImage picture = UICoverage::grabWidget(widget, QRect(QPoint(0, 0), QSize(-1, -1)));
    if (guard.isNull() || picture.isNull()) {
        return {};
    }
    m_blackOuts.apply(picture, widget);
    return picture;
}

void WidgetPictures::tellPlaces(QWidget* widget, UIElement* view) {
    const QWidget* const top = widget->window();
    m_book.setPlace(view, placeOf(widget));
    const QList<UIElement*> controls = view->children();
    for (UIElement* control : controls) {
        const QObject* const object = m_book.objectOf(control);
        const QRect place = object == nullptr ? QRect() : placeInSight(object, top);
        // What has gone out of sight is not where it was: the picture shows something else there.
        if (!place.isEmpty() || !control->geometry().rect().isEmpty()) {
            m_book.setPlace(control, place);
        }
    }
    m_parts.tellPlaces(view, top);
}

} // namespace UIControls
} // namespace Vorsk
