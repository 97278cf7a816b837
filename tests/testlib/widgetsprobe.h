// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "testlib/fakehook.h"
#include "testlib/fakehost.h"
#include "testlib/recordprinter.h"

#include <QList>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QStringList>

#include <memory>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIAbstraction {
class ElementStore;
class UIElement;
} // namespace UIAbstraction
namespace UICoverage {
class QtWidgetsCoverageTracker;
class StreamUIElementExporter;
} // namespace UICoverage
} // namespace Vorsk

namespace TestLib {

/**
 * A tracker for Qt Widgets with a fake host and a fake hook around it. Can play the host: once it
 * is started, every delivery of the application goes to the tracker before its receiver sees it.
 *
 * Deletes the elements that the tracker made, which nobody else does, when it dies. One at a time.
 */
class WidgetsProbe : public QObject {
    Q_OBJECT

public:
    enum class Pictures { Off, On };

    explicit WidgetsProbe(Pictures pictures = Pictures::Off,
                          TreePrinter::Sizes sizes = TreePrinter::Sizes::Shown);
    ~WidgetsProbe() override;

    Vorsk::UICoverage::QtWidgetsCoverageTracker& tracker() { return *m_tracker; }
    /** The element that the tracker has for the object; null when none. */
    Vorsk::UIAbstraction::UIElement* element(QObject* object);
    /** The element with all below it, as TreePrinter prints it; empty when there is none. */
    QString tree(QObject* object);
    /** A count of the object's element; -1 when the event is not registered or there is none. */
    int usage(QObject* object, const char* event);

    /** Feeds the tracker with the application's deliveries from now on. */
    void start();
    void stop();
    /** One Show event for the widget, to the tracker only. */
    void show(QWidget* widget);
    /** One press on the widget, to the tracker only. */
    void press(QWidget* widget, const QPointF& position, Qt::MouseButton button = Qt::LeftButton);

    /** The records since the last call, printed. */
    QStringList takeRecords();
    /** Those of them that are of this kind. */
    QStringList takeRecords(int kind);
    /** The lines that the host's logger got since the last call. */
    QStringList takeLog();
    /** How an element is called in printed records; "none" without one. */
    QString nameOf(QObject* object);

    /** Destroys the tracker; the elements stay until the probe dies. */
    void destroyTracker();
    /** Deletes what the store announces as well when the probe dies. */
    void keep(const Vorsk::UIAbstraction::ElementStore& store);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    FakeExtensionHost m_host;
    FakeHook m_hook;
    TreePrinter::Sizes m_sizes;
    RecordPrinter m_printer;
    std::unique_ptr<Vorsk::UICoverage::StreamUIElementExporter> m_exporter;
    std::unique_ptr<Vorsk::UICoverage::QtWidgetsCoverageTracker> m_tracker;
    QList<QPointer<Vorsk::UIAbstraction::UIElement>> m_elements;
};

} // namespace TestLib
