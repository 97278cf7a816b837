// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <vector>

namespace Vorsk {
namespace UIControls {

class QuickGesture;
class QuickJudge;
class QuickMotions;
class QuickPageTabs;
class QuickParts;

/**
 * What the signals of controls lead to: asks whether a person operates the sender and counts the
 * use, once for each gesture. GUI thread only.
 */
class QuickUseSlots {
public:
    /** All outlive this object. */
    QuickUseSlots(ElementBook& book, const QuickJudge& judge, QuickMotions& motions,
                  const QuickGesture& gesture);

    void setParts(const QuickParts& parts) { m_parts = &parts; }
    void setPageTabs(QuickPageTabs& tabs) { m_pageTabs = &tabs; }

    /** Has the page's tab counted when the page becomes the current one of what it lies in. */
    void addPage(QObject* page, UIElement* tab);

    /** A person does this to the control now. */
    void count(QObject* control, Use use);

    /** To be called for each event; counts what an accessibility client has done in a call that is
     * over. */
    void noteEvent() {
        if (!m_pending.empty()) {
            countPending();
        }
    }

    // One for each kind of signal; called by receive().
    using Slot = void (QuickUseSlots::*)(QObject* sender);
    void receive(QObject* sender, Slot slot);
    void onActivated(QObject* sender);
    void onActiveChanged(QObject* sender);
    void onChanged(QObject* sender);
    void onChosen(QObject* sender);
    void onClicked(QObject* sender);
    void onConfirmed(QObject* sender);
    void onCurrentChanged(QObject* sender);
    void onEdited(QObject* sender);
    void onExpanded(QObject* sender);
    void onLinkActivated(QObject* sender);
    void onMoved(QObject* sender);
    void onMovingChanged(QObject* sender);
    void onPageChanged(QObject* sender);
    void onPartEdited(QObject* sender);
    void onPinched(QObject* sender);
    void onPressedChanged(QObject* sender);
    void onRowClicked(QObject* sender);
    void onSorted(QObject* sender);
    void onTapped(QObject* sender);
    void onToggled(QObject* sender);
    void onTouched(QObject* sender);
    void onTriggered(QObject* sender);

private:
    void countIfOperated(QObject* control, Use use);
    void countState(QObject* control);
    void countEdit(QObject* control);
    void countElement(QObject* object, UIElement* element, Use use);
    void countRowOf(QObject* control);
    void countPage(QObject* page, UIElement* tab);
    void countPending();
    bool isCounted(const UIElement* element, Use use);
    bool isStateCounted(const UIElement* element);
    void tellWay(QObject* command, UIElement* element);
    void addWay(UIElement* element, Attribute attribute, Way way);

    struct Counted {
        const UIElement* element;
        Use use;
    };

    ElementBook& m_book;
    const QuickJudge& m_judge;
    QuickMotions& m_motions;
    const QuickGesture& m_gesture;
    /** Null where entries have no elements. */
    const QuickParts* m_parts = nullptr;
    /** Null where pages have no tabs. */
    QuickPageTabs* m_pageTabs = nullptr;
    /** In the gesture of that number. */
    std::vector<Counted> m_counted;
    int m_countedIn = 0;
    /** What the last sender of the present call of an accessibility client has told. Handlers in
     * QML run before any slot, so that what they set signals before what the client operates. */
    struct Pending {
        QPointer<QObject> object;
        UIElement* element;
        Use use;
    };
    std::vector<Pending> m_pending;
    const QObject* m_pendingSender = nullptr;
    /** Whose signal is being handled; null for none. */
    const QObject* m_sender = nullptr;
    struct Page {
        QPointer<QObject> object;
        UIElement* tab = nullptr;
    };
    QHash<const QObject*, Page> m_pages;
};

} // namespace UIControls
} // namespace Vorsk
