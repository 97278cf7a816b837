// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tracking/metamethods.h"

namespace Vorsk {
namespace UIControls {

/**
 * Connects a signal to a hub's slot unless that is done already: for connections that are made when
 * input first goes to a control and made again when the application has cut all connections of its
 * object. Both are absolute method numbers.
 */
inline void connectOnce(const QObject* sender, int signal, const QObject* hub, int slot) {
    QMetaObject::connect(sender, signal, hub, slot, Qt::DirectConnection | Qt::UniqueConnection);
}

} // namespace UIControls
} // namespace Vorsk
