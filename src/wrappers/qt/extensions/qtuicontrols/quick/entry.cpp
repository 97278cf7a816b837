// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quicktracker.h"

// The library's C boundary: the one symbol that it exports.
extern "C" {

/**
 * Called by the controls extension, on the GUI thread, when it has found that the program uses Qt
 * Quick.
 * @param services what the tracker works with; all of it outlives the tracker
 * @return the tracker; belongs to the caller
 */
Q_DECL_EXPORT Vorsk::UIControls::ControlsTracker*
uicov_quick_half(const Vorsk::UIControls::TrackerServices* services) {
    return new Vorsk::UIControls::QuickTracker(*services);
}
}
