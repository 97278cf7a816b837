// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "vorskqtwrapper/hostconfiguration.h"

#include <vorsk/optionset.h>

namespace VorskHost {

/** The [options] of the configuration, as extensions read them. Never destroyed by the wrapper. */
class HostOptionSet final : public Vorsk::OptionSet {
public:
    explicit HostOptionSet(HostConfiguration::Options options);

    bool contains(const std::string& key) const override;
    const std::vector<std::string>& values(const std::string& key) const override;

private:
    HostConfiguration::Options m_options;
    std::vector<std::string> m_none;
};

} // namespace VorskHost
