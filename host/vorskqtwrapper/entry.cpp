// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskqtwrapper/entry.h"

#include "vorskqtwrapper/eventtap.h"
#include "vorskqtwrapper/wrapper.h"

void vorsk_qtwrapper_start() {
    VorskHost::Wrapper::start();
}

void vorsk_on_delivery_end(Vorsk::DeliveryEndCallback callback) {
    VorskHost::EventTap::instance().addEnd(callback);
}
