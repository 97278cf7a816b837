// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/quick/quickuseslots.h"

#include <QObject>

#include <array>
#include <memory>

namespace Vorsk {
namespace UIControls {

/** What signals of controls are connected to: hands each with its sender to QuickUseSlots. */
class QuickUseHub : public QObject {
    Q_OBJECT

public:
    explicit QuickUseHub(QuickUseSlots& uses)
        : m_uses(uses) {}

public Q_SLOTS:
    void onActivated() { tell(&QuickUseSlots::onActivated); }
    void onActiveChanged() { tell(&QuickUseSlots::onActiveChanged); }
    void onChanged() { tell(&QuickUseSlots::onChanged); }
    void onChosen() { tell(&QuickUseSlots::onChosen); }
    void onClicked() { tell(&QuickUseSlots::onClicked); }
    void onConfirmed() { tell(&QuickUseSlots::onConfirmed); }
    void onCurrentChanged() { tell(&QuickUseSlots::onCurrentChanged); }
    void onEdited() { tell(&QuickUseSlots::onEdited); }
    void onExpanded() { tell(&QuickUseSlots::onExpanded); }
    void onLinkActivated() { tell(&QuickUseSlots::onLinkActivated); }
    void onMoved() { tell(&QuickUseSlots::onMoved); }
    void onMovingChanged() { tell(&QuickUseSlots::onMovingChanged); }
    void onPageChanged() { tell(&QuickUseSlots::onPageChanged); }
    void onPartEdited() { tell(&QuickUseSlots::onPartEdited); }
    void onPinched() { tell(&QuickUseSlots::onPinched); }
    void onPressedChanged() { tell(&QuickUseSlots::onPressedChanged); }
    void onRowClicked() { tell(&QuickUseSlots::onRowClicked); }
    void onSorted() { tell(&QuickUseSlots::onSorted); }
    void onTapped() { tell(&QuickUseSlots::onTapped); }
    void onToggled() { tell(&QuickUseSlots::onToggled); }
    void onTouched() { tell(&QuickUseSlots::onTouched); }
    void onTriggered() { tell(&QuickUseSlots::onTriggered); }

private:
    void tell(QuickUseSlots::Slot slot) { m_uses.receive(sender(), slot); }

    QuickUseSlots& m_uses;
};

/**
 * As many hubs as keep the number of connections of each small: Qt looks through all connections of
 * a receiver to find a signal's sender. Which one an object has follows from its address, so that
 * connecting it twice can be told. GUI thread only.
 */
class QuickUseHubs {
public:
    /** @param uses outlives this object */
    explicit QuickUseHubs(QuickUseSlots& uses)
        : m_uses(uses) {}

    QuickUseHub* hubFor(const QObject* sender);

private:
    static constexpr std::size_t number = 256; // told by a byte

    QuickUseSlots& m_uses;
    std::array<std::unique_ptr<QuickUseHub>, number> m_hubs;
};

} // namespace UIControls
} // namespace Vorsk
