// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tracking/metamethods.h"

#include <QObject>

#include <cstddef>
#include <deque>

namespace Vorsk {
namespace UIControls {

/**
 * Connects a signal to a hub's slot unless that is done already: for connections that are made when
 * input first goes to a control and made again when the application has cut all connections of its
 * object. Both are absolute method numbers.
 */
inline void connectOnce(const QObject* sender, int signal, const QObject* hub, int slot) {
    QMetaObject::connect(sender, signal, hub, slot, Qt::DirectConnection | Qt::UniqueConnection);
}

/**
 * Such connections, of which only the latest are kept: Qt looks through all connections of a
 * receiver to find a signal's sender, so that a click would cost more with each control that was
 * clicked before. What was given up is connected again when input next goes to it. GUI thread only.
 */
class LazyConnections {
public:
    /** As connectOnce(). */
    void connect(const QObject* sender, int signal, const QObject* hub, int slot) {
        const QMetaObject::Connection made = QMetaObject::connect(
            sender, signal, hub, slot, Qt::DirectConnection | Qt::UniqueConnection);
        if (!made || m_keepsAll) {
            return; // there already
        }
        m_connections.push_back(made);
        if (m_connections.size() > most) {
            QObject::disconnect(m_connections.front());
            m_connections.pop_front();
        }
    }

    /** For what happens without input to a control: none is given up from now on. */
    void keepAll() {
        m_keepsAll = true;
        m_connections.clear();
    }

private:
    /** Many more than the controls that are held at the same time have. */
    static constexpr std::size_t most = 128;

    std::deque<QMetaObject::Connection> m_connections;
    bool m_keepsAll = false;
};

} // namespace UIControls
} // namespace Vorsk
