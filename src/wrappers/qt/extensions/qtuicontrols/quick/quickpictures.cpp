// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickpictures.h"

#include "qtuicontrols/quick/quickclass.h"
#include "qtuicontrols/quick/quickpages.h"
#include "qtuicontrols/quick/quickplaces.h"
#include "qtuicontrols/quick/quickviews.h"

#include <QPainter>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickWindow>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace Vorsk {
namespace UIControls {

namespace {

/** Between two pictures of a window. */
constexpr int leastMilliseconds = 400;
/** Beyond that it is no picture of an interface. */
constexpr qreal mostPixels = 64e6;

bool isOfUse(const QQuickWindow& window) {
    const qreal ratio = window.effectiveDevicePixelRatio();
    return !window.size().isEmpty() &&
           window.width() * ratio * window.height() * ratio <= mostPixels;
}

/** Whether the list is scrolled to exactly that item. */
bool isAtTheStartOf(const QQuickItem& list, const QQuickItem& item) {
    const auto isAt = [&list](const char* scrolled, qreal position) {
        const QVariant value = list.property(scrolled);
        return !value.isValid() || qAbs(value.toReal() - position) < 1;
    };
    return isAt("contentX", item.x()) && isAt("contentY", item.y());
}

/** Whether nothing moves it into its place any more. */
bool hasSettled(const QuickView& view) {
    if (QuickClass::of(view.object).role() == QuickRole::Popup) {
        const QVariant opened = view.object->property("opened");
        return !opened.isValid() || opened.toBool();
    }
    const QQuickItem* const parent = view.item.isNull() ? nullptr : view.item->parentItem();
    if (parent == nullptr) {
        return true;
    }
    if (QuickClass::of(parent).role() == QuickRole::StackView) {
        return !parent->property("busy").toBool();
    }
    const QQuickItem* const list = parent->parentItem();
    if (list == nullptr || QuickClass::of(list).role() != QuickRole::ItemView) {
        return true;
    }
    // While the program or a tab brings a page in, the list slides without being "moving".
    return !list->property("moving").toBool() &&
           (swipeViewOf(view.item) == nullptr || isAtTheStartOf(*list, *view.item));
}

/** In pixels of an image of the window. */
QRect inImage(const QRect& place, const QImage& image) {
    const qreal ratio = image.devicePixelRatio();
    return QRectF(place.x() * ratio, place.y() * ratio, place.width() * ratio,
                  place.height() * ratio)
               .toAlignedRect() &
           image.rect();
}

} // namespace

QuickPictures::QuickPictures(ElementBook& book, QuickViews& views)
    : m_book(book)
    , m_views(views) {}

QuickPictures::~QuickPictures() = default;

bool QuickPictures::wantsPicture(const QuickView& view, const QQuickWindow* window) const {
    if (!view.hasChanged || !view.isShowing || view.item.isNull() ||
        view.item->window() != window || !hasSettled(view)) {
        return false;
    }
    // A window shows what slides or fades in it.
    const std::vector<QuickView>& views = m_views.all();
    return view.object != window ||
           std::all_of(views.cbegin(), views.cend(), [&](const QuickView& inner) {
               return !inner.isShowing || inner.object.isNull() || inner.item.isNull() ||
                      inner.item->window() != window || hasSettled(inner);
           });
}

void QuickPictures::frameShown(QQuickWindow* window) {
    // A window that is rendered into a widget is on that widget's picture.
    if (m_isGrabbing || !isOfUse(*window) ||
        QQuickRenderControl::renderWindowFor(window) != nullptr) {
        return;
    }
    bool isWanted = false;
    bool isFirst = false;
    for (const QuickView& view : m_views.all()) {
        const bool isWantedOfThis = wantsPicture(view, window);
        isWanted = isWanted || isWantedOfThis;
        isFirst = isFirst || (isWantedOfThis && !view.hasPicture);
    }
    if (!isWanted) {
        return;
    }
    Pending& pending = m_pending[window];
    if (pending.window.isNull()) {
        pending = Pending();
        pending.window = window;
    }
    if (pending.isScheduled) {
        return;
    }
    pending.isScheduled = true;
    // A view may be left again soon: what has no picture yet does not wait.
    const bool isAtOnce = isFirst || !pending.sinceLast.isValid();
    const qint64 since = isAtOnce ? leastMilliseconds : pending.sinceLast.elapsed();
    QTimer::singleShot(static_cast<int>(qMax<qint64>(0, leastMilliseconds - since)), this,
                       [this, guard = QPointer<QQuickWindow>(window)] {
                           if (!guard.isNull()) {
                               grab(guard);
                           }
                       });
}

void QuickPictures::grab(QQuickWindow* window) {
    Pending& pending = m_pending[window];
    pending.isScheduled = false;
    pending.sinceLast.start();
    if (!window->isVisible() || !isOfUse(*window)) {
        return;
    }
    const QPointer<QQuickWindow> guard(window);
    m_isGrabbing = true;
    const QImage image = window->grabWindow();
    m_isGrabbing = false;
    if (guard.isNull()) {
        return;
    }
    if (image.isNull()) {
        grabLater(window);
    } else {
        take(window, image);
    }
}

/** Where the platform has no window to grab, Qt renders the scene into an image with its next
 * frame. */
void QuickPictures::grabLater(QQuickWindow* window) {
    Pending& pending = m_pending[window];
    if (!pending.result.isNull()) {
        return;
    }
    pending.result = window->contentItem()->grabToImage();
    if (pending.result.isNull()) {
        return;
    }
    connect(pending.result.data(), &QQuickItemGrabResult::ready, this,
            [this, guard = QPointer<QQuickWindow>(window)] {
                if (guard.isNull()) {
                    return;
                }
                const QSharedPointer<QQuickItemGrabResult> result =
                    std::exchange(m_pending[guard].result, {});
                if (result.isNull() || result->image().isNull()) {
                    return;
                }
                // The scene alone, without what it lies on.
                QImage image(result->image().size(), QImage::Format_ARGB32_Premultiplied);
                image.fill(guard->color());
                QPainter painter(&image);
                painter.drawImage(0, 0, result->image());
                painter.end();
                image.setDevicePixelRatio(static_cast<qreal>(image.width()) /
                                          qMax(1, guard->width()));
                take(guard, image);
            });
}

void QuickPictures::take(QQuickWindow* window, QImage image) {
    blackOut(window, image);
    for (QuickView& view : m_views.all()) {
        if (!wantsPicture(view, window)) {
            continue;
        }
        view.hasChanged = false;
        view.hasPicture = true;
        const QRect place = placeOf(view.object) & QRect(QPoint(0, 0), window->size());
        const QRect part = inImage(place, image);
        if (part.isEmpty()) {
            continue;
        }
        m_book.setPlace(view.element, place);
        setPlaces(view);
        m_book.setPicture(view.element, part == image.rect() ? image : image.copy(part));
    }
}

void QuickPictures::blackOut(QQuickWindow* window, QImage& image) {
    QVector<QRect> parts;
    for (const QuickView& view : m_views.all()) {
        if (view.item.isNull() || view.item->window() != window || !view.item->isVisible()) {
            continue;
        }
        for (const QuickControl& known : view.controls) {
            const QObject* const control = known.object;
            const UIElement* const element = m_book.elementOf(control);
            if (element != nullptr && (m_redacted.contains(element) ||
                                       !m_book.attribute(element, Attribute::Sensitive).isNull())) {
                parts.append(inImage(placeOf(control), image));
            }
        }
    }
    if (parts.isEmpty()) {
        return;
    }
    const qreal ratio = image.devicePixelRatio();
    image.setDevicePixelRatio(1);
    QPainter painter(&image);
    for (const QRect& part : qAsConst(parts)) {
        painter.fillRect(part, Qt::black);
    }
    painter.end();
    image.setDevicePixelRatio(ratio);
}

void QuickPictures::setPlaces(QuickView& view) {
    for (QuickControl& known : view.controls) {
        const QObject* const control = known.object;
        UIElement* const element = m_book.elementOf(control);
        if (element == nullptr || m_book.viewOf(element) != view.element) {
            continue;
        }
        const QQuickItem* const item = itemOf(control);
        const QRect place =
            item != nullptr && QuickViews::isVisible(*item) ? placeInSight(*item) : QRect();
        // What has gone out of sight is not where it was: the picture shows something else there.
        if (!place.isEmpty() || known.isPlaced) {
            known.isPlaced = !place.isEmpty();
            m_book.setPlace(element, place);
        }
    }
}

} // namespace UIControls
} // namespace Vorsk
