#pragma once

#include "qtuicontrols/controlstracker.h"

namespace Vorsk {
namespace UIControls {

/** The half of the extension that knows Qt Widgets. GUI thread only. */
class WidgetsTracker final : public ControlsTracker {
public:
    explicit WidgetsTracker(const TrackerServices& services);
    ~WidgetsTracker() override;

    void handleEvent(QObject* object, QEvent* event) override;

private:
    TrackerServices m_services;
};

} // namespace UIControls
} // namespace Vorsk
