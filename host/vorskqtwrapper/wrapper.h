// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "vorskqtwrapper/eventwrappercontext.h"
#include "vorskqtwrapper/hostoptionset.h"
#include "vorskqtwrapper/wrapperextensionhost.h"

#include <vector>

namespace Vorsk {
class Extension;
}

namespace VorskHost {

class ExtensionLibrary;

/**
 * The host in the application: reads the configuration, loads the extensions, opens the recording
 * and brings them together. Made when the starter plugin is loaded, on the GUI thread; never
 * destroyed, because extensions may call it until the process is gone.
 *
 * Winding up happens while the process exits: first finish() of the extensions, then the library's
 * own objects go, last the recording is closed, so that it holds all that they sent.
 */
class Wrapper {
public:
    /**
     * Starts the host. When the environment names no configuration nothing happens; when the
     * configuration or all extensions are of no use that is reported and nothing else happens. In a
     * further application of the same process only its events are watched.
     */
    static void start();

private:
    Wrapper(const HostConfiguration& configuration, RecordingWriter& writer);
    ~Wrapper() = default;
    Q_DISABLE_COPY(Wrapper)

    static void startConfigured(const HostConfiguration& configuration);
    static void finishExtensions();
    static void closeRecording();
    void activate(const ExtensionLibrary& library);

    HostOptionSet m_options;
    WrapperExtensionHost m_host;
    EventWrapperContext m_context;
    std::vector<Vorsk::Extension*> m_extensions;
};

} // namespace VorskHost
