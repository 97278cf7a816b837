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
class QuickParts;

/**
 * What signals of controls are connected to: asks whether a person operates the sender and counts
 * the use, once for each gesture. GUI thread only.
 */
class QuickUseSlots : public QObject {
    Q_OBJECT

public:
    /** All outlive this object. */
    QuickUseSlots(ElementBook& book, const QuickJudge& judge, QuickMotions& motions,
                  const QuickGesture& gesture);

    void setParts(const QuickParts& parts) { m_parts = &parts; }

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

public Q_SLOTS:
    void onActivated();
    void onActiveChanged();
    void onChanged();
    void onChosen();
    void onClicked();
    void onConfirmed();
    void onCurrentChanged();
    void onEdited();
    void onExpanded();
    void onLinkActivated();
    void onMoved();
    void onMovingChanged();
    void onPageChanged();
    void onPartEdited();
    void onPinched();
    void onPressedChanged();
    void onRowClicked();
    void onSorted();
    void onTapped();
    void onToggled();
    void onTouched();
    void onTriggered();

private:
    void countIfOperated(QObject* control, Use use);
    void countState(QObject* control);
    void countEdit(QObject* control);
    void countElement(QObject* object, UIElement* element, Use use);
    void countRowOf(QObject* control);
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
    struct Page {
        QPointer<QObject> object;
        UIElement* tab;
    };
    QHash<const QObject*, Page> m_pages;
};

} // namespace UIControls
} // namespace Vorsk
