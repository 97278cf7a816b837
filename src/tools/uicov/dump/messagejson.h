// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recording/frame.h"
#include "recording/record.h"

#include <QJsonObject>
#include <QString>

namespace Vorsk::UIAbstraction {
class UIElement;
}

namespace Uicov::Recording {
struct HookMessage;
}

// The frames of a recording, each as one JSON object for tools: with everything that the frame
// says but the pixels of pictures. Needs nothing of the frames before.
namespace Uicov::Dump {

/** "frame" says what it is, "microseconds" when it was written; the other keys depend on it. */
QJsonObject frameJson(const Recording::Frame& frame);

} // namespace Uicov::Dump
