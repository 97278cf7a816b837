// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"
#include "qtuicontrols/widgets/blackouts.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QHash>
#include <QPointer>
#include <QWidget>

namespace Vorsk {
namespace UIControls {

class PartElements;
struct SceneRegistry;
struct TrackerServices;
class WidgetViews;

/**
 * Takes the pictures of views: one when a view has come up and its first paint is over, and further
 * ones when much of it was painted anew, ever less often. With each it tells the places of the
 * controls that the view shows. Rendering runs the application's code, so whatever holds widgets
 * has to look them up anew after each call that takes a picture. GUI thread only.
 */
class WidgetPictures : public QObject {
    Q_OBJECT

public:
    /** The pieces outlive this object. */
    WidgetPictures(const TrackerServices& services, WidgetViews& views, PartElements& parts);

    /** The view has come up and is being painted. */
    void noteSeen(QWidget* widget, UIElement* view);
    /** Part of the widget is about to be painted. */
    void notePainted(const QWidget* widget, const QRegion& region);
    /** Input comes in, which may change everything: takes the first pictures that are due. */
    void takeFirst();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    struct Shot {
        QPointer<QWidget> widget;
        /** Pixels painted since the last picture. */
        qint64 painted = 0;
        /** Milliseconds of m_clock before which there is no further picture. */
        qint64 earliest = 0;
        int taken = 0;
        bool isDue = false;
        /** The last picture, small, to tell whether another one differs much. */
        QImage small;
    };

    void schedule();
    void take(UIElement* view);
    QImage render(QWidget* widget) const;
    void blackOutScenes(QImage& picture, QWidget* widget) const;
    void tellPlaces(QWidget* widget, UIElement* view);

    ElementBook& m_book;
    WidgetViews& m_views;
    PartElements& m_parts;
    BlackOuts m_blackOuts;
    const SceneRegistry* m_scenes;
    QHash<UIElement*, Shot> m_shots;
    QElapsedTimer m_clock;
    QBasicTimer m_timer;
    bool m_isTaking = false;
};

} // namespace UIControls
} // namespace Vorsk
