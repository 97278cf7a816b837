// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/extension.h>

#include <atomic>
#include <string>

QT_BEGIN_NAMESPACE
class QEvent;
class QObject;
class QThread;
QT_END_NAMESPACE

namespace Vorsk {

class ExtensionHost;

namespace UICoverage {
class QtQuickCoverageTracker;
class QtWidgetsCoverageTracker;
class StreamUIElementExporter;
} // namespace UICoverage

namespace QtWrapper {

/**
 * What the host gets from this library: owns the exporter and both trackers, decides once, in
 * initialize(), whether coverage is on and for which toolkits, and hands every event to the
 * trackers. One for the process, built by the first init_extension(), on whatever thread that comes
 * and even before there is an application, and destroyed at exit. The rest on the GUI thread only.
 */
class QtUiCoverageExtension : public Extension {
public:
    /** The one extension, built by the first call; the given host gets the messages from now on. */
    static QtUiCoverageExtension* instance(ExtensionHost* host);

    ~QtUiCoverageExtension() override;

    /**
     * Reads the environment and the options, and, when coverage is on, registers for all events of
     * all objects. Otherwise nothing happens, without a word. The host has set the options before.
     */
    void initialize(WrapperContext* context) override;

private:
    QtUiCoverageExtension();

    static void eventCallback(QObject* object, QEvent* event);
    bool isOptionEnabled(const std::string& key) const;
    void settle();
    void moveTo(QThread* home);

    std::atomic<bool> m_isSettled{false};
    bool m_qtWidgetsEnabled = false;
    bool m_qtQuickEnabled = false;
    UICoverage::StreamUIElementExporter* m_exporter;
    UICoverage::QtWidgetsCoverageTracker* m_widgetsTracker;
    UICoverage::QtQuickCoverageTracker* m_quickTracker;
};

} // namespace QtWrapper
} // namespace Vorsk
