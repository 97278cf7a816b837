// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/global.h>

#include <string>

namespace Vorsk {

class OptionSet;
class WrapperContext;

/**
 * Base of what an extension library hands to the host. The object belongs to the library; the host
 * fills in the texts and the options and then calls initialize(), on the GUI thread.
 *
 * Layout: the pointer to the virtual table (destructor in two slots, initialize(), finish()), two
 * strings, the option set.
 */
class Extension {
public:
    virtual ~Extension() = default;

    virtual void initialize(WrapperContext* context) = 0;

    /** Called once when the host winds up. Does nothing here. */
    virtual void finish() {}

    std::string name;
    std::string path;
    /** The host's options; null until the host has set them, always before initialize(). Not owned.
     */
    OptionSet* options = nullptr;

protected:
    Extension() = default;
    Q_DISABLE_COPY(Extension)
};

} // namespace Vorsk
