// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/controlstracker.h"

#include <memory>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * The half of the extension that knows Qt Widgets: hands each event to what finds views and
 * controls (WidgetSurvey, WidgetViews), follows their state (WidgetStates), takes pictures of views
 * (WidgetPictures) and counts uses (WidgetUses, Commands). GUI thread only.
 */
class WidgetsTracker final : public ControlsTracker {
public:
    explicit WidgetsTracker(const TrackerServices& services);
    ~WidgetsTracker() override;

    void handleEvent(QObject* object, QEvent* event) override;

private:
    struct Pieces;

    void handleWidget(QWidget* widget, const QEvent& event);
    void handleShow(QWidget* widget);
    void notePolished(QWidget* widget);

    std::unique_ptr<Pieces> m_pieces;
};

} // namespace UIControls
} // namespace Vorsk
