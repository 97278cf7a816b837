// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/extension/qtuicontrolsextension.h"

#include "qtuicontrols/core/bookofelements.h"
#include "qtuicontrols/core/inputattribution.h"
#include "qtuicontrols/extension/quickhalf.h"
#include "qtuicontrols/widgets/widgetstracker.h"
#include "tracking/deliveryends.h"
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

using namespace UIControls;

namespace {

/** Where events go; null before the first init_extension() and from the extension's destruction on.
 */
std::atomic<QtUiControlsExtension*> activeExtension{nullptr};

} // namespace

QtUiControlsExtension* QtUiControlsExtension::instance(ExtensionHost* host) {
    UICoverage::setExtensionHost(host);
    static QtUiControlsExtension extension;
    activeExtension = &extension;
    return &extension;
}

QtUiControlsExtension::QtUiControlsExtension() = default;

QtUiControlsExtension::~QtUiControlsExtension() {
    activeExtension = nullptr;
    // The halves go first: they use all the rest.
    m_quick.reset();
    m_widgets.reset();
}

void QtUiControlsExtension::initialize(WrapperContext* context) {
    if (m_book != nullptr || UICoverage::getEnvironmentVariable("VORSK_GUI_COVERAGE") != "1") {
        return;
    }
    const bool tracksWidgets = isOptionEnabled("qtwidgets");
    const bool tracksQuick = isOptionEnabled("qtquick");
    if (!isOptionEnabled("enabled") || (!tracksWidgets && !tracksQuick)) {
        return;
    }
    readOptions();
    // Built here and not with the extension: what has slots has to belong to the GUI thread.
    m_exporter = std::make_unique<UICoverage::StreamUIElementExporter>();
    m_book = std::make_unique<BookOfElements>(*m_exporter);
    m_attribution = std::make_unique<InputAttribution>();
    const TrackerServices services{*m_book, *m_attribution, m_trackerOptions, &m_scenes};
    if (tracksWidgets) {
        m_widgets = std::make_unique<WidgetsTracker>(services);
    }
    if (tracksQuick) {
        m_quick = std::make_unique<QuickHalf>(services);
    }
    UICoverage::registerDeliveryEndCallback(*context, &QtUiControlsExtension::deliveryEnded);
    context->registerEventCallback(&QObject::staticMetaObject,
                                   &QtUiControlsExtension::eventCallback);
    UICoverage::logInfo("Registered to record the use of controls.");
}

bool QtUiControlsExtension::isOptionEnabled(const std::string& key) const {
    if (!options->contains(key)) {
        return false;
    }
    const std::vector<std::string>& values = options->values(key);
    return values.size() == 1 && values.front() == "1";
}

void QtUiControlsExtension::readOptions() {
    m_trackerOptions.takesPictures = isOptionEnabled("takeScreenshotsOfElements");
    if (options->contains("redact")) {
        for (const std::string& pattern : options->values("redact")) {
            m_trackerOptions.redacted.append(QString::fromStdString(pattern));
        }
    }
}

void QtUiControlsExtension::eventCallback(QObject* object, QEvent* event) {
    if (QtUiControlsExtension* const extension = activeExtension) {
        extension->handleEvent(object, event);
    }
}

void QtUiControlsExtension::handleEvent(QObject* object, QEvent* event) {
    if (!m_attribution->begin(object, event)) {
        return;
    }
    // What is neither a widget nor an item, as an action, a window, a scene or a timer, may belong
    // to either half; a widget may show a scene.
    const bool isForQuick =
        m_quick != nullptr &&
        (!object->isWidgetType() || event->type() == QEvent::Show || event->type() == QEvent::Hide);
    const QPointer<QObject> guard(isForQuick ? object : nullptr);
    if (m_widgets != nullptr) {
        m_widgets->handleEvent(object, event);
    }
    if (!guard.isNull()) {
        m_quick->handleEvent(object, event);
    }
}

void QtUiControlsExtension::deliveryEnded(QObject* object, QEvent* event) {
    QtUiControlsExtension* const extension = activeExtension;
    if (extension != nullptr && extension->m_attribution->hasDeliveries()) {
        extension->m_attribution->end(object, event);
    }
}

} // namespace QtWrapper
} // namespace Vorsk
