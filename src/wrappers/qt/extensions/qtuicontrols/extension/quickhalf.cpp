// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/extension/quickhalf.h"

#include "tracking/logging.h"

#include <dlfcn.h>
#include <link.h>

namespace Vorsk {
namespace UIControls {

namespace {

constexpr const char* qtQuick = "libQt5Quick.so.5";
constexpr const char* library = "libqtuicontrolsquick.so";

/** How many libraries have been loaded since the process began: the first entry tells. */
unsigned long long loadedLibraries() {
    unsigned long long loaded = 0;
    dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* result) {
            *static_cast<unsigned long long*>(result) = info->dlpi_adds;
            return 1;
        },
        &loaded);
    return loaded;
}

/** The folder of the library that this code is in, with a slash at its end. */
QByteArray ownFolder() {
    Dl_info info;
    if (dladdr(reinterpret_cast<void*>(&loadedLibraries), &info) == 0) {
        return {};
    }
    const QByteArray path(info.dli_fname);
    return path.left(path.lastIndexOf('/') + 1);
}

} // namespace

QuickHalf::QuickHalf(const TrackerServices& services, const QByteArray& folder)
    : m_services(services)
    , m_folder(folder.isNull() ? ownFolder() : folder) {}

QuickHalf::~QuickHalf() = default;

void QuickHalf::handleEvent(QObject* object, QEvent* event) {
    if (m_tracker == nullptr) {
        lookForQtQuick();
        if (m_tracker == nullptr) {
            return;
        }
    }
    m_tracker->handleEvent(object, event);
}

void QuickHalf::lookForQtQuick() {
    if (m_isMissing) {
        return;
    }
    // Asking for the library by its name costs a thousand times as much, so that is for when there
    // are more of them.
    const unsigned long long loaded = loadedLibraries();
    if (loaded == m_loadedLibraries) {
        return;
    }
    m_loadedLibraries = loaded;
    if (void* const handle = dlopen(qtQuick, RTLD_LAZY | RTLD_NOLOAD)) {
        dlclose(handle);
        bringIn();
    }
}

void QuickHalf::bringIn() {
    const QByteArray path = m_folder + library;
    // Stays until the process ends: Qt keeps what it knows of its classes as long.
    void* const handle = dlopen(path.constData(), RTLD_NOW | RTLD_NODELETE);
    const auto entry =
        handle == nullptr ? nullptr : reinterpret_cast<Entry>(dlsym(handle, entryName));
    if (entry == nullptr) {
        m_isMissing = true;
        const char* const reason = dlerror();
        UICoverage::logWarning("Qt Quick is not recorded: %s; install uicov anew",
                               reason == nullptr ? "no entry" : reason);
        return;
    }
    m_tracker.reset(entry(&m_services));
}

} // namespace UIControls
} // namespace Vorsk
