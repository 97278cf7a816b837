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

namespace Vorsk {
namespace UIAbstraction {
class ElementStore;
class UIElement;
} // namespace UIAbstraction
namespace UICoverage {
class QtQuickCoverageTracker;
class QtWidgetsCoverageTracker;
class StreamUIElementExporter;
} // namespace UICoverage
} // namespace Vorsk

QT_BEGIN_NAMESPACE
class QQuickItem;
class QQuickWindow;
QT_END_NAMESPACE

namespace TestLib {

/**
 * A tracker for Qt Quick with a fake host and a fake hook around it, on request beside one for Qt
 * Widgets. Can play the host: once it is started, every delivery of the application goes to the
 * trackers before its receiver sees it.
 *
 * Deletes the elements that the trackers made, which nobody else does, when it dies. One at a time.
 */
class QuickProbe : public QObject {
    Q_OBJECT

public:
    enum class Pictures { Off, On };
    enum class Toolkits { Quick, Both };

    explicit QuickProbe(Pictures pictures = Pictures::Off,
                        TreePrinter::Sizes sizes = TreePrinter::Sizes::Shown,
                        Toolkits toolkits = Toolkits::Quick);
    ~QuickProbe() override;

    Vorsk::UICoverage::QtQuickCoverageTracker& tracker() { return *m_tracker; }
    /** Null unless both toolkits were asked for. */
    Vorsk::UICoverage::QtWidgetsCoverageTracker* widgetsTracker() { return m_widgetsTracker.get(); }
    /** The element that the tracker for Qt Quick has for the object; null when none. */
    Vorsk::UIAbstraction::UIElement* element(QObject* object);
    /** The element with all below it, as TreePrinter prints it; empty when there is none. */
    QString tree(QObject* object);
    /** A count of the object's element; -1 when the event is not registered or there is none. */
    int usage(QObject* object, const char* event);

    /** Feeds the trackers with the application's deliveries from now on. */
    void start();
    void stop();

    // One event, to the tracker for Qt Quick only.
    void show(QQuickWindow* window);
    void focusIn(QObject* windowOrItem);
    void press(QObject* windowOrItem, const QPointF& position = QPointF(),
               Qt::MouseButton button = Qt::LeftButton);
    void pressKey(QObject* windowOrItem);

    /** The records since the last call, printed. */
    QStringList takeRecords();
    /** Those of them that are of this kind. */
    QStringList takeRecords(int kind);
    /** The lines that the host's logger got since the last call. */
    QStringList takeLog();
    /** How an element is called in printed records; "none" without one. */
    QString nameOf(QObject* object);

    /** Destroys the trackers; the elements stay until the probe dies. */
    void destroyTrackers();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void keep(const Vorsk::UIAbstraction::ElementStore& store);

    FakeExtensionHost m_host;
    FakeHook m_hook;
    RecordPrinter m_printer;
    std::unique_ptr<Vorsk::UICoverage::StreamUIElementExporter> m_exporter;
    std::unique_ptr<Vorsk::UICoverage::QtWidgetsCoverageTracker> m_widgetsTracker;
    std::unique_ptr<Vorsk::UICoverage::QtQuickCoverageTracker> m_tracker;
    QList<QPointer<Vorsk::UIAbstraction::UIElement>> m_elements;
};

} // namespace TestLib

Q_DECLARE_METATYPE(TestLib::QuickProbe::Pictures)
