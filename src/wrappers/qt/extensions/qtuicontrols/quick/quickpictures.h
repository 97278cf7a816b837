// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QQuickItemGrabResult>
#include <QSet>
#include <QSharedPointer>

QT_BEGIN_NAMESPACE
class QQuickWindow;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class QuickViews;
struct QuickView;

/**
 * Pictures of views: one of the window for all views of it that have changed, when they have
 * settled after a frame. What is to be hidden is blacked out before the book gets any. Grabs from
 * the event loop and never while a frame is being made. GUI thread only.
 */
class QuickPictures : public QObject {
    Q_OBJECT

public:
    QuickPictures(ElementBook& book, QuickViews& views);
    ~QuickPictures() override;

    /** What the element stands for is blacked out. */
    void redact(const UIElement* element) { m_redacted.insert(element); }
    /** A frame of the window was shown. */
    void frameShown(QQuickWindow* window);
    /** Whether a frame is one that a grab makes. */
    bool isGrabbing() const { return m_isGrabbing; }

private:
    struct Pending {
        QPointer<QQuickWindow> window;
        QElapsedTimer sinceLast;
        bool isScheduled = false;
        /** Holds the result while the platform renders it. */
        QSharedPointer<QQuickItemGrabResult> result;
    };

    void grab(QQuickWindow* window);
    void grabLater(QQuickWindow* window);
    void take(QQuickWindow* window, QImage image);
    void blackOut(QQuickWindow* window, QImage& image);
    void setPlaces(QuickView& view);
    bool wantsPicture(const QuickView& view, const QQuickWindow* window) const;

    ElementBook& m_book;
    QuickViews& m_views;
    QSet<const UIElement*> m_redacted;
    QHash<QQuickWindow*, Pending> m_pending;
    bool m_isGrabbing = false;
};

} // namespace UIControls
} // namespace Vorsk
