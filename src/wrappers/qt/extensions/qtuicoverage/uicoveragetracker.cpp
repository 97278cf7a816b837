// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/uicoveragetracker.h"

#include "tracking/abstractuielementexporter.h"
#include "tracking/classname.h"

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::UIElement;

UICoverageTracker::UICoverageTracker(AbstractUIElementExporter* exporter)
    : m_exporter(exporter) {
    if (exporter != nullptr) {
        exporter->addElementStore(&m_elementStore);
    }
}

UICoverageTracker::~UICoverageTracker() = default;

void UICoverageTracker::trackChildren(QObject*) {}

UIElement* UICoverageTracker::element(QObject* object) {
    return m_elementStore.elementForObject(object);
}

UIElement* UICoverageTracker::makeElement(const QObject* object,
                                          const UIAbstraction::StandardType& standardType) {
    return new UIElement(className(object), standardType, QString());
}

QList<UIElement*> UICoverageTracker::rootElements() const {
    return m_elementStore.rootElements();
}

void UICoverageTracker::setTakeScreenshotsOfElements(bool takeScreenshots) {
    m_takeScreenshotsOfElements = takeScreenshots;
}

} // namespace UICoverage
} // namespace Vorsk
