// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// What a window of many Qt Quick items costs. A first show, a focus in and one item more must cost
// each item the same within a factor of 1.5, however many there are.
#include "discardinghook.h"
#include "qtuicoverage/qtquickcoveragetracker.h"
#include "series.h"
#include "tracking/streamuielementexporter.h"
#include "uiabstraction/uielement.h"

#include <QFocusEvent>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>

#include <memory>

using Vorsk::UICoverage::QtQuickCoverageTracker;
using Vorsk::UICoverage::StreamUIElementExporter;

namespace {

/** How the items of a window hang together. */
enum class Shape { Flat, Nested };

void addItems(QQuickItem* parent, int count, Shape shape) {
    QQuickItem* current = parent;
    for (int i = 0; i < count; ++i) {
        // Nested: ten beside one another, the next ten below the last of them, ten levels deep.
        if (shape == Shape::Nested && i % 10 == 0) {
            current = i % 100 == 0 ? parent : current->childItems().constLast();
        }
        auto* const item = new QQuickItem(current);
        item->setSize(QSizeF(10, 10));
    }
}

/** A window that a tracker with an exporter knows. */
class TrackedWindow {
public:
    TrackedWindow()
        : m_tracker(&m_exporter) {
        m_tracker.setTakeScreenshotsOfElements(false);
        window.resize(800, 600);
    }

    ~TrackedWindow() {
        qDeleteAll(window.contentItem()->childItems());
        delete m_tracker.element(&window);
    }

    void send(QEvent::Type type) {
        QEvent event(type);
        m_tracker.handleEvent(&window, &event);
    }

    QQuickWindow window;

private:
    DiscardingHook m_hook;
    StreamUIElementExporter m_exporter;
    QtQuickCoverageTracker m_tracker;
};

qint64 focusIn(int items, Shape shape) {
    TrackedWindow tracked;
    addItems(tracked.window.contentItem(), items, shape);
    tracked.send(QEvent::Show);
    return nanoseconds([&] { tracked.send(QEvent::FocusIn); });
}

qint64 firstShow(int items, Shape shape) {
    TrackedWindow tracked;
    addItems(tracked.window.contentItem(), items, shape);
    return nanoseconds([&] { tracked.send(QEvent::Show); });
}

qint64 addChildren(int items, Shape shape) {
    TrackedWindow tracked;
    tracked.send(QEvent::Show);
    return nanoseconds([&] { addItems(tracked.window.contentItem(), items, shape); });
}

/** From the first one on: Qt looks for each from the beginning of its parent's list. */
qint64 removeChildren(int items, bool isTracked) {
    TrackedWindow tracked;
    if (isTracked) {
        tracked.send(QEvent::Show);
    }
    addItems(tracked.window.contentItem(), items, Shape::Flat);
    return nanoseconds([&] {
        const QList<QQuickItem*> children = tracked.window.contentItem()->childItems();
        qDeleteAll(children);
    });
}

} // namespace

int main(int argc, char* argv[]) {
    const QGuiApplication application(argc, argv);
    Series series({500, 5000, 20000}, 9);
    series.printHeader();
    series.measure(QStringLiteral("first show, items side by side"),
                   [](int items) { return firstShow(items, Shape::Flat); });
    series.measure(QStringLiteral("first show, items nested"),
                   [](int items) { return firstShow(items, Shape::Nested); });
    series.measure(QStringLiteral("focus in, items side by side"),
                   [](int items) { return focusIn(items, Shape::Flat); });
    series.measure(QStringLiteral("focus in, items nested"),
                   [](int items) { return focusIn(items, Shape::Nested); });
    series.measure(QStringLiteral("adding one by one, side by side"),
                   [](int items) { return addChildren(items, Shape::Flat); });
    series.measure(QStringLiteral("adding one by one, nested"),
                   [](int items) { return addChildren(items, Shape::Nested); });
    series.measure(QStringLiteral("deleting one by one"),
                   [](int items) { return removeChildren(items, true); });
    series.measure(QStringLiteral("deleting one by one, not tracked"),
                   [](int items) { return removeChildren(items, false); });
    return writeJson(QCoreApplication::arguments(), QStringLiteral("quickitems"), series) ? 0 : 1;
}
