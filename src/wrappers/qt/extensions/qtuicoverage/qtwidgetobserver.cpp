// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtwidgetobserver.h"

#include "tracking/logging.h"
#include "tracking/uicoveragetracker.h"

#include <QWidget>

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::ElementGeometry;
using UIAbstraction::UIElement;

QtWidgetObserver::QtWidgetObserver(QWidget* widget, UIElement* element, UICoverageTracker* tracker)
    : QtObjectObserver(widget, element, tracker) {}

QtWidgetObserver::~QtWidgetObserver() = default;

QWidget* QtWidgetObserver::widget() const {
    // Made with a widget, so the cast needs no check.
    return static_cast<QWidget*>(observedObject());
}

void QtWidgetObserver::init() {
    QWidget* const observed = widget();
    QWidget* const window = observed->window();
    const UIElement* const windowElement = tracker()->element(window);
    const char* format = nullptr;
    if (windowElement == nullptr) {
        format =
            "Unregistered window/top-level occurred, element: {objectName: '%s', class: '%s'}, "
            "ancestor: {objectName: '%s', class: '%s'}";
    } else if (windowElement->isTransparentNode()) {
        format = "Window/top-level is transparent node, element: {objectName: '%s', class: '%s'}, "
                 "ancestor: {objectName: '%s', class: '%s'}";
    }
    if (format != nullptr) {
        logWarning(format, observed->objectName().toLocal8Bit().constData(),
                   observed->metaObject()->className(),
                   window->objectName().toLocal8Bit().constData(),
                   window->metaObject()->className());
    }
    const QRect rectangle(observed->mapTo(window, QPoint(0, 0)), observed->size());
    element()->setGeometry(ElementGeometry(rectangle, true));
}

} // namespace UICoverage
} // namespace Vorsk
