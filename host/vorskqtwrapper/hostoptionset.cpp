// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskqtwrapper/hostoptionset.h"

namespace VorskHost {

HostOptionSet::HostOptionSet(HostConfiguration::Options options)
    : m_options(std::move(options)) {}

bool HostOptionSet::contains(const std::string& key) const {
    return m_options.find(key) != m_options.end();
}

const std::vector<std::string>& HostOptionSet::values(const std::string& key) const {
    const auto it = m_options.find(key);
    return it == m_options.end() ? m_none : it->second;
}

} // namespace VorskHost
