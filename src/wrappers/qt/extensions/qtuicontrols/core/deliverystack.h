// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>

#include <vector>

namespace Vorsk {
namespace UIControls {

/**
 * The deliveries of events that are going on, the innermost last. Only what can decide who did
 * something is kept: a delivery that is no input is noted while an outer one is input, or while the
 * stack is told to keep all.
 *
 * A host tells when a delivery begins; not every host tells when it ends. Where it does not, what
 * has ended is found when the next one begins and when somebody asks: a delivery whose stack frame
 * lies at or below the present one, or that began in a nested event loop that is no more, has
 * ended. The stack grows towards lower addresses on every processor that Qt 5 runs on. What has
 * ended in a frame above that of who asks is not found in this way. So of what is no input such a
 * host's deliveries are noted only when they come from an event loop: whatever else an input leads
 * to, as the painting or hiding of something, is over soon and would stand for the input ever
 * after.
 *
 * One delivery may reach several receivers, as a key that a widget ignores and its parent gets;
 * each is an entry of its own above that of the delivery. GUI thread only.
 */
class DeliveryStack {
public:
    struct Delivery {
        /** For comparison only: it may be dead. */
        const QObject* receiver = nullptr;
        /** For comparison only. */
        const QEvent* event = nullptr;
        QEvent::Type type = QEvent::None;
        /** Guards the receiver; not set for what is no input unless all is kept. */
        QPointer<QObject> living;
        const void* frame = nullptr;
        int loopLevel = 0;
    };

    /**
     * @param frame an address in the stack frame of the call that tells, which is deeper than the
     * delivery's own
     */
    void begin(QObject* receiver, const QEvent* event, QEvent::Type type, const void* frame);

    /** The delivery with all that is noted above it has ended. One that was not noted changes
     * nothing. */
    void end(const QObject* receiver, const QEvent* event);

    /** The innermost delivery; null when none is going on. Good until the next call of begin(),
     * end() or innermost(). */
    const Delivery* innermost(const void* frame);

    /** The one that was noted last and is not known to have ended; null when there is none. */
    const Delivery* last() const { return m_deliveries.empty() ? nullptr : &m_deliveries.back(); }

    bool isEmpty() const { return m_deliveries.empty(); }

    /** False when begin() has nothing to do for what is no input. */
    bool notesAll() const { return m_keepsAll || !m_deliveries.empty(); }

    /** Has deliveries noted that are no input and lie within none. */
    void setKeepsAll(bool keepsAll) { m_keepsAll = keepsAll; }

private:
    void prune(const void* frame);

    std::vector<Delivery> m_deliveries;
    bool m_keepsAll = false;
    bool m_hearsEnds = false;
};

} // namespace UIControls
} // namespace Vorsk
