// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPoint>
#include <QPointer>
#include <QQuickWindow>

#include <vector>

namespace Vorsk {
namespace UIControls {

/**
 * Which QQuickWidget shows which scene. Its window is never shown itself; what a person sees is the
 * widget. Neither Qt's library of widgets nor that of these is linked: a program that has such a
 * widget has loaded both. GUI thread only.
 */
class QuickWidgets {
public:
    /** The window of the widget, which is noted; null when it is no QQuickWidget. */
    static QQuickWindow* add(QObject* widget);

    /** Null for a window of its own, or when the widget has died. */
    static QObject* widgetOf(const QQuickWindow* window);

    /** Where the scene lies in the top-level window; the origin for a window of its own. */
    static QPoint offsetOf(const QQuickWindow* window);

    /** Whether a person can see the scene, as far as it depends on the window. */
    static bool isShown(QQuickWindow* window);

private:
    struct Scene {
        QPointer<QQuickWindow> window;
        QPointer<QObject> widget;
    };

    static std::vector<Scene>& scenes();
};

} // namespace UIControls
} // namespace Vorsk
