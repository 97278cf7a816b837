// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/controlstracker.h"

#include <QByteArray>

#include <memory>

namespace Vorsk {
namespace UIControls {

/**
 * The half for Qt Quick, which is a library of its own beside this one: brought in when the program
 * has loaded Qt Quick itself, so that a program of widgets never does because of us. Programs load
 * Qt Quick before the first of its objects gets an event. A library that is missing is one warning.
 * GUI thread only.
 */
class QuickHalf final : public ControlsTracker {
public:
    /** What the library exports: makes its tracker, which the caller owns. */
    using Entry = ControlsTracker* (*)(const TrackerServices* services);
    static constexpr const char* entryName = "uicov_quick_half";

    /**
     * @param services all that it refers to outlives this
     * @param folder that the half's library is in, with a slash at its end; null for that of this
     * code
     */
    explicit QuickHalf(const TrackerServices& services, const QByteArray& folder = QByteArray());
    ~QuickHalf() override;

    void handleEvent(QObject* object, QEvent* event) override;

private:
    /** Looks whether it is time, when libraries have been loaded since it was last asked. */
    void lookForQtQuick();
    void bringIn();

    TrackerServices m_services;
    QByteArray m_folder;
    std::unique_ptr<ControlsTracker> m_tracker;
    /** How many libraries the process had loaded when it was last asked. */
    unsigned long long m_loadedLibraries = 0;
    bool m_isMissing = false;
};

} // namespace UIControls
} // namespace Vorsk
