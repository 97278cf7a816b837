// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/controlstracker.h"
#include "qtuicontrols/embeddedscenes.h"

#include <vorsk/extension.h>

#include <memory>
#include <string>

QT_BEGIN_NAMESPACE
class QEvent;
class QObject;
QT_END_NAMESPACE

namespace Vorsk {

class ExtensionHost;

namespace UICoverage {
class StreamUIElementExporter;
}

namespace UIControls {
class BookOfElements;
class InputAttribution;
class QuickHalf;
} // namespace UIControls

namespace QtWrapper {

/**
 * What the host gets from this library: owns the element book, the attribution of input and the
 * halves for both toolkits, and hands them every event. One for the process, built by the first
 * init_extension() and destroyed at exit. Nothing is tracked before initialize(); all else happens
 * on the GUI thread.
 */
class QtUiControlsExtension : public Extension {
public:
    /** The one extension, built by the first call; the given host gets the messages from now on. */
    static QtUiControlsExtension* instance(ExtensionHost* host);

    ~QtUiControlsExtension() override;

    /**
     * Reads the environment and the options and, when coverage is on, registers for all events of
     * all objects. Otherwise nothing happens, without a word. The host has set the options before.
     */
    void initialize(WrapperContext* context) override;

private:
    QtUiControlsExtension();

    static void eventCallback(QObject* object, QEvent* event);
    static void deliveryEnded(QObject* object, QEvent* event);
    void handleEvent(QObject* object, QEvent* event);
    bool isOptionEnabled(const std::string& key) const;
    void readOptions();

    UIControls::TrackerOptions m_trackerOptions;
    UIControls::SceneRegistry m_scenes;
    std::unique_ptr<UICoverage::StreamUIElementExporter> m_exporter;
    std::unique_ptr<UIControls::BookOfElements> m_book;
    std::unique_ptr<UIControls::InputAttribution> m_attribution;
    /** Null where a half is not wanted. */
    std::unique_ptr<UIControls::ControlsTracker> m_widgets;
    std::unique_ptr<UIControls::QuickHalf> m_quick;
};

} // namespace QtWrapper
} // namespace Vorsk
