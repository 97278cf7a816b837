// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/hostapplication.h"

#include "testlib/controlsprobe.h"

namespace TestLib {

namespace {

bool endsAreTold = false;

} // namespace

void HostApplication::setTellsEnds(bool tellsEnds) {
    endsAreTold = tellsEnds;
}

bool HostApplication::notify(QObject* receiver, QEvent* event) {
    const bool isConsumed = QApplication::notify(receiver, event);
    if (endsAreTold) {
        ControlsProbe::end(receiver, event);
    }
    return isConsumed;
}

} // namespace TestLib
