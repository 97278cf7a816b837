// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <memory>
#include <vector>

namespace Vorsk {
namespace UIControls {

/** Who wants to know what objects of the application signal; called on the GUI thread. */
class SignalReceiver {
public:
    /** An item got or lost children; no more may be asked of it than of a QQuickItem, since it may
     * be half destroyed. */
    virtual void childrenChanged(QObject* item) = 0;
    /** Something that is followed of a control is no longer as it was. */
    virtual void stateChanged(QObject* object) = 0;
    /** A window is about to render a frame; its items are polished. */
    virtual void framePrepared(QObject* window) = 0;
    /** A window has shown a frame. */
    virtual void frameShown(QObject* window) = 0;

protected:
    ~SignalReceiver() = default;
};

/** Takes the signals of up to a number of objects: Qt looks through all connections of a receiver
 * to find a signal's sender, so that one hub for all of them would cost each signal more with each
 * object. */
class SignalHub : public QObject {
    Q_OBJECT

public:
    explicit SignalHub(SignalReceiver& receiver)
        : m_receiver(receiver) {}

public Q_SLOTS:
    void onChildrenChanged() { m_receiver.childrenChanged(sender()); }
    void onStateChanged() { m_receiver.stateChanged(sender()); }
    void onFramePrepared() { m_receiver.framePrepared(sender()); }
    void onFrameShown() { m_receiver.frameShown(sender()); }

private:
    SignalReceiver& m_receiver;
};

/** Connects signals, by their numbers, to as many hubs as it takes. GUI thread only. */
class SignalHubs {
public:
    explicit SignalHubs(SignalReceiver& receiver)
        : m_receiver(receiver) {}

    void connectChildrenChanged(QObject* item);
    void connectStateChanged(QObject* object, int signal);
    void connectFramePrepared(QObject* window);
    void connectFrameShown(QObject* window);

private:
    SignalHub* hub();

    SignalReceiver& m_receiver;
    std::vector<std::unique_ptr<SignalHub>> m_hubs;
    int m_connections = 0;
};

} // namespace UIControls
} // namespace Vorsk
