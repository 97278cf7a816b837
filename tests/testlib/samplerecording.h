// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "testlib/recordingbuilder.h"

namespace TestLib {

/**
 * Fills a recording with what a small Qt Widgets application sends: a main window with a menu bar,
 * two check boxes, an input and buttons, and a dialog; some of it used, shown or missed. Ends it in
 * order unless told otherwise.
 */
void fillSampleRecording(RecordingBuilder& recording, bool endsInOrder = true);

} // namespace TestLib
