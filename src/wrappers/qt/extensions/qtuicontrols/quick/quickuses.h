// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementtype.h"

#include <memory>

QT_BEGIN_NAMESPACE
class QEvent;
class QObject;
QT_END_NAMESPACE

namespace Vorsk {

namespace UIAbstraction {
class UIElement;
}

namespace UIControls {

using UIAbstraction::UIElement;
class QuickPageTabs;
class QuickParts;
struct TrackerServices;

/**
 * Counts the uses of all controls of Qt Quick. Signals are connected when input first goes to a
 * control, so that a control that nobody operates costs nothing, and again when the application has
 * cut the connections since. A member of the tracker; GUI thread only.
 */
class QuickUses {
public:
    /** The services outlive this object. */
    explicit QuickUses(const TrackerServices& services);
    ~QuickUses();
    Q_DISABLE_COPY(QuickUses)

    /** Where the entries of combo boxes have their elements, and who knows the tabs of pages; both
     * outlive this object's last event. */
    void setParts(const QuickParts& parts, QuickPageTabs& tabs);

    /**
     * The object has become a control: an item, a pointer handler, an action or a shortcut; for the
     * pages of a swipe view, which are tabs, the page. To be called once for each object, after its
     * element was added. An object that stands for the element of another, such as a menu item for
     * that of its action, is watched too.
     */
    void watch(QObject* object, ElementType type, UIElement* element);

    /** Every event, before its receiver gets it. */
    void handleEvent(QObject* object, QEvent* event);

private:
    class Private;
    std::unique_ptr<Private> m_private;
};

} // namespace UIControls
} // namespace Vorsk
