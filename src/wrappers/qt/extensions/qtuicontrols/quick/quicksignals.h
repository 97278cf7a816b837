// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementtype.h"

#include <QByteArray>
#include <QHash>
#include <QPair>

#include <functional>
#include <vector>

QT_BEGIN_NAMESPACE
class QObject;
struct QMetaObject;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * Which signals of a control tell of its uses, and the connections to them. Both generations of
 * Controls and plain items differ in what these signals are called, not in what they mean. Classes
 * in C++ are looked through once; the signals of classes that QML defines each time, since those
 * can die. GUI thread only.
 */
class QuickSignals {
public:
    /** What the signals of that object are connected to: always the same. */
    using ReceiverOf = std::function<const QObject*(const QObject* sender)>;

    /** @param receivers the class of all receivers; has the slots that the table in the source file
     * names */
    QuickSignals(const QMetaObject& receivers, ReceiverOf receiverOf);

    /** Connects what tells of uses of such a control; what is connected already is not connected
     * twice. */
    void connect(QObject* control, ElementType type);

    /** Connects the change of the current page of a tab bar, a swipe view or what is like them. */
    void connectPages(QObject* container);

    /** Connects the text input in a control that may be edited. */
    void connectPart(QObject* textInput);

    /** Connects, besides, what accessibility clients change: they set values, as no input does. */
    void connectForClients(QObject* control, ElementType type);

private:
    /** The numbers of a signal and a slot. */
    using Link = QPair<int, int>;
    struct Known {
        QByteArray className; // another class can come to stand at the address
        std::vector<Link> links;
    };

    std::vector<Link> find(const QMetaObject& cls, ElementType type) const;
    const std::vector<Link>& findOnce(const QMetaObject& cppClass, ElementType type);
    void connect(QObject* sender, const std::vector<Link>& links);
    int slotNumber(const char* signature) const;

    const QMetaObject& m_receivers;
    ReceiverOf m_receiverOf;
    QHash<QPair<const QMetaObject*, int>, Known> m_known;
};

} // namespace UIControls
} // namespace Vorsk
