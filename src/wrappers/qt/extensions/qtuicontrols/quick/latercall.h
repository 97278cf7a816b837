// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <functional>

namespace Vorsk {
namespace UIControls {

/** Calls a function from the event loop, once for any number of requests. GUI thread only. */
class LaterCall : public QObject {
public:
    explicit LaterCall(std::function<void()> function);

    void request();

    bool event(QEvent* event) override;

private:
    std::function<void()> m_function;
    bool m_isRequested = false;
};

} // namespace UIControls
} // namespace Vorsk
