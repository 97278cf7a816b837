// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickwidgets.h"

#include "qtuicontrols/quick/quickclass.h"

#include <QQuickRenderControl>
#include <QVariant>

#include <algorithm>

#include <dlfcn.h>

namespace Vorsk {
namespace UIControls {

namespace {

/** QQuickWidget::quickWindow(), where the program has it. */
QQuickWindow* windowOf(const QObject* widget) {
    using Function = QQuickWindow* (*)(const QObject*);
    static const auto function =
        reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, "_ZNK12QQuickWidget11quickWindowEv"));
    return function == nullptr ? nullptr : function(widget);
}

} // namespace

std::vector<QuickWidgets::Scene>& QuickWidgets::scenes() {
    static std::vector<Scene> scenes;
    return scenes;
}

QQuickWindow* QuickWidgets::add(QObject* widget) {
    if (!extendsClass(widget, "QQuickWidget")) {
        return nullptr;
    }
    QQuickWindow* const window = windowOf(widget);
    if (window != nullptr && widgetOf(window) != widget) {
        std::vector<Scene>& all = scenes();
        all.erase(std::remove_if(all.begin(), all.end(),
                                 [](const Scene& scene) {
                                     return scene.window.isNull() || scene.widget.isNull();
                                 }),
                  all.end());
        all.push_back({window, widget});
    }
    return window;
}

QObject* QuickWidgets::widgetOf(const QQuickWindow* window) {
    for (const Scene& scene : scenes()) {
        if (scene.window == window) {
            return scene.widget;
        }
    }
    return nullptr;
}

QPoint QuickWidgets::offsetOf(const QQuickWindow* window) {
    QPoint offset;
    if (widgetOf(window) != nullptr) {
        QQuickRenderControl::renderWindowFor(const_cast<QQuickWindow*>(window), &offset);
    }
    return offset;
}

bool QuickWidgets::isShown(QQuickWindow* window) {
    if (window->size().isEmpty()) {
        return false;
    }
    const QObject* const widget = widgetOf(window);
    if (widget != nullptr && !widget->property("visible").toBool()) {
        return false;
    }
    if (const QWindow* const real = QQuickRenderControl::renderWindowFor(window)) {
        return real->isVisible() && real->isExposed();
    }
    return window->isVisible() && window->isExposed() && window->opacity() > 0;
}

} // namespace UIControls
} // namespace Vorsk
