// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/attribution.h"
#include "qtuicontrols/elementbook.h"
#include "qtuicontrols/quick/quickowners.h"

QT_BEGIN_NAMESPACE
class QKeySequence;
class QQuickItem;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * Says of an object of Qt Quick that signals whether a person operates it at this moment, by the
 * delivery that decides and by who owns its receiver. Reads plain getters. GUI thread only.
 */
class QuickJudge {
public:
    QuickJudge(ElementBook& book, Attribution& attribution);

    const QuickOwners& owners() const { return m_owners; }
    /** Of the delivery that decides; None when none is going on. */
    QEvent::Type decisiveType() const { return m_attribution.verdict().type; }
    /** Whether an accessibility client acts: then all that signals seems to be operated. */
    bool isClientActing() const {
        return m_attribution.verdict().cause == Attribution::Cause::Accessibility;
    }

    /** A control whose parts are none themselves. */
    bool isOperated(QObject* control) const;
    /** The same, if what got the input is a text input in it and not itself. */
    bool isTypedIntoPartOf(QObject* control) const;
    /** A list whose current row changes: by itself, or by a press on a row. */
    bool isViewOperated(QObject* view) const;
    /** What shows one page at a time and is no control itself. */
    bool isContainerOperated(QObject* container) const;
    /** A pointer handler: input is not delivered to it, nor to its item. */
    bool isHandlerOperated(QObject* handler) const;
    /** An action, a menu item or a shortcut, by itself or by what shows it. */
    bool isTriggered(QObject* command) const;

    /** How a command is being reached; false when by none of the ways.
     * @param shortcut the keys of the last shortcut */
    bool findWay(QObject* command, const QKeySequence& shortcut, Way& way) const;

    /** The row of the view that the control or handler is or fills; null when it is only something
     * on a row. */
    QQuickItem* rowOf(QObject* control, QObject* view) const;
    /** The list, tree or table around the control; null when there is none. */
    QObject* viewAround(QObject* control) const;

private:
    using Verdict = Attribution::Verdict;

    bool isSameControl(const QObject* one, const QObject* other) const;
    bool isLaterStepOf(QObject* object, const Verdict& verdict) const;
    bool isDragOf(QObject* view, const Verdict& verdict) const;
    bool isTriggeredBy(QObject* command, QObject* receiver) const;

    ElementBook& m_book;
    Attribution& m_attribution;
    QuickOwners m_owners;
};

} // namespace UIControls
} // namespace Vorsk
