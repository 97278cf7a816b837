// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/controlstracker.h"

#include <memory>

namespace Vorsk {
namespace UIControls {

class QuickSurvey;
class QuickUses;

/** The half of the extension that knows Qt Quick: hands events to what finds its views and controls
 * (QuickSurvey) and to what counts their uses (QuickUses). GUI thread only. */
class QuickTracker final : public ControlsTracker {
public:
    explicit QuickTracker(const TrackerServices& services);
    ~QuickTracker() override;

    void handleEvent(QObject* object, QEvent* event) override;

private:
    std::unique_ptr<QuickUses> m_uses;
    std::unique_ptr<QuickSurvey> m_survey;
};

} // namespace UIControls
} // namespace Vorsk
