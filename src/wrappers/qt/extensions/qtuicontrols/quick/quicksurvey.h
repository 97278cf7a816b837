// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/quick/latercall.h"
#include "qtuicontrols/quick/quickcontainers.h"
#include "qtuicontrols/quick/quickelements.h"
#include "qtuicontrols/quick/quickparts.h"
#include "qtuicontrols/quick/quickpictures.h"
#include "qtuicontrols/quick/quickstates.h"
#include "qtuicontrols/quick/quickviews.h"
#include "qtuicontrols/quick/quickwalk.h"
#include "qtuicontrols/quick/signalhub.h"

#include <QPointer>

#include <vector>

QT_BEGIN_NAMESPACE
class QEvent;
class QObject;
class QQuickWindow;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

struct TrackerOptions;
struct TrackerServices;

/**
 * Finds the views and controls of Qt Quick windows: all that there is when a window prepares its
 * first frame, and what came since when it prepares another or gets input. Nothing is looked at
 * while QML is still making it: what is signalled then is only noted. GUI thread only.
 */
class QuickSurvey final : private SignalReceiver {
public:
    /** The services outlive this object. */
    QuickSurvey(const TrackerServices& services, QuickElements::Watch watch);
    ~QuickSurvey();
    Q_DISABLE_COPY(QuickSurvey)

    /** Each event, before its receiver gets it. */
    void handleEvent(QObject* object, const QEvent* event);

    /** Looks at all that has changed since. */
    void update();

    const QuickParts& parts() const { return m_parts; }
    QuickPageTabs& pageTabs() { return m_walk.pageTabs(); }

private:
    void childrenChanged(QObject* item) override;
    void stateChanged(QObject* object) override;
    void framePrepared(QObject* window) override;
    void frameShown(QObject* window) override;

    /** The window is a view from the next update on, shown or not. */
    void addWindow(QQuickWindow* window);
    void addWidget(QObject* widget);
    /** @return whether there was anything */
    bool lookAtWhatIsNew();

    ElementBook& m_book;
    const TrackerOptions& m_options;
    SignalHubs m_hubs;
    QuickViews m_views;
    QuickStates m_states;
    QuickPictures m_pictures;
    QuickParts m_parts;
    QuickElements m_elements;
    QuickContainers m_containers;
    QuickWalk m_walk;
    std::vector<QPointer<QQuickWindow>> m_windows;
    std::vector<QPointer<QQuickWindow>> m_newWindows;
    /** For changes that are no reason for a frame. */
    LaterCall m_later;
    bool m_isUpdating = false;
};

} // namespace UIControls
} // namespace Vorsk
