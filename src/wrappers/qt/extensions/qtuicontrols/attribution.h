// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QEvent>
#include <QObject>

namespace Vorsk {
namespace UIControls {

/**
 * Answers the one question on which every count depends: was it a person who did this, and to whom?
 * An interface of virtual operations only, as ElementBook. GUI thread only.
 *
 * While an event is delivered, the innermost delivery that is going on decides. If it is input
 * (mouse, touch, tablet, wheel, key, shortcut, input method, drop, context-menu request), the
 * receiver is what the person operated. Anything else (a timer, a queued call, a paint event) was
 * started by the program, even when a press is still open further out, as during the nested event
 * loop of a dialog.
 */
class Attribution {
public:
    enum class Cause : quint8 {
        Program,       ///< nobody's input: nothing counts
        Input,         ///< input to receiver
        Accessibility, ///< a call of an accessibility client; the first control that signals is the
                       ///< one it operates
        Later ///< a timer, queued call or animation step to receiver; counts only for what input
              ///< has armed
    };

    /** The delivery that decides at this moment. */
    struct Verdict {
        Cause cause = Cause::Program;
        /** What the event was delivered to last, as a key that its first receiver ignored; null
         * when that has died. */
        QObject* receiver = nullptr;
        QEvent::Type type = QEvent::None;
    };

    virtual Verdict verdict() const = 0;

    /** The object that got the last press, key, wheel step or touch, whether its delivery is over
     * or not; null when it has died. For what input starts and ends later. */
    virtual QObject* lastInputReceiver() const = 0;

    /**
     * Whether an accessibility client operates the object: true for the first that asks during one
     * of its calls, and from then on for the same object only.
     */
    virtual bool isOperatedByClient(const QObject* object) = 0;

    /**
     * Has deliveries that are no input told apart as Later until disarm(), since the object has
     * begun something by input that a timer or a queued call will end (an animated click,
     * auto-repeat, a tumbler that is still moving). The object's death disarms it.
     */
    virtual void arm(QObject* object) = 0;
    virtual void disarm(QObject* object) = 0;
    virtual bool isArmed(const QObject* object) const = 0;

protected:
    Attribution() = default;
    virtual ~Attribution() = default;
    Q_DISABLE_COPY(Attribution)
};

} // namespace UIControls
} // namespace Vorsk
