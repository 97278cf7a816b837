// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quicksurvey.h"

#include "qtuicontrols/controlstracker.h"
#include "qtuicontrols/quick/quickclass.h"
#include "qtuicontrols/quick/quickwidgets.h"

#include <QEvent>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>
#include <utility>

namespace Vorsk {
namespace UIControls {

QuickSurvey::QuickSurvey(const TrackerServices& services, QuickElements::Watch watch)
    : m_book(services.book)
    , m_options(services.options)
    , m_hubs(*this)
    , m_views(services.book)
    , m_states(services.book, m_views, m_hubs)
    , m_pictures(services, m_views)
    , m_parts(services.book)
    , m_elements(services, {m_views, m_states, m_pictures, m_parts}, std::move(watch))
    , m_containers(m_hubs)
    , m_walk(services.book, m_views, m_elements, m_containers,
             [this](QQuickWindow* window) { addWindow(window); })
    , m_later([this] { update(); }) {}

QuickSurvey::~QuickSurvey() = default;

void QuickSurvey::handleEvent(QObject* object, const QEvent* event) {
    switch (event->type()) {
    case QEvent::Expose:
    case QEvent::Show:
        if (auto* const window = qobject_cast<QQuickWindow*>(object)) {
            addWindow(window);
        } else if (object->isWidgetType()) {
            addWidget(object);
        }
        break;
    case QEvent::Hide:
        m_later.request();
        break;
    case QEvent::Close:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::InputMethod:
        // What came since the last frame can be operated already.
        if (auto* const window = qobject_cast<QQuickWindow*>(object)) {
            addWindow(window);
            update();
        }
        break;
    default:
        break;
    }
}

void QuickSurvey::addWindow(QQuickWindow* window) {
    m_windows.erase(std::remove(m_windows.begin(), m_windows.end(), nullptr), m_windows.end());
    if (std::find(m_windows.cbegin(), m_windows.cend(), window) != m_windows.cend() ||
        QuickClass::of(window).type() == ElementType::Menu) {
        return;
    }
    m_windows.emplace_back(window);
    m_newWindows.emplace_back(window);
    m_hubs.connectFramePrepared(window);
    if (m_options.takesPictures) {
        m_hubs.connectFrameShown(window);
    }
}

/** Looked at from the event loop: the views of widgets are made when their windows are shown, which
 * is after this. */
void QuickSurvey::addWidget(QObject* widget) {
    if (QQuickWindow* const window = QuickWidgets::add(widget)) {
        addWindow(window);
        m_later.request();
    }
}

void QuickSurvey::childrenChanged(QObject* item) {
    m_containers.noteChange(static_cast<QQuickItem*>(item));
    m_later.request();
}

void QuickSurvey::stateChanged(QObject* object) {
    m_states.noteChange(object);
    m_later.request();
}

void QuickSurvey::framePrepared(QObject* window) {
    Q_UNUSED(window)
    update();
}

void QuickSurvey::frameShown(QObject* window) {
    m_pictures.frameShown(static_cast<QQuickWindow*>(window));
}

void QuickSurvey::update() {
    if (m_isUpdating || m_pictures.isGrabbing()) {
        return;
    }
    m_isUpdating = true;
    if (lookAtWhatIsNew()) {
        m_later.request(); // views may be laid out by then
    }
    const std::vector<UIElement*> came = m_views.update();
    for (UIElement* view : came) {
        m_states.noteControlsOf(view);
    }
    m_states.update();
    m_isUpdating = false;
}

bool QuickSurvey::lookAtWhatIsNew() {
    const ElementBook::Batch batch(m_book);
    bool isNew = !m_newWindows.empty();
    while (!m_newWindows.empty()) { // windows may have windows
        const QPointer<QQuickWindow> window = m_newWindows.back();
        m_newWindows.pop_back();
        if (!window.isNull()) {
            m_walk.lookAtWindow(window);
        }
    }
    const std::vector<QPointer<QQuickItem>> changed = m_containers.takeChanged();
    for (const QPointer<QQuickItem>& container : changed) {
        if (!container.isNull()) {
            m_walk.lookAtContainer(container);
            isNew = true;
        }
    }
    m_walk.finish();
    return isNew;
}

} // namespace UIControls
} // namespace Vorsk
