// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/widgetsprobe.h"

#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "tracking/logging.h"
#include "tracking/streamuielementexporter.h"
#include "uiabstraction/uielement.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QShowEvent>
#include <QWidget>

namespace TestLib {

using Vorsk::UIAbstraction::ElementStore;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;
using Vorsk::UICoverage::QtWidgetsCoverageTracker;
using Vorsk::UICoverage::StreamUIElementExporter;

WidgetsProbe::WidgetsProbe(Pictures pictures, TreePrinter::Sizes sizes)
    : m_sizes(sizes)
    , m_printer(sizes)
    , m_exporter(std::make_unique<StreamUIElementExporter>())
    , m_tracker(std::make_unique<QtWidgetsCoverageTracker>(m_exporter.get())) {
    Vorsk::UICoverage::setExtensionHost(&m_host);
    m_tracker->setTakeScreenshotsOfElements(pictures == Pictures::On);
    keep(m_tracker->elementStore());
}

WidgetsProbe::~WidgetsProbe() {
    stop();
    destroyTracker();
    m_exporter.reset();
    for (const QPointer<UIElement>& element : qAsConst(m_elements)) {
        if (!element.isNull() && element->isRoot()) {
            delete element;
        }
    }
    // Elements below one another have no root.
    for (const QPointer<UIElement>& element : qAsConst(m_elements)) {
        delete element;
    }
    Vorsk::UICoverage::setExtensionHost(nullptr);
}

UIElement* WidgetsProbe::element(QObject* object) {
    return m_tracker->element(object);
}

QString WidgetsProbe::tree(QObject* object) {
    const UIElement* const root = element(object);
    return root == nullptr ? QString() : TreePrinter(m_sizes).print(*root);
}

int WidgetsProbe::usage(QObject* object, const char* event) {
    const UIElement* const known = element(object);
    return known == nullptr ? -1 : known->usage().value(UIEvent(QLatin1String(event)), -1);
}

void WidgetsProbe::start() {
    QCoreApplication::instance()->installEventFilter(this);
}

void WidgetsProbe::stop() {
    if (QCoreApplication::instance() != nullptr) {
        QCoreApplication::instance()->removeEventFilter(this);
    }
}

void WidgetsProbe::show(QWidget* widget) {
    QShowEvent event;
    m_tracker->handleEvent(widget, &event);
}

void WidgetsProbe::press(QWidget* widget, const QPointF& position, Qt::MouseButton button) {
    QMouseEvent event(QEvent::MouseButtonPress, position, button, button, Qt::NoModifier);
    m_tracker->handleEvent(widget, &event);
}

QStringList WidgetsProbe::takeRecords() {
    QStringList lines;
    for (const FakeHook::Message& message : qAsConst(m_hook.messages)) {
        lines.append(m_printer.print(message.args.at(2).toInt(), message.args.at(3).toByteArray()));
    }
    m_hook.messages.clear();
    return lines;
}

QStringList WidgetsProbe::takeRecords(int kind) {
    return takeRecords().filter(QRegularExpression(QStringLiteral("^kind %1 ").arg(kind)));
}

QStringList WidgetsProbe::takeLog() {
    QStringList lines;
    lines.swap(m_host.fakeLogger.lines);
    return lines;
}

QString WidgetsProbe::nameOf(QObject* object) {
    const UIElement* const known = element(object);
    return known == nullptr ? QStringLiteral("none") : m_printer.nameOf(known->id());
}

void WidgetsProbe::destroyTracker() {
    m_tracker.reset();
}

void WidgetsProbe::keep(const ElementStore& store) {
    connect(&store, &ElementStore::elementAdded, this, [this](const UIElement* element) {
        m_elements.append(const_cast<UIElement*>(element)); // the store was given a non-const one
    });
}

bool WidgetsProbe::eventFilter(QObject* watched, QEvent* event) {
    // As the extension does.
    if (m_tracker && Vorsk::UICoverage::QtWidgetsCoverageTracker::isOfInterest(event->type())) {
        m_tracker->handleEvent(watched, event);
    }
    return false;
}

} // namespace TestLib
