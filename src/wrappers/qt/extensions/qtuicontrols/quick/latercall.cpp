// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/latercall.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace Vorsk {
namespace UIControls {

LaterCall::LaterCall(std::function<void()> function)
    : m_function(std::move(function)) {}

void LaterCall::request() {
    if (!m_isRequested) {
        m_isRequested = true;
        // After what the application has posted itself.
        QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::LowEventPriority);
    }
}

bool LaterCall::event(QEvent* event) {
    if (event->type() != QEvent::User) {
        return QObject::event(event);
    }
    m_isRequested = false;
    m_function();
    return true;
}

} // namespace UIControls
} // namespace Vorsk
