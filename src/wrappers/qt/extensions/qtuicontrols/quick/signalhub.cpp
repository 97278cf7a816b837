// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/signalhub.h"

#include <QMetaObject>
#include <QQuickItem>
#include <QQuickWindow>

namespace Vorsk {
namespace UIControls {

namespace {

constexpr int mostConnections = 128;

int slotNumber(const char* signature) {
    return SignalHub::staticMetaObject.indexOfSlot(signature);
}

} // namespace

SignalHub* SignalHubs::hub() {
    if (m_hubs.empty() || m_connections >= mostConnections) {
        m_hubs.push_back(std::make_unique<SignalHub>(m_receiver));
        m_connections = 0;
    }
    ++m_connections;
    return m_hubs.back().get();
}

void SignalHubs::connectChildrenChanged(QObject* item) {
    static const int signal = QQuickItem::staticMetaObject.indexOfSignal("childrenChanged()");
    static const int slot = slotNumber("onChildrenChanged()");
    QMetaObject::connect(item, signal, hub(), slot, Qt::DirectConnection);
}

void SignalHubs::connectStateChanged(QObject* object, int signal) {
    static const int slot = slotNumber("onStateChanged()");
    if (signal != -1) {
        QMetaObject::connect(object, signal, hub(), slot, Qt::DirectConnection);
    }
}

void SignalHubs::connectFramePrepared(QObject* window) {
    static const int signal = QQuickWindow::staticMetaObject.indexOfSignal("afterAnimating()");
    static const int slot = slotNumber("onFramePrepared()");
    QMetaObject::connect(window, signal, hub(), slot, Qt::DirectConnection);
}

void SignalHubs::connectFrameShown(QObject* window) {
    static const int signal = QQuickWindow::staticMetaObject.indexOfSignal("frameSwapped()");
    static const int slot = slotNumber("onFrameShown()");
    // Signalled on the thread that renders.
    QMetaObject::connect(window, signal, hub(), slot, Qt::AutoConnection);
}

} // namespace UIControls
} // namespace Vorsk
