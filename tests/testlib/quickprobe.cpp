// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/quickprobe.h"

#include "qtuicoverage/qtquickcoveragetracker.h"
#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "tracking/logging.h"
#include "tracking/streamuielementexporter.h"

#include <QCoreApplication>
#include <QFocusEvent>
#include <QMouseEvent>
#include <QQuickWindow>
#include <QRegularExpression>

namespace TestLib {

using Vorsk::UIAbstraction::ElementStore;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;
using Vorsk::UICoverage::QtQuickCoverageTracker;
using Vorsk::UICoverage::QtWidgetsCoverageTracker;
using Vorsk::UICoverage::StreamUIElementExporter;

QuickProbe::QuickProbe(Pictures pictures, TreePrinter::Sizes sizes, Toolkits toolkits)
    : m_printer(sizes)
    , m_exporter(std::make_unique<StreamUIElementExporter>())
    , m_widgetsTracker(toolkits == Toolkits::Both
                           ? std::make_unique<QtWidgetsCoverageTracker>(m_exporter.get())
                           : nullptr)
    , m_tracker(std::make_unique<QtQuickCoverageTracker>(m_exporter.get())) {
    Vorsk::UICoverage::setExtensionHost(&m_host);
    m_tracker->setTakeScreenshotsOfElements(pictures == Pictures::On);
    keep(m_tracker->elementStore());
    if (m_widgetsTracker) {
        m_widgetsTracker->setTakeScreenshotsOfElements(pictures == Pictures::On);
        keep(m_widgetsTracker->elementStore());
    }
}

QuickProbe::~QuickProbe() {
    stop();
    destroyTrackers();
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

UIElement* QuickProbe::element(QObject* object) {
    return m_tracker->element(object);
}

QString QuickProbe::tree(QObject* object) {
    const UIElement* const root = element(object);
    return root == nullptr ? QString() : TreePrinter().print(*root);
}

int QuickProbe::usage(QObject* object, const char* event) {
    const UIElement* const known = element(object);
    return known == nullptr ? -1 : known->usage().value(UIEvent(QLatin1String(event)), -1);
}

void QuickProbe::start() {
    QCoreApplication::instance()->installEventFilter(this);
}

void QuickProbe::stop() {
    if (QCoreApplication::instance() != nullptr) {
        QCoreApplication::instance()->removeEventFilter(this);
    }
}

void QuickProbe::show(QQuickWindow* window) {
    QShowEvent event;
    m_tracker->handleEvent(window, &event);
}

void QuickProbe::focusIn(QObject* windowOrItem) {
    QFocusEvent event(QEvent::FocusIn);
    m_tracker->handleEvent(windowOrItem, &event);
}

void QuickProbe::press(QObject* windowOrItem, const QPointF& position, Qt::MouseButton button) {
    QMouseEvent event(QEvent::MouseButtonPress, position, button, button, Qt::NoModifier);
    m_tracker->handleEvent(windowOrItem, &event);
}

void QuickProbe::pressKey(QObject* windowOrItem) {
    QKeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    m_tracker->handleEvent(windowOrItem, &event);
}

QStringList QuickProbe::takeRecords() {
    QStringList lines;
    for (const FakeHook::Message& message : qAsConst(m_hook.messages)) {
        lines.append(m_printer.print(message.args.at(2).toInt(), message.args.at(3).toByteArray()));
    }
    m_hook.messages.clear();
    return lines;
}

QStringList QuickProbe::takeRecords(int kind) {
    return takeRecords().filter(QRegularExpression(QStringLiteral("^kind %1 ").arg(kind)));
}

QStringList QuickProbe::takeLog() {
    QStringList lines;
    lines.swap(m_host.fakeLogger.lines);
    return lines;
}

QString QuickProbe::nameOf(QObject* object) {
    const UIElement* const known = element(object);
    return known == nullptr ? QStringLiteral("none") : m_printer.nameOf(known->id());
}

void QuickProbe::destroyTrackers() {
    m_widgetsTracker.reset();
    m_tracker.reset();
}

void QuickProbe::keep(const ElementStore& store) {
    connect(&store, &ElementStore::elementAdded, this, [this](const UIElement* element) {
        m_elements.append(const_cast<UIElement*>(element)); // the store was given a non-const one
    });
}

bool QuickProbe::eventFilter(QObject* watched, QEvent* event) {
    if (m_widgetsTracker) {
        m_widgetsTracker->handleEvent(watched, event);
    }
    if (m_tracker) {
        m_tracker->handleEvent(watched, event);
    }
    return false;
}

} // namespace TestLib
