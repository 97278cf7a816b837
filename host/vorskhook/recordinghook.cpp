// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskhook/recordinghook.h"

namespace VorskHost {

namespace {

/** The stand-in has one channel; a real host has several. */
constexpr int onlyChannel = 1;

RecordingHook* theHook = nullptr;

} // namespace

RecordingHook::RecordingHook() {
    channel = onlyChannel;
}

RecordingHook* RecordingHook::start(const QString& path, const RecordingFormat::ProcessInfo& info,
                                    qint64 maximumSize, bool isShared) {
    if (theHook != nullptr) {
        return theHook;
    }
    auto* created = new RecordingHook;
    created->m_writer.setMaximumSize(maximumSize);
    created->m_writer.setShared(isShared);
    if (!created->m_writer.open(path, info)) {
        delete created;
        return nullptr;
    }
    theHook = created;
    hook = created;
    return created;
}

RecordingHook* RecordingHook::instance() {
    return theHook;
}

} // namespace VorskHost
