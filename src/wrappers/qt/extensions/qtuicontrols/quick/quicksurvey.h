#pragma once

#include "quickelements.h"
#include "quickstates.h"
#include "quickviews.h"
#include "signalhub.h"

#include <QHash>
#include <QPointer>

#include <vector>

QT_BEGIN_NAMESPACE
class QEvent;
class QQuickItem;
class QQuickWindow;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class QuickClass;
struct Maker;
struct TrackerServices;

/**
 * Finds the views and controls of Qt Quick windows: all that there is when a window prepares its first frame, and what
 * came since when it prepares another or gets input. Nothing is looked at while QML is still making it: what is
 * signalled then is only noted. GUI thread only.
 */
class QuickSurvey final : private SignalReceiver {
public:
    QuickSurvey(const TrackerServices& services, QuickElements::Watch watch);
    ~QuickSurvey();

    /** Each event, before its receiver gets it. */
    void handleEvent(QObject* object, const QEvent* event);

    /** The window is a view from now on, known or not. */
    void addWindow(QQuickWindow* window);
    /** Looks at all that has changed since. */
    void update();

    QuickViews& views() { return m_views; }

private:
    struct Container {
        QPointer<QQuickItem> item;
        bool isDirty = false;
    };

    void childrenChanged(QObject* item) override;
    void stateChanged(QObject* object) override;
    void framePrepared(QObject* window) override;
    void frameShown(QObject* window) override;

    void surveyWindow(QQuickWindow* window);
    void surveyContainer(QQuickItem* container);
    Surroundings surroundingsOf(QQuickItem* container);

    void visitChildren(QQuickItem* item, const Surroundings& within);
    void visitChild(QQuickItem* item, Surroundings& where, bool isPage);
    void visitItem(QQuickItem* item, const QuickClass& cls, const Surroundings& where);
    void visitControl(QQuickItem* item, const QuickClass& cls, const Surroundings& where);
    void visitInput(QQuickItem* item, const QuickClass& cls, const Surroundings& where);
    void visitPopupItem(QQuickItem* item, const Surroundings& where);
    /** What belongs to an object without being an item of its own: handlers, actions, shortcuts, popups, windows. */
    void visitObjects(const QObject* object, const Surroundings& where, int depth);
    void visitPopup(QObject* popup, const QuickClass& cls, const Surroundings& where);

    bool isPage(const QQuickItem* item, const QQuickItem* parent, const Surroundings& where) const;
    UIElement* addPage(QQuickItem* page, const Surroundings& where);
    bool isKnown(const QQuickItem* item) const;
    void remember(QQuickItem* container);

    ElementBook& m_book;
    SignalHubs m_hubs;
    QuickViews m_views;
    QuickStates m_states;
    QuickElements m_elements;
    std::vector<QPointer<QQuickWindow>> m_windows;
    /** Windows that no frame has been prepared of. */
    std::vector<QPointer<QQuickWindow>> m_newWindows;
    /** Items that were looked into. */
    QHash<const QQuickItem*, Container> m_containers;
    int m_containersToClean = 1024;
    std::vector<QQuickItem*> m_dirty;
    /** Popups that were looked into. */
    QHash<const QObject*, QPointer<QObject>> m_popups;
    bool m_isUpdating = false;
};

} // namespace UIControls
} // namespace Vorsk
