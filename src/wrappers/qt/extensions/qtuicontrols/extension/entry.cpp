// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/extension/qtuicontrolsextension.h"

// The library's C boundary: the one symbol that it exports.
extern "C" {

/**
 * Called by the host's Qt wrapper once it has loaded the library, on the GUI thread; may be called
 * again, with the same or another host.
 * @param host gets all messages from now on; not owned
 * @return the library's one extension; it belongs to the library
 */
Q_DECL_EXPORT Vorsk::Extension* init_extension(Vorsk::ExtensionHost* host) {
    return Vorsk::QtWrapper::QtUiControlsExtension::instance(host);
}
}
