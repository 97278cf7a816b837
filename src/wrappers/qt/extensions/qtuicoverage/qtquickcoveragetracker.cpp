#include "qtquickcoveragetracker.h"

namespace Vorsk {
namespace UICoverage {

QtQuickCoverageTracker::QtQuickCoverageTracker(AbstractUIElementExporter* exporter)
    : UICoverageTracker(exporter) {}

QtQuickCoverageTracker::~QtQuickCoverageTracker() = default;

void QtQuickCoverageTracker::handleEvent(QObject*, QEvent*) {}

bool QtQuickCoverageTracker::eventFilter(QObject* watched, QEvent* event) {
    handleEvent(watched, event);
    return QObject::eventFilter(watched, event);
}

} // namespace UICoverage
} // namespace Vorsk
