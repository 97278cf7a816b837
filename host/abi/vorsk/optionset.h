// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/global.h>

#include <string>
#include <vector>

namespace Vorsk {

/**
 * The host's configuration as key and values. Owned by the host; read by extensions on the GUI
 * thread.
 *
 * The order of the virtual operations is the interface: the destructor takes the first two slots of
 * the table, contains() the third, values() the fourth.
 */
class OptionSet {
public:
    virtual ~OptionSet() = default;

    /** True when the key was given at all, with or without values. */
    virtual bool contains(const std::string& key) const = 0;

    /** The values of a key in the order given; an empty list for a key that is not there. */
    virtual const std::vector<std::string>& values(const std::string& key) const = 0;

protected:
    OptionSet() = default;
    Q_DISABLE_COPY(OptionSet)
};

} // namespace Vorsk
