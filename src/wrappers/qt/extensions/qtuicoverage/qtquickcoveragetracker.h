#pragma once

#include "uicoveragetracker.h"

#include <QObject>

QT_BEGIN_NAMESPACE
class QEvent;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

/** The tracker of Qt Quick applications. This version takes no notice of any event. GUI thread
 * only. */
class QtQuickCoverageTracker : public QObject, public UICoverageTracker {
    Q_OBJECT
    Q_INTERFACES(Vorsk::UICoverage::UICoverageTracker)

public:
    /** @param exporter as UICoverageTracker takes it */
    explicit QtQuickCoverageTracker(AbstractUIElementExporter* exporter);
    ~QtQuickCoverageTracker() override;

    void handleEvent(QObject* object, QEvent* event);
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace UICoverage
} // namespace Vorsk
