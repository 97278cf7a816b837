// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

/**
 * A program as users have them, of a given size, in the steps that are measured. It knows nothing
 * of who watches it. Owned by main(); everything happens on the GUI thread, in this order.
 */
class Subject {
public:
    virtual ~Subject() = default;

    /** Builds a window with that many leaves, shows it, and returns when it has been painted. */
    virtual void buildAndShow(int leaves) = 0;
    /** Sends events that nobody waits for, to one leaf after the other. */
    virtual void sendEvents(int count) = 0;
    /** Paints, or moves, one leaf after the other. */
    virtual void disturb(int count) = 0;
    /** Clicks one leaf after the other with the mouse, as often as told. */
    virtual void click(int count) = 0;
    virtual void destroy() = 0;

    /** How many clicks arrived where the application waits for them. */
    int clicks() const { return m_clicks; }

protected:
    Subject() = default;

    int m_clicks = 0;
};
