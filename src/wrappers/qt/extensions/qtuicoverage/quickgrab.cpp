// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/quickgrab.h"

#include "tracking/grab.h"

#include <QQuickRenderControl>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include <cstddef>

namespace Vorsk {
namespace UICoverage {

namespace {

/**
 * Qt 5 takes what draws a hidden window for OpenGL, also where it is the software renderer. What it
 * then reads is null where pointers have 32 bits, and it sets out to draw with it.
 */
bool wouldCrash(QQuickWindow* window) {
    constexpr std::size_t narrow = 4;
    return sizeof(void*) == narrow && !window->isVisible() &&
           window->rendererInterface()->graphicsApi() == QSGRendererInterface::Software &&
           QQuickRenderControl::renderWindowFor(window) == nullptr;
}

} // namespace

QImage grabWindow(QQuickWindow* window) {
    // Painters complain on the application's standard error when they are given nothing to paint
    // on.
    if (window->size().isEmpty() ||
        isTooLargeToGrab(window->size(), window->effectiveDevicePixelRatio()) ||
        wouldCrash(window)) {
        return {};
    }
    return window->grabWindow();
}

} // namespace UICoverage
} // namespace Vorsk
