// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QEvent>
#include <QKeySequence>

namespace Vorsk {
namespace UIControls {

/**
 * What a person does at a time, from a press to its release: what the events of it say, since who
 * counts a use sees only the signal that it leads to. GUI thread only.
 */
class QuickGesture {
public:
    /** To be called for each input event before its receiver gets it. */
    void note(QEvent* event);

    /** Whether something new begins with such an event; moves and releases belong to their press.
     */
    static bool isBegunBy(QEvent::Type type);

    /** Another number for each press, key, wheel step, shortcut and so on. */
    int serial() const { return m_serial; }
    /** A further one that no input event tells of, as what an accessibility client does. */
    void begin() { ++m_serial; }

    /** Whether the last input method event has changed the text, and not only what is being
     * composed. */
    bool isCommitted() const { return m_isCommitted; }
    /** The keys of the last shortcut. */
    const QKeySequence& shortcut() const { return m_shortcut; }

private:
    int m_serial = 0;
    bool m_isCommitted = false;
    QKeySequence m_shortcut;
};

} // namespace UIControls
} // namespace Vorsk
