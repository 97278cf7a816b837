// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtuicoverageextension.h"

#include "qtuicoverage/qtquickcoveragetracker.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "tracking/environment.h"
#include "tracking/logging.h"
#include "tracking/streamuielementexporter.h"

#include <vorsk/optionset.h>
#include <vorsk/wrappercontext.h>

#include <QCoreApplication>
#include <QThread>

#include <atomic>
#include <vector>

namespace Vorsk {
namespace QtWrapper {

namespace {

/** Where events go; null before the first init_extension() and from the extension's destruction on.
 */
std::atomic<QtUiCoverageExtension*> activeExtension{nullptr};

} // namespace

QtUiCoverageExtension* QtUiCoverageExtension::instance(ExtensionHost* host) {
    UICoverage::setExtensionHost(host);
    static QtUiCoverageExtension extension;
    activeExtension = &extension;
    return &extension;
}

QtUiCoverageExtension::QtUiCoverageExtension()
    : m_exporter(new UICoverage::StreamUIElementExporter)
    , m_widgetsTracker(new UICoverage::QtWidgetsCoverageTracker(m_exporter))
    , m_quickTracker(new UICoverage::QtQuickCoverageTracker(m_exporter)) {
    QCoreApplication* const application = QCoreApplication::instance();
    moveTo(application == nullptr ? nullptr : application->thread());
}

QtUiCoverageExtension::~QtUiCoverageExtension() {
    // The exporter goes last, so that no element can announce anything to a dead one.
    delete m_widgetsTracker;
    delete m_quickTracker;
    delete m_exporter;
    activeExtension = nullptr;
}

/**
 * What was built before there was an application belongs to no thread until the GUI thread takes
 * it. Where receivers live on any other, automatic connections are queued: records come late or
 * never, and dead objects stay in the tables.
 */
void QtUiCoverageExtension::settle() {
    QCoreApplication* const application = QCoreApplication::instance();
    if (application == nullptr || application->thread() != QThread::currentThread()) {
        return;
    }
    moveTo(application->thread());
}

void QtUiCoverageExtension::moveTo(QThread* home) {
    for (QObject* part :
         std::initializer_list<QObject*>{m_exporter, m_widgetsTracker, m_quickTracker}) {
        part->moveToThread(home);
    }
    m_isSettled = home != nullptr;
}

void QtUiCoverageExtension::initialize(WrapperContext* context) {
    if (UICoverage::getEnvironmentVariable("VORSK_GUI_COVERAGE") != "1") {
        return;
    }
    m_qtWidgetsEnabled = isOptionEnabled("qtwidgets");
    m_qtQuickEnabled = isOptionEnabled("qtquick");
    if (!isOptionEnabled("enabled") || (!m_qtWidgetsEnabled && !m_qtQuickEnabled)) {
        return;
    }
    const bool takeScreenshots = isOptionEnabled("takeScreenshotsOfElements");
    m_widgetsTracker->setTakeScreenshotsOfElements(takeScreenshots);
    m_quickTracker->setTakeScreenshotsOfElements(takeScreenshots);
    context->registerEventCallback(&QObject::staticMetaObject,
                                   &QtUiCoverageExtension::eventCallback);
    UICoverage::logInfo("Registered to track GUI coverage information.");
}

bool QtUiCoverageExtension::isOptionEnabled(const std::string& key) const {
    if (!options->contains(key)) {
        return false;
    }
    const std::vector<std::string>& values = options->values(key);
    return values.size() == 1 && values.front() == "1";
}

void QtUiCoverageExtension::eventCallback(QObject* object, QEvent* event) {
    // Nearly all events end here, so this comes first.
    if (!UICoverage::QtWidgetsCoverageTracker::isOfInterest(event->type()) &&
        !UICoverage::QtQuickCoverageTracker::isOfInterest(event->type())) {
        return;
    }
    QtUiCoverageExtension* const extension = activeExtension;
    if (extension == nullptr) {
        return;
    }
    if (!extension->m_isSettled) {
        extension->settle();
    }
    if (extension->m_qtWidgetsEnabled) {
        extension->m_widgetsTracker->handleEvent(object, event);
    }
    if (extension->m_qtQuickEnabled) {
        extension->m_quickTracker->handleEvent(object, event);
    }
}

} // namespace QtWrapper
} // namespace Vorsk
