// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"
#include "qtuicontrols/quick/signalhub.h"

#include <QPointer>
#include <QSet>

#include <vector>

namespace Vorsk {
namespace UIControls {

class QuickClass;
class QuickViews;

/** Keeps what is told of controls and views true: caption, enabled, hidden. What has changed is
 * read when a frame is prepared or input comes, and not for each signal. GUI thread only. */
class QuickStates {
public:
    QuickStates(ElementBook& book, QuickViews& views, SignalHubs& hubs);

    /** What differs from its default when the element is made. */
    void describe(const QObject* object, const QuickClass& cls, UIElement* view, Description& what);
    /** Follows the object from now on. */
    void follow(QObject* object, const QuickClass& cls);

    void noteChange(QObject* object) { m_changed.insert(object); }
    /** Of all controls of a view that has come up. */
    void noteControlsOf(UIElement* view);
    /** Tells of what has changed since. @return whether anything had */
    bool update();

    /** Whether a person could operate it, were it visible. */
    static bool isEnabled(const QObject* object, const QuickClass& cls);

private:
    /** Whether something between it and its view hides it; false where that cannot be told, while
     * the view is hidden. */
    bool isHidden(const QObject* object, UIElement* view, bool otherwise);
    void updateObject(QObject* object, UIElement* element);

    ElementBook& m_book;
    QuickViews& m_views;
    SignalHubs& m_hubs;
    /** By address: what has died since has no element. */
    QSet<QObject*> m_changed;
};

} // namespace UIControls
} // namespace Vorsk
